// SPDX-License-Identifier: MIT
// Focus mode with the preset distance, lens stabilisation, digital zoom,
// multiple exposure or image overlay, and the camera's record of in-camera
// edits.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using qel::KeyEntry;

constexpr UInt32 kTagPresetFocusDistance = 0x80085;
constexpr UInt32 kTagCompactStabilisation = 0x800AC;
constexpr UInt32 kTagEditHistory = 0x8009E;

// Records carrying a version accept exactly this one, byte for byte.
constexpr char kRecordVersion[4] = {'0', '1', '0', '0'};

bool HasKnownVersion(const char (&version)[4])
{
    return std::memcmp(version, kRecordVersion, sizeof kRecordVersion) == 0;
}

// ---- Focus

constexpr SInt32 kManualFocus = 0;

constexpr KeyEntry kFocusModes[] = {
    {kManualFocus, "IDS_QEL_AUTO_FOCUS_MODE_M"},
    {16, "IDS_QEL_AUTO_FOCUS_MODE_S"},
    {17, "IDS_QEL_AUTO_FOCUS_MODE_C"},
    {18, "IDS_QEL_AUTO_FOCUS_MODE_A"},
};

// The distance the lens was preset to for manual focus, appended to the
// mode text: metres when positive, infinity when negative, nothing at 0
// (no preset).
void AppendPresetDistance(IVandelTagControl* tagControl, CQelString& text)
{
    auto distance = qel::ReadDouble(tagControl, kTagPresetFocusDistance);
    if (!distance)
        return;
    CQelString preset;
    if (*distance > 0.0)
        preset.LoadStringWithFormat("IDS_QEL_PRESET_FOCUS_METRIC", *distance);
    else if (*distance < 0.0)
        preset.LoadString("IDS_QEL_PRESET_FOCUS_INF");
    text.Append(preset);
}

// ---- Stabilisation

// The lens stabilisation record of the SLRs (value type 279).
struct StabilisationRecord {
    char version[4];
    UInt8 state;  // 1 on, 2 off
    UInt8 unused1;
    UInt8 mode;   // 2 active mode
    UInt8 unused2;
};
static_assert(sizeof(StabilisationRecord) == 8, "stabilisation record is 8 bytes");

constexpr UInt8 kStabiliserOn = 1;
constexpr UInt8 kStabiliserActiveMode = 2;

constexpr KeyEntry kStabiliserStates[] = {
    {kStabiliserOn, "IDS_QEL_QV_CONTROL_INFO_ON"},
    {2, "IDS_QEL_QV_CONTROL_INFO_OFF"},
};

// The compact cameras' setting, read when a file has no stabilisation record.
struct CompactStabiliserSetting {
    SInt32 raw;
    const char* key;
    bool active;
};
constexpr CompactStabiliserSetting kCompactStabiliserSettings[] = {
    {1, "IDS_QEL_QV_CONTROL_INFO_OFF", false},
    {2, "IDS_QEL_QV_CONTROL_INFO_ON", false},
    {3, "IDS_QEL_QV_CONTROL_INFO_ON", true},
};

// The bodies of these two model families never show the active mode, even
// when their record says so: their own screens show plain "On".
constexpr SInt32 kFileKindsWithoutActiveMode[] = {261, 263};

// "On", "On Active" or "Off"; empty for a setting nobody knows.
CQelString StabiliserText(const char* key, bool active)
{
    CQelString text;
    if (!key)
        return text;
    text.LoadString(key);
    if (active) {
        text.Append(CFSTR(" "));
        text.AppendLoadString("IDS_QEL_QV_CONTROL_INFO_ACTIVE");
    }
    return text;
}

// ---- Picture processing

// Multiple exposure or image overlay (value type 277).
struct PictureProcessingRecord {
    char version[4];
    SInt32 kind;  // 1 multiple exposure, 2 image overlay
    SInt32 shotCount;
    SInt32 autoGain;  // 2 on
};
static_assert(sizeof(PictureProcessingRecord) == 16, "picture-processing record is 16 bytes");

constexpr SInt32 kMultipleExposure = 1;
constexpr SInt32 kImageOverlay = 2;
constexpr SInt32 kAutoGainOn = 2;

// ---- Edit history

constexpr KeyEntry kEdits[] = {
    {1, "IDS_QEL_EDIT_HISTORY_SPARKLING"},
    {2, "IDS_QEL_EDIT_HISTORY_DREAM"},
    {3, "IDS_QEL_EDIT_HISTORY_BW"},
    {4, "IDS_QEL_EDIT_HISTORY_SEPIA"},
    {5, "IDS_QEL_EDIT_HISTORY_TRIMMING"},
    {6, "IDS_QEL_EDIT_HISTORY_SMALL_PICTURE"},
    {7, "IDS_QEL_EDIT_HISTORY_LUMERA"},
    {8, "IDS_QEL_EDIT_HISTORY_RED_EYE"},
    {9, "IDS_QEL_EDIT_HISTORY_COOL"},
    {10, "IDS_QEL_EDIT_HISTORY_SKYLIGHT"},
    {11, "IDS_QEL_EDIT_HISTORY_WARM_TONE"},
    {12, "IDS_QEL_EDIT_HISTORY_COLOR_CUSTOMIZE"},
    {13, "IDS_QEL_EDIT_HISTORY_PICTURE_COMPOSITION"},
};

