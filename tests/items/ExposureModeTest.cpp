#include "TestImgInfo.h"

#include <array>

namespace {

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

class ExposureModeTest : public ::testing::TestWithParam<ModeCase> {};

TEST_P(ExposureModeTest, TitleAndValue)
{
    const ModeCase& c = GetParam();
    MemoryTagSource tags;
    if (c.digitalProgram)
        tags.Int32(kDigitalImageProgram, *c.digitalProgram);
    if (c.sceneMode)
        tags.Int32(kSceneMode, *c.sceneMode);
    if (c.exposureProgram)
        tags.Int32(QelItem::kExposureMode, *c.exposureProgram);
    if (c.shift)
        tags.ValueStep(kProgramShift, (*c.shift)[0], (*c.shift)[1], (*c.shift)[2]);
    TestImgInfo info;
    info.GetExposureMode(&tags);

    EXPECT_EQ(info.Title(QelItem::kExposureMode), L(c.titleKey));
    std::optional<std::string> expected;
    if (c.valueKey)
        expected = (*c.valueKey ? L(c.valueKey) : std::string()) + c.mark;
    EXPECT_EQ(info.Value(QelItem::kExposureMode), expected);
    // The file's first scene tag decides alone, even when its number is unknown.
    if (c.digitalProgram) {
        EXPECT_FALSE(tags.WasRead(kSceneMode));
    }
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

INSTANTIATE_TEST_SUITE_P(Programs, ExposureModeTest, ::testing::ValuesIn(kModeCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ExposureModeNullSource, StoresNothing)
{
    TestImgInfo info;
    info.GetExposureMode(nullptr);
    EXPECT_EQ(info.Title(QelItem::kExposureMode), std::nullopt);
}

}  // namespace
