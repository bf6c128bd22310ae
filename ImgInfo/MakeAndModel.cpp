// SPDX-License-Identifier: MIT
// Device classification from the Make and Model tags, and the display name
// of the model (item 272).
#include "CQelImgInfo.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr UInt32 kMakeTag = 271;
constexpr UInt32 kOrientationTag = 0x10005;

// What the tag source is offered for the Make and Model texts.
constexpr size_t kTagTextSize = 256;

// Make texts that name the maker (case-sensitive substrings, in this order).
constexpr const char* kMakerNames[] = {"TALVO", "Talvo"};
// A model name with this word is one of the maker's film scanners.
constexpr const char* kScannerWord = "SCAN";
// The compact line: model names beginning with one of these letters, or
// naming the line anywhere.
constexpr const char kCompactInitials[] = {'S', 'L', 'P', 'E'};
constexpr const char* kCompactLineName = "MERIVAX";
constexpr size_t kCompactLineNameLength = 7;
// SLR model texts spell the maker in capitals; shown as written in prose.
constexpr const char* kMakerUpper = "TALVO";
constexpr const char* kMakerDisplay = "Talvo";

// Data-format codes of QuickTime movies: a compact camera's movie clip.
constexpr UInt32 kMovieFormatFirst = 64;
constexpr UInt32 kMovieFormatCount = 6;  // 64..69

bool Contains(const char* text, const char* word)
{
    return std::strstr(text, word) != nullptr;
}

bool NamesMaker(const char* make)
{
    for (const char* name : kMakerNames)
        if (Contains(make, name))
            return true;
    return false;
}

bool IsCompactLine(const char* model)
{
    for (char initial : kCompactInitials)
        if (model[0] == initial)
            return true;
    return Contains(model, kCompactLineName);
}

}  // namespace

void CQelImgInfo::GetMakeAndModel(IVandelTagControl* tagControl, SInt32* deviceKind)
{
    StoreTitle(QelItem::kModel, "IDS_QEL_MODEL");
    SInt32 unused = kDeviceUnknown;
    SInt32& kind = deviceKind ? *deviceKind : unused;
    kind = kDeviceUnknown;

    const auto make = qel::ReadText<kTagTextSize>(tagControl, kMakeTag);
    if (!make)
        return;
    const bool makersFile = NamesMaker(make->c_str());
    auto model = qel::ReadText<kTagTextSize>(tagControl, QelItem::kModel);
    if (!model)
        return;
    char* text = model->text;

    // Room for the longest model text behind the compact line's name.
    char output[kTagTextSize + 1 + sizeof "Talvo Merivax "] = {};
    if (!makersFile) {
        std::snprintf(output, sizeof output, "%s", text);
        kind = kDeviceOtherMaker;
    } else if (Contains(text, kScannerWord)) {
        std::snprintf(output, sizeof output, "%s", text);
        kind = kDeviceScanner;
    } else if (!IsCompactLine(text)) {
        // Only the first spelling in capitals is rewritten.
        if (char* upper = std::strstr(text, kMakerUpper))
            std::memcpy(upper, kMakerDisplay, std::strlen(kMakerDisplay));
        std::snprintf(output, sizeof output, "%s", text);
        kind = kDeviceSLR;
    } else {
        // Only compact-line names are cut at the tag's byte length; a length
        // beyond the buffer leaves the text as the buffer holds it.
        const UInt32 tagSize = tagControl->GetTagSize(QelItem::kModel, 0);
        if (tagSize < kTagTextSize)
            text[tagSize] = '\0';
        // Model numbers with an 'E' prefix lose the 'E' and follow the line's
        // name without a blank; the others keep the blank.
        if (text[0] == 'E') {
            std::snprintf(output, sizeof output, "Talvo Merivax%s", text + 1);
        } else if (text[0] == 'M') {
            const char* number = text + kCompactLineNameLength;  // just after "MERIVAX"
            if (number[0] == 'E')
                std::snprintf(output, sizeof output, "Talvo Merivax%s", number + 1);
            else if (number[1] == 'E')
                std::snprintf(output, sizeof output, "Talvo Merivax%s", number + 2);
            else
                std::snprintf(output, sizeof output, "Talvo Merivax %s", number + 1);
        } else {
            std::snprintf(output, sizeof output, "Talvo Merivax %s", text);
        }
        const auto format = qel::ReadInt32(tagControl, QelItem::kDataFormat);
        if (!format)
            kind = kDeviceUnknown;
        else if (static_cast<UInt32>(*format) - kMovieFormatFirst < kMovieFormatCount)
            kind = kDeviceCompactMovie;
        else
            kind = kDeviceCompact;
    }
    StoreValue(QelItem::kModel, CQelString(output, kCFStringEncodingASCII));
}

void CQelImgInfo::SwapValueIfRotate(IVandelTagControl* tagControl, SInt32* first, SInt32* second)
{
    // Reads the orientation only, so a tag source sees its usual requests;
    // the numbers stay as they are, since image sizes match either way up.
    (void)qel::ReadDouble(tagControl, kOrientationTag);
    (void)first;
    (void)second;
}
