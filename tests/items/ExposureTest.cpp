// SPDX-License-Identifier: MIT
// Exposure: the time with its f-number, the signed compensation steps, and the
// mode named by the first scene tag the file has.
#include "TestImgInfo.h"

#include <array>
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

TEST(ExposureTimeTest, ShowsTimeThenFNumber)
{
    for (const ExposureCase& c : kExposureCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kExposureCases));
        MemoryTagSource tags;
        tags.Double(QelItem::kExposureTime, c.seconds);
        tags.Double(kFNumber, c.fNumber);
        std::optional<std::string> expected;
        if (c.shown)
            expected = LF("IDS_QEL_EXPOSURE_TIME_UNIT", c.shown);
        if (c.fNumberShown)
            *expected += LF("IDS_QEL_FNUMBER_PREFIX", c.fNumberShown);
        TestImgInfo info;
        ExpectFormatted(info, &CQelImgInfo::GetExposureTime, tags, QelItem::kExposureTime,
                        L("IDS_QEL_EXPOSURE_TIME"), expected);
    }
}

struct StepCase { SInt16 value, numerator, denominator; double number; const char* text; };

const StepCase kStepCases[] = {
    {0, 1, 3, 0.0, "0"}, {2, 0, 3, 0.0, "0"}, {2, 1, 0, 0.0, "0"}, {-4, 1, 6, -4.0 / 6.0, "-0.7"},
    {2, 1, 3, 2.0 / 3.0, "+0.7"}, {3, 1, 3, 1.0, "+1.0"}, {-7, 1, 3, -7.0 / 3.0, "-2.3"},
    {-7, 1, 6, -7.0 / 6.0, "-1.2"}, {1, -1, 2, -0.5, "-0.5"},
    {-1, 1, 25, -0.04, "-0.0"},  // only an exact zero becomes "0"
    {-32768, -32768, 1, 1073741824.0, "+1073741824.0"},
    {3, 1, -3, -1.0, "-1.0"},  // never written by cameras; must still end
};

TEST(ValueStepTest, NumberAndText)
{
    for (const StepCase& c : kStepCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kStepCases));
        const IVandelTagControl::tagStrValueStep record{c.value, c.numerator, c.denominator};
        TestImgInfo info;
        EXPECT_DOUBLE_EQ(info.ValueStepToDouble(&record), c.number);
        EXPECT_STREQ(info.ValueStepToString(&record), c.text);
    }
}

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
    const struct { void (CQelImgInfo::*format)(IVandelTagControl*); UInt32 id; const char* key; }
        items[] = {{&CQelImgInfo::GetExposureComp, QelItem::kExposureComp, "IDS_QEL_EXPOSURE_COMP"},
                   {&CQelImgInfo::GetExposureDiff, QelItem::kExposureDiff, "IDS_QEL_EXPOSURE_DIFF"}};
    for (const auto& item : items) {
        MemoryTagSource tags;
        tags.ValueStep(item.id, -4, 1, 6);
        TestImgInfo read, absent;
        const std::string unit = std::string(item.key) + "_UNIT";
        ExpectFormatted(read, item.format, tags, item.id, L(item.key), LF(unit.c_str(), "-0.7"));
        ExpectFormatted(absent, item.format, tags.Remove(item.id), item.id, L(item.key), {});
    }
}

constexpr UInt32 kDigitalImageProgram = 0x800AB;
constexpr UInt32 kSceneMode = 0x8008F;
constexpr UInt32 kProgramShift = 0x8000D;
using Shift = std::array<SInt16, 3>;

struct ModeCase {
    const char* name;
    std::optional<SInt32> digitalProgram, sceneMode, exposureProgram;
    std::optional<Shift> shift;
    const char* titleKey;
    const char* valueKey;  // null: no value; "": an empty value
    const char* mark = "";
};

constexpr const char* kPlain = "IDS_QEL_EXPOSURE_MODE";
constexpr const char* kProgram = "IDS_QEL_EXPOSURE_MODE_PROGRAM";

const ModeCase kModeCases[] = {
    {"DigitalProgramFirst", 21, 5, 2, {}, "IDS_QEL_DIGITAL_IMAGE_PROGRAM",
     "IDS_QEL_DIGITAL_IMAGE_PROGRAM_FACE_PRIORITY"},
    {"SceneMode", {}, 1, 1, {}, "IDS_QEL_SCENE_MODE", "IDS_QEL_SCENE_MODE_PORTRAIT"},
    // An unknown scene number falls back without consulting the other family.
    {"DigitalProgramZero", 0, 5, 1, {}, kPlain, "IDS_QEL_EXPOSURE_MODE_MANUAL"},
    {"SceneBeyondTable", {}, 22, 3, {}, kPlain, "IDS_QEL_EXPOSURE_MODE_APERTURE"},
    {"NegativeScene", {}, -1, 4, {}, kPlain, "IDS_QEL_EXPOSURE_MODE_SHUTTER"},
    {"Shifted", {}, {}, 2, Shift{3, 1, 6}, kPlain, kProgram, "*"},
    {"ShiftedAnyStepSize", {}, {}, 2, Shift{-3, 1, 0}, kPlain, kProgram, "*"},
    {"NoShiftSteps", {}, {}, 2, Shift{0, 1, 6}, kPlain, kProgram},
    {"NoShiftStepSize", {}, {}, 2, Shift{3, 0, 6}, kPlain, kProgram},
    {"NoShiftTag", {}, {}, 2, {}, kPlain, kProgram},
    {"ShiftMarksProgramOnly", {}, {}, 1, Shift{3, 1, 6}, kPlain, "IDS_QEL_EXPOSURE_MODE_MANUAL"},
    {"ProgramFive", {}, {}, 5, {}, kPlain, ""}, {"ProgramUndefined", {}, {}, 0, {}, kPlain, ""},
    {"NoTags", {}, {}, {}, {}, kPlain, nullptr},
};

TEST(ExposureMode, TitleAndValue)
{
    for (const ModeCase& c : kModeCases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        tags.Int32(kDigitalImageProgram, c.digitalProgram);
        tags.Int32(kSceneMode, c.sceneMode);
        tags.Int32(QelItem::kExposureMode, c.exposureProgram);
        if (c.shift)
            tags.ValueStep(kProgramShift, (*c.shift)[0], (*c.shift)[1], (*c.shift)[2]);
        std::optional<std::string> expected = Shown(c.valueKey);
        if (expected)
            *expected += c.mark;
        TestImgInfo info;
        ExpectFormatted(info, &CQelImgInfo::GetExposureMode, tags, QelItem::kExposureMode,
                        L(c.titleKey), expected);
        // The file's first scene tag decides alone, even when its number is unknown.
        EXPECT_TRUE(!c.digitalProgram || !tags.WasRead(kSceneMode));
    }
}

}  // namespace
