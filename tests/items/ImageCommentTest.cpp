// SPDX-License-Identifier: MIT
// The user comment: read as the tag source offers it, cut after 41
// characters, shown as ASCII.
#include "TestImgInfo.h"

namespace {

using Expected = std::optional<std::string>;

TEST(ImageComment, ShownText)
{
    constexpr UInt32 kRawBytes = 7;  // the type a tag source delivers the comment in
    const std::string text(60, 'c');
    const struct {
        const char* name;
        std::optional<std::string> bytes;  // none: no comment tag
        std::optional<UInt32> claimedSize;
        Expected value;
    } cases[] = {
        {"41 characters whole", text.substr(0, 41), {}, text.substr(0, 41)},
        {"42 characters keep 41", text.substr(0, 42), {}, text.substr(0, 41)},
        {"zero byte ends it", std::string("0123456789\0tail", 15), {}, "0123456789"},
        {"empty", "", {}, ""},
        {"bytes beyond ASCII show as ?", "Caf\xE9 \xC3\xA9t\xE9", {}, "Caf? ??t?"},
        {"no comment", std::nullopt, {}, {}},
        {"size near 4 GiB not honoured", "hello", 0xFFFFFFFF, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        if (c.bytes)
            tags.Bytes(QelItem::kUserComment, kRawBytes, std::vector<UInt8>(c.bytes->begin(), c.bytes->end()),
                       c.claimedSize);
        TestImgInfo info;
        ExpectFormatted(info, &CQelImgInfo::GetImageComment, tags, QelItem::kUserComment,
                        L("IDS_QEL_USER_COMMENT"), c.value);
        // Read once, whole, in the tag's own type, into one byte more than
        // its size; a size that cannot be honoured is not read at all.
        ASSERT_EQ(tags.Reads().size(), c.claimedSize ? 0u : 1u);
        if (c.value) {
            EXPECT_EQ(tags.Reads()[0].valueType, kRawBytes);
            EXPECT_EQ(tags.Reads()[0].bufferSize, c.bytes->size() + 1);
        }
    }
}

}  // namespace
