// SPDX-License-Identifier: MIT
// White balance: the light source, colour temperature or preset slot, then
// the fine-tuning step; the six light sources also mark their place in the
// white-balance value list.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"
#include "ValueListTables.h"

#include <cstdio>

namespace {

constexpr UInt32 kTagFineTuning = 0x8000B;

struct WhiteBalanceRecord {
    UInt32 mode;
    SInt32 colorTemperature;  // kelvin, meaningful for kModeColorTemperature only
};

constexpr UInt32 kModePreset = 7;
constexpr UInt32 kModeColorTemperature = 8;

constexpr qel::KeyEntry kWhiteBalanceModes[] = {
    {0, "IDS_QEL_WB_AUTO"},     {1, "IDS_QEL_WB_INCANDESCENT"},
    {2, "IDS_QEL_WB_FLUORESCENT"}, {3, "IDS_QEL_WB_SUNNY"},
    {4, "IDS_QEL_WB_FLASH"},    {5, "IDS_QEL_WB_SHADE"},
    {6, "IDS_QEL_WB_CLOUDY"},   {kModePreset, "IDS_QEL_WB_PRESET"},
    {9, "IDS_QEL_WB_APP_CUSTOM"},
};

// Shown for a mode the camera wrote but this table does not know.
constexpr const char* kUnknownMode = "?";

// Preset slots 1 to 4 are written as 7 + 16 x slot (23, 39, 55, 71); slot 0
// is the plain preset mode, shown without a number.
constexpr UInt32 kPresetSlotStride = 16;
constexpr UInt32 kLastPresetSlot = 4;

// These model families name their preset slots "d-1" to "d-4"; all others
// number them plainly.
constexpr SInt32 kDashPresetFileKinds[] = {260, 261, 262, 263, 1028};

UInt32 PresetSlot(UInt32 mode)
{
    if (mode <= kModePreset || (mode - kModePreset) % kPresetSlotStride != 0)
        return 0;
    UInt32 slot = (mode - kModePreset) / kPresetSlotStride;
    return slot <= kLastPresetSlot ? slot : 0;
}

}  // namespace

void CQelImgInfo::GetWhiteBalance(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kWhiteBalance, "IDS_QEL_WB");
    if (!tagControl)
        return;
    // Asked only so the tag source sees its usual sequence of requests.
    tagControl->GetTagInfo(QelItem::kWhiteBalance, 0);
    auto record = qel::ReadRecord<WhiteBalanceRecord>(tagControl, QelItem::kWhiteBalance,
                                                      kQelValueWhiteBalance);
    if (!record)
        return;

    CQelString value;
    char number[32];
    if (record->mode == kModeColorTemperature) {
        value.LoadStringWithFormat("IDS_QEL_WB_COLOR_TEMP", record->colorTemperature);
    } else if (UInt32 slot = PresetSlot(record->mode)) {
        value.LoadString("IDS_QEL_WB_PRESET");
        std::snprintf(number, sizeof number,
                      qel::Lists(kDashPresetFileKinds, m_fileKind) ? " d-%d" : " %d", static_cast<int>(slot));
        value.Append(number, kCFStringEncodingASCII);
    } else if (const char* key = qel::FindKey(kWhiteBalanceModes, record->mode)) {
        value.LoadString(key);
    } else {
        value.Append(kUnknownMode, kCFStringEncodingASCII);
    }
    qel::RecordListPosition(qel::kWhiteBalanceList, record->mode, m_wbListIndex);

    auto fineTuning = qel::ReadInt32(tagControl, kTagFineTuning);
    if (fineTuning && *fineTuning != 0) {
        std::snprintf(number, sizeof number, " %+ld", static_cast<long>(*fineTuning));
        value.Append(number, kCFStringEncodingASCII);
    }
    StoreValue(QelItem::kWhiteBalance, value);
}
