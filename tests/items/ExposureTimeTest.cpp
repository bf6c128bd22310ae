#include "TestImgInfo.h"

#include <cmath>

namespace {

constexpr UInt32 kFNumber = 0x829D;

struct ExposureCase {
    std::optional<double> seconds;
    const char* shown;  // inside the exposure-time unit; null: no value
    std::optional<double> fNumber;
    const char* fNumberShown;
};

const ExposureCase kExposureCases[] = {
    {0.004, "1/250", {}, nullptr},
    {1.0 / 3.0, "1/3", {}, nullptr},  // 3.0000001 + 0.05 truncates to 3.0
    {0.3, "1/3.3", 5.6, "5.6"}, {0.4, "1/2.5", 8.0, "8"},
    {0.1, "1/10", 11.0, "11"},        // only ".0" goes, not every zero
    {1.0, "1", 10.0, "10"},           // one second already reads in seconds
    {30.0, "30", {}, nullptr}, {2.25, "2.25", {}, nullptr},
    {1.5, "1", {}, nullptr},          // a zero last decimal drops the whole decimal part
    {-0.5, "1/-1.9", {}, nullptr},
    // Beyond the integer range: the 32-bit conversion's INT_MIN, times 0.1.
    {0.0, "1/-214748364.8", {}, nullptr}, {std::nan(""), "1/-214748364.8", {}, nullptr},
    {{}, nullptr, 8.0, nullptr},
};

class ExposureTimeTest : public ::testing::TestWithParam<ExposureCase> {};

TEST_P(ExposureTimeTest, ShowsTimeThenFNumber)
{
    const ExposureCase& c = GetParam();
    MemoryTagSource tags;
    if (c.seconds)
        tags.Double(QelItem::kExposureTime, *c.seconds);
    if (c.fNumber)
        tags.Double(kFNumber, *c.fNumber);
    TestImgInfo info;
    info.GetExposureTime(&tags);

    std::optional<std::string> expected;
    if (c.shown)
        expected = LF("IDS_QEL_EXPOSURE_TIME_UNIT", c.shown);
    if (c.fNumberShown)
        *expected += LF("IDS_QEL_FNUMBER_PREFIX", c.fNumberShown);
    EXPECT_EQ(info.Title(QelItem::kExposureTime), L("IDS_QEL_EXPOSURE_TIME"));
    EXPECT_EQ(info.Value(QelItem::kExposureTime), expected);
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

INSTANTIATE_TEST_SUITE_P(Times, ExposureTimeTest, ::testing::ValuesIn(kExposureCases));

}  // namespace
