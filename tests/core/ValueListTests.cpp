// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

namespace {

using namespace QelItem;

struct CountCase { UInt32 item; SInt32 kind; UInt32 count; };

const CountCase kListCountCases[] = {
    {kWhiteBalance, 2, 6}, {kSharpening, 2, 6}, {kSharpening, 1, 4}, {kSharpening, 3, 4},
    {kSharpening, 4, 6}, {kBrightnessContrast, 1, 6}, {kToneTable, 2, 6}, {kColorMode, 2, 10},
    {kSaturationAdjust, 2, 3}, {kISOSensitivity, 2, 0},
};

TEST(ListCount, CountByItemAndForSharpeningByDevice)
{
    for (const auto& c : kListCountCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kListCountCases));
        TestImgInfo info;
        info.Kinds(c.kind, 0);
        EXPECT_EQ(info.GetInfoValueListCount(c.item), c.count);
    }
}

struct EntryCase {
    UInt32 item;
    SInt32 kind;
    UInt32 index, raw;
    const char* key;        // null: past the end
    const char* filterKey;  // shown after ", "
};

const EntryCase kListEntryCases[] = {
    {kWhiteBalance, 2, 5, 6, "IDS_QEL_WB_CLOUDY", nullptr},
    {kWhiteBalance, 2, 6, 0, nullptr, nullptr},
    {kSharpening, 2, 2, 4, "IDS_QEL_SHARPENING_MEDIUM_LOW", nullptr},
    {kSharpening, 1, 2, 2, "IDS_QEL_SHARPENING_MEDIUM", nullptr},
    {kSharpening, 3, 4, 0, nullptr, nullptr},
    {kBrightnessContrast, 2, 0, 1, "IDS_QEL_GAMMA_TABLE_LOW", nullptr},
    {kToneTable, 2, 5, 16, "IDS_QEL_GAMMA_TABLE_USER", nullptr},
    {kColorMode, 2, 5, 6, "IDS_QEL_COLOR_MODE_BW", nullptr},
    {kColorMode, 2, 8, 0x40006, "IDS_QEL_COLOR_MODE_BW",
    "IDS_QEL_MONOCHROME_FILTER_EFFECT_RED"},
    {kSaturationAdjust, 2, 2, 3, "IDS_QEL_SATURATION_ADJUSTMENT_ENHANCED", nullptr},
};

TEST(ListEntry, TextRawValueLengthAndCopy)
{
    for (const auto& c : kListEntryCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kListEntryCases));
        const std::string expected =
            !c.key ? "" : c.filterKey ? L(c.key) + ", " + L(c.filterKey) : L(c.key);
        TestImgInfo info;
        info.Kinds(c.kind, 0);
        char buffer[256];
        UInt32 raw = 0xDEAD;
        const UInt32 placed = info.GetInfoValueListItemString(c.item, c.index, &raw, buffer,
                                                              sizeof buffer, kCFStringEncodingUTF8);
        EXPECT_EQ(std::string(buffer, placed), expected);
        EXPECT_EQ(raw, c.raw);
        EXPECT_EQ(info.GetInfoValueListItemStringLength(c.item, c.index, kCFStringEncodingASCII),
                  expected.size() + 2);
        raw = 0xDEAD;
        CFStringRef copy = info.CopyInfoValueListItemCFString(c.item, c.index, &raw);
        EXPECT_EQ(raw, c.raw);
        EXPECT_EQ(copy != nullptr, !expected.empty());
        if (copy) {
            EXPECT_EQ(CQelString(copy).ToUTF8(), expected);
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
    EXPECT_EQ(info.CopyInfoValueListItemCFString(kISOSensitivity, 0, nullptr), nullptr);
}

TEST(ValueListItems, IndexesSurviveLaterReadsAndBrightnessHasNone)
{
    TestImgInfo info;
    info.m_wbListIndex = 3;
    info.m_colorModeListIndex = 9;
    MemoryTagSource failing(std::nullopt);
    info.ReadFileTags(&failing);
    MemoryTagSource slr;
    slr.Text(271, "TALVO").Text(272, "TALVO Q77").Int32(kBrightnessContrast, 1);
    info.ReadFileTags(&slr);
    EXPECT_EQ(info.GetInfoValueListCurrentIndex(kWhiteBalance), 3);
    EXPECT_EQ(info.GetInfoValueListCurrentIndex(kColorMode), 9);
    EXPECT_EQ(info.GetInfoValueListCurrentIndex(kBrightnessContrast), -1);
    EXPECT_TRUE(failing.EveryErrorReleasedOnce() && slr.EveryErrorReleasedOnce());
}

}  // namespace
