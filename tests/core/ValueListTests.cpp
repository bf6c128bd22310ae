// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

namespace {

using namespace QelItem;

// Compact cameras and their movies offer fewer sharpening levels.
TEST(ListCount, SharpeningByDeviceAndNoListForOtherItems)
{
    const struct { UInt32 item; SInt32 kind; UInt32 count; } cases[] = {
        {kSharpening, kDeviceSLR, 6}, {kSharpening, kDeviceCompact, 4},
        {kSharpening, kDeviceCompactMovie, 4}, {kSharpening, kDeviceScanner, 6},
        {kISOSensitivity, kDeviceSLR, 0},
    };
    for (const auto& c : cases) {
        TestImgInfo info;
        info.Kinds(c.kind, 0);
        EXPECT_EQ(info.GetInfoValueListCount(c.item), c.count) << c.item << " on " << c.kind;
    }
}

// An entry, a filtered monochrome entry and an index past the end, through
// every call that hands one out.
TEST(ListEntry, TextRawValueLengthAndCopy)
{
    const struct { UInt32 item, index, raw; std::string text; } cases[] = {
        {kWhiteBalance, 5, 6, L("IDS_QEL_WB_CLOUDY")},
        {kColorMode, 8, 0x40006, L("IDS_QEL_COLOR_MODE_BW") + ", " + L("IDS_QEL_MONOCHROME_FILTER_EFFECT_RED")},
        {kWhiteBalance, 6, 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        TestImgInfo info;
        info.Kinds(kDeviceSLR, 0);
        char buffer[256];
        UInt32 raw = 0xDEAD;
        const UInt32 placed = info.GetInfoValueListItemString(c.item, c.index, &raw, buffer,
                                                              sizeof buffer, kCFStringEncodingUTF8);
        EXPECT_EQ(std::string(buffer, placed), c.text);
        EXPECT_EQ(raw, c.raw);
        EXPECT_EQ(info.GetInfoValueListItemStringLength(c.item, c.index, kCFStringEncodingASCII),
                  c.text.size() + 2);
        raw = 0xDEAD;
        CFStringRef copy = info.CopyInfoValueListItemCFString(c.item, c.index, &raw);
        EXPECT_EQ(raw, c.raw);
        EXPECT_EQ(copy != nullptr, !c.text.empty());
        if (copy) {
            EXPECT_EQ(CQelString(copy).ToUTF8(), c.text);
            CFRelease(copy);
        }
    }
}

TEST(ValueListItems, ItemWithoutListWritesZeroAndAnswersNothing)
{
    TestImgInfo info;
    char buffer[16];
    UInt32 raw = 77;
    EXPECT_EQ(info.GetInfoValueListItemString(kISOSensitivity, 0, &raw, buffer, 16,
                                              kCFStringEncodingASCII), 0u);
    EXPECT_EQ(raw, 0u);
    raw = 77;
    EXPECT_EQ(info.CopyInfoValueListItemCFString(kISOSensitivity, 0, &raw), nullptr);
    EXPECT_EQ(raw, 0u);
    EXPECT_EQ(info.GetInfoValueListItemStringLength(kISOSensitivity, 0, kCFStringEncodingASCII), 0u);
    EXPECT_EQ(info.GetInfoValueListCurrentIndex(kISOSensitivity), -1);
}

}  // namespace