// The camera keeps the last ten edits, one 32-bit number each.
constexpr size_t kEditHistoryEntries = 10;
constexpr size_t kEditHistoryEntryBytes = 4;
// Ten entries take 40 bytes; a history claiming more than this is not one
// a camera wrote, and is treated like a buffer that cannot be allocated.
constexpr UInt32 kMaxEditHistoryBytes = 64 * 1024;

}  // namespace

void CQelImgInfo::GetAutoFocusMode(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kAutoFocusMode, "IDS_QEL_AUTO_FOCUS_MODE");
    auto mode = qel::ReadInt32(tagControl, QelItem::kAutoFocusMode);
    if (!mode)
        return;
    // An unknown mode stores an empty value.
    CQelString text;
    if (const char* key = qel::FindKey(kFocusModes, *mode))
        text.LoadString(key);
    if (*mode == kManualFocus)
        AppendPresetDistance(tagControl, text);
    StoreValue(QelItem::kAutoFocusMode, text);
}

void CQelImgInfo::GetQVControlInfo(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kStabilisation, "IDS_QEL_QV_CONTROL_INFO");
    CQelString text;
    if (auto record = qel::ReadRecord<StabilisationRecord>(tagControl, QelItem::kStabilisation,
                                                           kQelValueStabilisation)) {
        if (HasKnownVersion(record->version)) {
            bool active = record->state == kStabiliserOn &&
                          record->mode == kStabiliserActiveMode &&
                          !qel::Lists(kFileKindsWithoutActiveMode, m_fileKind);
            text = StabiliserText(qel::FindKey(kStabiliserStates, record->state), active);
        }
    } else if (auto setting = qel::ReadInt32(tagControl, kTagCompactStabilisation)) {
        if (const auto* known =
                qel::FindRow(kCompactStabiliserSettings, &CompactStabiliserSetting::raw, *setting))
            text = StabiliserText(known->key, known->active);
    }
    // An unknown setting leaves the title without a value.
    if (text.GetLength() > 0)
        StoreValue(QelItem::kStabilisation, text);
}

void CQelImgInfo::GetDigitalZoomRatio(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kDigitalZoom, "IDS_QEL_DIGITAL_ZOOM_RATIO");
    auto ratio = qel::ReadDouble(tagControl, QelItem::kDigitalZoom);
    if (!ratio)
        return;
    // Cameras write 0 when the digital zoom was not used: that is 1.00x.
    CQelString text;
    text.AppendFormat(CFSTR("%.2lf"), *ratio == 0.0 ? 1.0 : *ratio);
    StoreValue(QelItem::kDigitalZoom, text);
}

void CQelImgInfo::GetPicProcInfo(IVandelTagControl* tagControl)
{
    // No title either unless the camera recorded a processing we know: most
    // pictures are neither multiple exposures nor overlays.
    auto record = qel::ReadRecord<PictureProcessingRecord>(
        tagControl, QelItem::kPictureProcessing, kQelValuePictureProcessing);
    if (!record || !HasKnownVersion(record->version))
        return;
    CQelString text;
    switch (record->kind) {
    case kMultipleExposure:
        StoreTitle(QelItem::kPictureProcessing, "IDS_QEL_MULTI_EXPOSURE");
        text.LoadStringWithFormat("IDS_QEL_MULTI_EXPOSURE_UNIT", record->shotCount);
        if (record->autoGain == kAutoGainOn) {
            text.Append(CFSTR(" "));
            text.AppendLoadString("IDS_QEL_MULTI_EXPOSURE_AUTO_GAIN");
        }
        StoreValue(QelItem::kPictureProcessing, text);
        break;
    case kImageOverlay:
        StoreTitle(QelItem::kPictureProcessing, "IDS_QEL_IMAGE_OVERLAY");
        StoreValueKey(QelItem::kPictureProcessing, "IDS_QEL_IMAGE_OVERLAY_ON");
        break;
    default:
        break;
    }
}

void CQelImgInfo::GetEditHistory(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kEditHistoryFirst, "IDS_QEL_EDIT_HISTORY");
    if (!tagControl)
        return;
    const UInt32 size = tagControl->GetTagSize(kTagEditHistory, 0);
    if (size > kMaxEditHistoryBytes)
        return;
    // The buffer always holds all ten entries: a shorter history reads as
    // zeros (no edit) past its end instead of beyond the buffer.
    std::vector<UInt8> history(
        std::max<size_t>(size, kEditHistoryEntries * kEditHistoryEntryBytes));
    if (!qel::ReadTag(tagControl, kTagEditHistory, kQelValueInt32, history.data(), size))
        return;

    const CQelString entryTitle(CFSTR(" "));
    for (size_t index = 0; index < kEditHistoryEntries; ++index) {
        SInt32 edit = 0;
        std::memcpy(&edit, history.data() + index * kEditHistoryEntryBytes, sizeof edit);
        const char* key = qel::FindKey(kEdits, edit);
        // An empty slot stores nothing but keeps its item ID, so every edit
        // stays at the item of its position in the history.
        if (!key)
            continue;
        const UInt32 itemID = QelItem::kEditHistoryFirst + static_cast<UInt32>(index);
        // The later edits line up under the one real title.
        if (index > 0)
            m_infoDict.SetTitle(itemID, entryTitle);
        StoreValueKey(itemID, key);
    }
}
