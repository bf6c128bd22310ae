#include "TestImgInfo.h"

namespace {

using namespace QelItem;

struct CountCase {
    UInt32 item;
    SInt32 kind;
    UInt32 count;
};

class ListCount : public testing::TestWithParam<CountCase> {};

TEST_P(ListCount, CountByItemAndForSharpeningByDevice)
{
    TestImgInfo info;
    info.Kinds(GetParam().kind, 0);
    EXPECT_EQ(info.GetInfoValueListCount(GetParam().item), GetParam().count);
}

INSTANTIATE_TEST_SUITE_P(
    ValueLists, ListCount,
    testing::Values(CountCase{kWhiteBalance, 2, 6}, CountCase{kSharpening, 2, 6},
                    CountCase{kSharpening, 1, 4}, CountCase{kSharpening, 3, 4},
                    CountCase{kSharpening, 4, 6}, CountCase{kBrightnessContrast, 1, 6},
                    CountCase{kToneTable, 2, 6}, CountCase{kColorMode, 2, 10},
                    CountCase{kSaturationAdjust, 2, 3}, CountCase{kISOSensitivity, 2, 0}));

struct EntryCase {
    UInt32 item;
    SInt32 kind;
    UInt32 index, raw;
    const char* key;        // null: past the end
    const char* filterKey;  // shown after ", "
};

class ListEntry : public testing::TestWithParam<EntryCase> {};

TEST_P(ListEntry, TextRawValueLengthAndCopy)
{
    const EntryCase& c = GetParam();
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
    ASSERT_EQ(copy != nullptr, !expected.empty());
    if (copy) {
        EXPECT_EQ(CQelString(copy).ToUTF8(), expected);
        CFRelease(copy);
    }
}

INSTANTIATE_TEST_SUITE_P(
    ValueLists, ListEntry,
    testing::Values(
        EntryCase{kWhiteBalance, 2, 5, 6, "IDS_QEL_WB_CLOUDY", nullptr},
        EntryCase{kWhiteBalance, 2, 6, 0, nullptr, nullptr},
        EntryCase{kSharpening, 2, 2, 4, "IDS_QEL_SHARPENING_MEDIUM_LOW", nullptr},
        EntryCase{kSharpening, 1, 2, 2, "IDS_QEL_SHARPENING_MEDIUM", nullptr},
        EntryCase{kSharpening, 3, 4, 0, nullptr, nullptr},
        EntryCase{kBrightnessContrast, 2, 0, 1, "IDS_QEL_GAMMA_TABLE_LOW", nullptr},
        EntryCase{kToneTable, 2, 5, 16, "IDS_QEL_GAMMA_TABLE_USER", nullptr},
        EntryCase{kColorMode, 2, 5, 6, "IDS_QEL_COLOR_MODE_BW", nullptr},
        EntryCase{kColorMode, 2, 8, 0x40006, "IDS_QEL_COLOR_MODE_BW",
                  "IDS_QEL_MONOCHROME_FILTER_EFFECT_RED"},
        EntryCase{kSaturationAdjust, 2, 2, 3, "IDS_QEL_SATURATION_ADJUSTMENT_ENHANCED", nullptr}));

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
