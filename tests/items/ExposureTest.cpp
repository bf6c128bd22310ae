// SPDX-License-Identifier: MIT
// Exposure: the time with its f-number, the signed compensation steps, and the
// mode named by the first scene tag the file has.
#include "TestImgInfo.h"

#include <cmath>

namespace {

using namespace QelItem;

Tags Time(std::optional<double> seconds, std::optional<double> fNumber = {})
{
    return [=](MemoryTagSource& t) { t.Double(kExposureTime, seconds).Double(0x829D, fNumber); };
}

TEST(ExposureTimeTest, ShowsTimeThenFNumber)
{
    const auto time = &CQelImgInfo::GetExposureTime;
    auto Shown = [](const char* time, const char* fNumber = nullptr) {
        return LF("IDS_QEL_EXPOSURE_TIME_UNIT", time) + (fNumber ? LF("IDS_QEL_FNUMBER_PREFIX", fNumber) : "");
    };
    const std::string intMin = Shown("1/-214748364.8");  // the 32-bit conversion's INT_MIN, times 0.1
    ExpectItems({
        {"1/250", time, kExposureTime, Time(0.004), Shown("1/250")},
        {"3.0000001 + 0.05 truncates", time, kExposureTime, Time(1.0 / 3.0), Shown("1/3")},
        {"a tie goes up", time, kExposureTime, Time(0.8), Shown("1/1.3")},
        {"only .0 goes", time, kExposureTime, Time(0.1, 11.0), Shown("1/10", "11")},
        {"one second in seconds", time, kExposureTime, Time(1.0, 10.0), Shown("1", "10")},
        {"two decimals", time, kExposureTime, Time(2.25), Shown("2.25")},
        {"a zero last decimal drops them all", time, kExposureTime, Time(1.5), Shown("1")},
        {"negative", time, kExposureTime, Time(-0.5), Shown("1/-1.9")},
        {"zero", time, kExposureTime, Time(0.0), intMin},
        {"NaN", time, kExposureTime, Time(std::nan("")), intMin},
        {"f-number alone", time, kExposureTime, Time({}, 8.0), {}},
    });
}

TEST(ValueStepTest, NumberAndText)
{
    const struct { SInt16 value, numerator, denominator; double number; const char* text; } cases[] = {
        {0, 1, 3, 0.0, "0"}, {2, 1, 0, 0.0, "0"}, {-4, 1, 6, -4.0 / 6.0, "-0.7"},
        {3, 1, 3, 1.0, "+1.0"}, {-7, 1, 6, -7.0 / 6.0, "-1.2"}, {1, -1, 2, -0.5, "-0.5"},
        {-1, 1, 25, -0.04, "-0.0"},  // only an exact zero becomes "0"
        {3, 1, -3, -1.0, "-1.0"},    // never written by cameras; must still end
    };
    for (const auto& c : cases) {
        const IVandelTagControl::tagStrValueStep record{c.value, c.numerator, c.denominator};
        TestImgInfo info;
        EXPECT_DOUBLE_EQ(info.ValueStepToDouble(&record), c.number) << c.text;
        EXPECT_STREQ(info.ValueStepToString(&record), c.text);
    }
}

Tags Step(UInt32 id, SInt16 value, SInt16 numerator, SInt16 denominator)
{
    return [=](MemoryTagSource& t) { t.ValueStep(id, value, numerator, denominator); };
}

TEST(ExposureOffsetItems, ValueOrTitleOnly)
{
    const auto comp = &CQelImgInfo::GetExposureComp, diff = &CQelImgInfo::GetExposureDiff;
    ExpectItems({
        {"compensation", comp, kExposureComp, Step(kExposureComp, -4, 1, 6), LF("IDS_QEL_EXPOSURE_COMP_UNIT", "-0.7")},
        {"difference", diff, kExposureDiff, Step(kExposureDiff, 1, 1, 3), LF("IDS_QEL_EXPOSURE_DIFF_UNIT", "+0.3")},
        {"no compensation", comp, kExposureComp, [](auto&) {}, {}},
    });
}

constexpr UInt32 kDigitalImageProgram = 0x800AB, kSceneMode = 0x8008F, kProgramShift = 0x8000D;

TEST(ExposureMode, TitleAndValue)
{
    struct Case {
        const char* name;
        std::optional<SInt32> digitalProgram, sceneMode, program;
        std::optional<IVandelTagControl::tagStrValueStep> shift;
        const char* titleKey;
        std::optional<std::string> value;
    };
    const char *plain = "IDS_QEL_EXPOSURE_MODE", *program = "IDS_QEL_EXPOSURE_MODE_PROGRAM";
    const std::string manual = L("IDS_QEL_EXPOSURE_MODE_MANUAL");
    const Case cases[] = {
        {"digital program first", 21, 5, 2, {}, "IDS_QEL_DIGITAL_IMAGE_PROGRAM",
         L("IDS_QEL_DIGITAL_IMAGE_PROGRAM_FACE_PRIORITY")},
        // An unknown scene number falls back without consulting the other family.
        {"digital program zero", 0, 5, 1, {}, plain, manual},
        {"negative scene", {}, -1, 4, {}, plain, L("IDS_QEL_EXPOSURE_MODE_SHUTTER")},
        {"shifted", {}, {}, 2, {{3, 1, 6}}, plain, L(program) + "*"},
        {"no shift steps", {}, {}, 2, {{0, 1, 6}}, plain, L(program)},
        {"no shift step size", {}, {}, 2, {{3, 0, 6}}, plain, L(program)},
        {"a shift marks the program only", {}, {}, 1, {{3, 1, 6}}, plain, manual},
        {"program five", {}, {}, 5, {}, plain, ""},
        {"no tags", {}, {}, {}, {}, plain, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        tags.Int32(kDigitalImageProgram, c.digitalProgram).Int32(kSceneMode, c.sceneMode);
        tags.Int32(kExposureMode, c.program);
        if (c.shift)
            tags.Record(kProgramShift, kQelValueStep, *c.shift);
        TestImgInfo info;
        info.GetExposureMode(&tags);
        EXPECT_EQ(info.Title(kExposureMode), L(c.titleKey));
        EXPECT_EQ(info.Value(kExposureMode), c.value);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
        // The file's first scene tag decides alone, even when its number is unknown.
        EXPECT_TRUE(!c.digitalProgram || !tags.WasRead(kSceneMode));
    }
}

}  // namespace
