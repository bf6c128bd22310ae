// SPDX-License-Identifier: MIT
// The photographer's comment. The tag source says how long it is and how it
// delivers it; the grid cell shows its first 41 characters as ASCII.
#include "CQelImgInfo.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

// A comment longer than 40 characters keeps 41, the length hosts have always
// shown, so a comment reads the same in every version.
constexpr size_t kCommentLimit = 40;
constexpr size_t kCommentShownLength = 41;

// Exif data in a JPEG file is at most 64 KiB, and only 41 characters are
// shown. A larger claimed size (up to 4 GiB, where size + 1 no longer fits
// 32 bits) cannot be honoured, and the comment is then taken as absent.
constexpr UInt64 kMaxCommentBytes = 1024 * 1024;

// The text before the first zero byte, cut to the shown length. Bytes
// beyond ASCII (a comment written in some code page) would make the whole
// ASCII text unreadable; each becomes '?', the loss character used when a
// text cannot be encoded, so the readable part still shows.
std::string ShownComment(const std::vector<char>& buffer)
{
    std::string comment(buffer.data(), strnlen(buffer.data(), buffer.size()));
    if (comment.size() > kCommentLimit)
        comment.erase(kCommentShownLength);
    for (char& c : comment)
        if (static_cast<unsigned char>(c) >= 0x80)
            c = '?';
    return comment;
}

}  // namespace

void CQelImgInfo::GetImageComment(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kUserComment, "IDS_QEL_USER_COMMENT");
    if (!tagControl)
        return;
    const UInt64 bufferSize = UInt64{tagControl->GetTagSize(QelItem::kUserComment, 0)} + 1;
    const UInt32 valueType = tagControl->GetTagInfo(QelItem::kUserComment, 0);
    if (bufferSize > kMaxCommentBytes)
        return;
    // One byte more than the comment, so it always ends in a zero byte.
    std::vector<char> buffer(bufferSize, '\0');
    if (!qel::ReadTag(tagControl, QelItem::kUserComment, valueType, buffer.data(),
                      static_cast<UInt32>(bufferSize)))
        return;
    CQelString value;
    value.Append(ShownComment(buffer).c_str(), kCFStringEncodingASCII);
    StoreValue(QelItem::kUserComment, value);
}
