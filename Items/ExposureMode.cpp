// SPDX-License-Identifier: MIT
// How the exposure was chosen: a scene program of the compact cameras when
// the file names one, otherwise the plain exposure program.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"

namespace {

constexpr UInt32 kTagDigitalImageProgram = 0x800AB;
constexpr UInt32 kTagSceneMode = 0x8008F;
constexpr UInt32 kTagProgramShift = 0x8000D;

// The same scene numbers serve both families of compact cameras; each family
// names them with its own keys.
struct SceneProgram {
    UInt32 number;
    const char* digitalImageProgramKey;
    const char* sceneModeKey;
};

constexpr SceneProgram kScenePrograms[] = {
    {1, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_PORTRAIT", "IDS_QEL_SCENE_MODE_PORTRAIT"},
    {2, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_PARTY_INDOOR", "IDS_QEL_SCENE_MODE_PARTY_INDOOR"},
    {3, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_NIGHT_PORTRAIT", "IDS_QEL_SCENE_MODE_NIGHT_PORTRAIT"},
    {4, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_BEACH_SNOW", "IDS_QEL_SCENE_MODE_BEACH_SNOW"},
    {5, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_LANDSCAPE", "IDS_QEL_SCENE_MODE_LANDSCAPE"},
    {6, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_SUNSET", "IDS_QEL_SCENE_MODE_SUNSET"},
    {7, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_NIGHT_SCENE", "IDS_QEL_SCENE_MODE_NIGHT_SCENE"},
    {8, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_FIREWORKS", "IDS_QEL_SCENE_MODE_FIREWORKS"},
    {9, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_SPARKLER", "IDS_QEL_SCENE_MODE_SPARKLER"},
    {10, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_CLOSE_UP", "IDS_QEL_SCENE_MODE_CLOSE_UP"},
    {11, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_COPY", "IDS_QEL_SCENE_MODE_COPY"},
    {12, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_BACK_LIGHT", "IDS_QEL_SCENE_MODE_BACK_LIGHT"},
    {13, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_MUSEUM", "IDS_QEL_SCENE_MODE_MUSEUM"},
    {14, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_MULTI_EXP", "IDS_QEL_SCENE_MODE_MULTI_EXP"},
    {15, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_PANORAMA_ASSIST", "IDS_QEL_SCENE_MODE_PANORAMA_ASSIST"},
    {16, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_SPORT", "IDS_QEL_SCENE_MODE_SPORT"},
    {17, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_DAWN_DUSK", "IDS_QEL_SCENE_MODE_DAWN_DUSK"},
    {18, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_AUTO", "IDS_QEL_SCENE_MODE_AUTO"},
    {19, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_UNDERWATER", "IDS_QEL_SCENE_MODE_UNDERWATER"},
    {20, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_CHILD", "IDS_QEL_SCENE_MODE_CHILD"},
    {21, "IDS_QEL_DIGITAL_IMAGE_PROGRAM_FACE_PRIORITY", "IDS_QEL_SCENE_MODE_FACE_PRIORITY"},
};

// The tag a family is recognised by, its title and its column of keys; the
// first family whose tag the file carries is the only one consulted.
struct SceneFamily {
    UInt32 tagID;
    const char* titleKey;
    const char* SceneProgram::*valueKey;
};

constexpr SceneFamily kSceneFamilies[] = {
    {kTagDigitalImageProgram, "IDS_QEL_DIGITAL_IMAGE_PROGRAM",
     &SceneProgram::digitalImageProgramKey},
    {kTagSceneMode, "IDS_QEL_SCENE_MODE", &SceneProgram::sceneModeKey},
};

constexpr SInt32 kProgramNormal = 2;

// Exif exposure programs. Any other program (0 "not defined", 5 and above)
// shows an empty value, so the item keeps its line in the grid.
constexpr qel::KeyEntry kExposurePrograms[] = {
    {1, "IDS_QEL_EXPOSURE_MODE_MANUAL"},
    {kProgramNormal, "IDS_QEL_EXPOSURE_MODE_PROGRAM"},
    {3, "IDS_QEL_EXPOSURE_MODE_APERTURE"},
    {4, "IDS_QEL_EXPOSURE_MODE_SHUTTER"},
};

// Marks a program the photographer shifted away from the camera's choice.
constexpr const char* kShiftedProgramMark = "*";

// A shift needs both a step count and a step size; the denominator is not
// looked at.
bool IsProgramShifted(IVandelTagControl* tagControl)
{
    auto shift = qel::ReadValueStep(tagControl, kTagProgramShift);
    return shift && shift->value != 0 && shift->stepNumerator != 0;
}

}  // namespace

void CQelImgInfo::GetExposureMode(IVandelTagControl* tagControl)
{
    if (!tagControl)
        return;

    for (const SceneFamily& family : kSceneFamilies) {
        auto number = qel::ReadInt32(tagControl, family.tagID);
        if (!number)
            continue;
        // Scene numbers are unsigned; one the table does not know leaves no
        // trace and the plain exposure program is shown instead.
        if (const SceneProgram* program = qel::FindRow(kScenePrograms, &SceneProgram::number,
                                                      static_cast<UInt32>(*number))) {
            StoreTitle(QelItem::kExposureMode, family.titleKey);
            StoreValueKey(QelItem::kExposureMode, program->*family.valueKey);
            return;
        }
        break;
    }

    StoreTitle(QelItem::kExposureMode, "IDS_QEL_EXPOSURE_MODE");
    auto program = qel::ReadInt32(tagControl, QelItem::kExposureMode);
    if (!program)
        return;
    CQelString value;
    if (const char* key = qel::FindKey(kExposurePrograms, *program))
        value.LoadString(key);
    if (*program == kProgramNormal && IsProgramShifted(tagControl))
        value.Append(kShiftedProgramMark, kCFStringEncodingASCII);
    StoreValue(QelItem::kExposureMode, value);
}
