#include "TestImgInfo.h"

namespace {

struct StepCase {
    SInt16 value, numerator, denominator;
    double number;
    const char* text;
};

const StepCase kStepCases[] = {
    {0, 1, 3, 0.0, "0"}, {2, 0, 3, 0.0, "0"}, {2, 1, 0, 0.0, "0"}, {-4, 1, 6, -4.0 / 6.0, "-0.7"},
    {2, 1, 3, 2.0 / 3.0, "+0.7"}, {3, 1, 3, 1.0, "+1.0"}, {-7, 1, 3, -7.0 / 3.0, "-2.3"},
    {-7, 1, 6, -7.0 / 6.0, "-1.2"}, {1, -1, 2, -0.5, "-0.5"},
    {-1, 1, 25, -0.04, "-0.0"},  // only an exact zero becomes "0"
    {-32768, -32768, 1, 1073741824.0, "+1073741824.0"},
    {3, 1, -3, -1.0, "-1.0"},  // never written by cameras; must still end
};

class ValueStepTest : public ::testing::TestWithParam<StepCase> {};

TEST_P(ValueStepTest, NumberAndText)
{
    const StepCase& c = GetParam();
    const IVandelTagControl::tagStrValueStep record{c.value, c.numerator, c.denominator};
    TestImgInfo info;
    EXPECT_DOUBLE_EQ(info.ValueStepToDouble(&record), c.number);
    EXPECT_STREQ(info.ValueStepToString(&record), c.text);
}

INSTANTIATE_TEST_SUITE_P(Records, ValueStepTest, ::testing::ValuesIn(kStepCases));

TEST(ValueStepText, OneSharedBufferForAllObjects)
{
    const IVandelTagControl::tagStrValueStep third{1, 1, 3}, half{-1, 1, 2};
    TestImgInfo one, other;
    const char* first = one.ValueStepToString(&third);
    EXPECT_EQ(other.ValueStepToString(&half), first);
    EXPECT_STREQ(first, "-0.5");
    EXPECT_STREQ(one.ValueStepToString(nullptr), "0");
}

// Both items: the signed steps in the item's unit, or the title alone.
TEST(ExposureOffsetItems, ValueOrTitleOnly)
{
    const struct {
        void (CQelImgInfo::*format)(IVandelTagControl*);
        UInt32 itemID;
        const char* titleKey;
        const char* unitKey;
    } items[] = {
        {&CQelImgInfo::GetExposureComp, QelItem::kExposureComp, "IDS_QEL_EXPOSURE_COMP",
         "IDS_QEL_EXPOSURE_COMP_UNIT"},
        {&CQelImgInfo::GetExposureDiff, QelItem::kExposureDiff, "IDS_QEL_EXPOSURE_DIFF",
         "IDS_QEL_EXPOSURE_DIFF_UNIT"},
    };
    for (const auto& item : items) {
        MemoryTagSource tags;
        tags.ValueStep(item.itemID, -4, 1, 6);
        TestImgInfo read, absent;
        (read.*item.format)(&tags);
        (absent.*item.format)(&tags.Remove(item.itemID));
        EXPECT_EQ(read.Title(item.itemID), L(item.titleKey));
        EXPECT_EQ(read.Value(item.itemID), LF(item.unitKey, "-0.7"));
        EXPECT_EQ(absent.Title(item.itemID), L(item.titleKey));
        EXPECT_EQ(absent.Value(item.itemID), std::nullopt);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

}  // namespace
