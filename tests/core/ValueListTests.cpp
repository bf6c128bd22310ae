#include "MemoryTagSource.h"
#include "QelItemIDs.h"
#include "TestImgInfo.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace QelItem;
constexpr CFStringEncoding kUTF8 = kCFStringEncodingUTF8;

struct CountCase {
    UInt32 item;
    SInt32 kind;
    UInt32 count;
};

class ListCount : public testing::TestWithParam<CountCase> {};

TEST_P(ListCount, CountDependsOnItemAndForSharpeningOnDevice)
{
    TestImgInfo info;
    info.Kinds(GetParam().kind, 0);
    EXPECT_EQ(info.GetInfoValueListCount(GetParam().item), GetParam().count);
}

INSTANTIATE_TEST_SUITE_P(
    ValueLists, ListCount,
    testing::Values(CountCase{kWhiteBalance, 2, 6}, CountCase{kSharpening, 2, 6},
                    CountCase{kSharpening, 1, 4}, CountCase{kSharpening, 3, 4},
                    CountCase{kSharpening, 4, 6}, CountCase{kSharpening, 0, 6},
                    CountCase{kBrightnessContrast, 1, 6}, CountCase{kToneTable, 2, 6},
                    CountCase{kColorMode, 2, 10}, CountCase{kSaturationAdjust, 2, 3},
                    CountCase{kISOSensitivity, 2, 0}, CountCase{0, 2, 0}));

struct EntryCase {
    UInt32 item;
    SInt32 kind;
    UInt32 index;
    UInt32 raw;
    const char* key;        // null: past the end
    const char* filterKey;  // shown after ", "
};

std::string Expected(const EntryCase& c)
{
    if (!c.key)
        return "";
    return c.filterKey ? L(c.key) + ", " + L(c.filterKey) : L(c.key);
}

class ListEntry : public testing::TestWithParam<EntryCase> {};

TEST_P(ListEntry, TextRawValueLengthAndCopy)
{
    const EntryCase& c = GetParam();
    const std::string expected = Expected(c);
    TestImgInfo info;
    info.Kinds(c.kind, 0);
    char buffer[256];
    UInt32 raw = 0xDEAD;
    const UInt32 placed = info.GetInfoValueListItemString(c.item, c.index, &raw, buffer,
                                                          sizeof buffer, kUTF8);
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

INSTANTIATE_TEST_SUITE_P(
    ValueLists, ListEntry,
    testing::Values(
        EntryCase{kWhiteBalance, 2, 0, 1, "IDS_QEL_WB_INCANDESCENT", nullptr},
        EntryCase{kWhiteBalance, 2, 5, 6, "IDS_QEL_WB_CLOUDY", nullptr},
        EntryCase{kWhiteBalance, 2, 6, 0, nullptr, nullptr},
        EntryCase{kSharpening, 2, 2, 4, "IDS_QEL_SHARPENING_MEDIUM_LOW", nullptr},
        EntryCase{kSharpening, 2, 5, 3, "IDS_QEL_SHARPENING_HIGH", nullptr},
        EntryCase{kSharpening, 1, 2, 2, "IDS_QEL_SHARPENING_MEDIUM", nullptr},
        EntryCase{kSharpening, 3, 4, 0, nullptr, nullptr},
        // Brightness/contrast offers the tone table's own choices.
        EntryCase{kBrightnessContrast, 2, 0, 1, "IDS_QEL_GAMMA_TABLE_LOW", nullptr},
        EntryCase{kBrightnessContrast, 2, 5, 16, "IDS_QEL_GAMMA_TABLE_USER", nullptr},
        EntryCase{kToneTable, 2, 2, 0, "IDS_QEL_GAMMA_TABLE_NORMAL", nullptr},
        EntryCase{kToneTable, 2, 4, 2, "IDS_QEL_GAMMA_TABLE_HIGH", nullptr},
        EntryCase{kColorMode, 2, 5, 6, "IDS_QEL_COLOR_MODE_BW", nullptr},
        EntryCase{kColorMode, 2, 6, 0x20006, "IDS_QEL_COLOR_MODE_BW",
                  "IDS_QEL_MONOCHROME_FILTER_EFFECT_YELLOW"},
        EntryCase{kColorMode, 2, 8, 0x40006, "IDS_QEL_COLOR_MODE_BW",
                  "IDS_QEL_MONOCHROME_FILTER_EFFECT_RED"},
        EntryCase{kColorMode, 2, 10, 0, nullptr, nullptr},
        EntryCase{kSaturationAdjust, 2, 2, 3, "IDS_QEL_SATURATION_ADJUSTMENT_ENHANCED", nullptr},
        EntryCase{kSaturationAdjust, 2, 3, 0, nullptr, nullptr}));

TEST(ValueListItems, ItemWithoutListWritesZeroAndAnswersNothing)
{
    TestImgInfo info;
    char buffer[16];
    UInt32 raw = 77;
    EXPECT_EQ(info.GetInfoValueListItemString(kISOSensitivity, 0, &raw, buffer, 16, kUTF8), 0u);
    EXPECT_EQ(raw, 0u);
    raw = 77;
    EXPECT_EQ(info.CopyInfoValueListItemCFString(kISOSensitivity, 0, &raw), nullptr);
    EXPECT_EQ(raw, 0u);
    EXPECT_EQ(info.GetInfoValueListItemStringLength(kISOSensitivity, 0, kUTF8), 0u);
    EXPECT_EQ(info.GetInfoValueListCurrentIndex(kISOSensitivity), -1);
    // Null outputs are skipped rather than written.
    EXPECT_EQ(info.GetInfoValueListItemString(kISOSensitivity, 0, nullptr, nullptr, 16, kUTF8), 0u);
    EXPECT_EQ(info.GetInfoValueListItemString(kWhiteBalance, 0, nullptr, nullptr, 16, kUTF8), 0u);
    EXPECT_EQ(info.CopyInfoValueListItemCFString(kISOSensitivity, 0, nullptr), nullptr);
}

TEST(ValueListItems, CurrentIndexesSurviveALaterReadAndBrightnessHasNone)
{
    TestImgInfo info;
    const struct {
        UInt32 item;
        SInt32 TestImgInfo::*member;
        SInt32 index;
    } members[] = {
        {kWhiteBalance, &TestImgInfo::m_wbListIndex, 3},
        {kSharpening, &TestImgInfo::m_sharpeningListIndex, 1},
        {kToneTable, &TestImgInfo::m_gammaListIndex, 5},
        {kColorMode, &TestImgInfo::m_colorModeListIndex, 9},
        {kSaturationAdjust, &TestImgInfo::m_saturationListIndex, 0},
    };
    for (const auto& m : members)
        info.*m.member = m.index;

    MemoryTagSource failing(std::nullopt);
    info.ReadFileTags(&failing);
    MemoryTagSource slr;
    slr.Text(271, "TALVO").Text(272, "TALVO Q77").Int32(kBrightnessContrast, 1);
    info.ReadFileTags(&slr);

    for (const auto& m : members)
        EXPECT_EQ(info.GetInfoValueListCurrentIndex(m.item), m.index) << std::hex << m.item;
    EXPECT_EQ(info.GetInfoValueListCurrentIndex(kBrightnessContrast), -1);
    EXPECT_TRUE(failing.EveryErrorReleasedOnce());
    EXPECT_TRUE(slr.EveryErrorReleasedOnce());
}

}  // namespace
