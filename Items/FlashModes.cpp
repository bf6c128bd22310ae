// SPDX-License-Identifier: MIT
// Flash sync mode and flash control mode. The control mode comes from the
// multi-flash record when the camera wrote one it understands (an external
// unit, an optional unit or the built-in flash, possibly commanding remote
// groups), otherwise from the older single-number flash mode tag.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "MixedFlashRecord.h"
#include "QelItemIDs.h"
#include "TagReads.h"

using namespace qel;

namespace {

constexpr KeyEntry kSyncModes[] = {
    {0, "IDS_QEL_FLASH_SYNC_MODE_NORMAL"},   {1, "IDS_QEL_FLASH_SYNC_MODE_SLOW"},
    {2, "IDS_QEL_FLASH_SYNC_MODE_REAR"},     {3, "IDS_QEL_FLASH_SYNC_MODE_REAR_SLOW"},
    {16, "IDS_QEL_FLASH_SYNC_MODE_RED_EYE"}, {17, "IDS_QEL_FLASH_SYNC_MODE_RED_EYE_SLOW"},
};
// The camera says "off" even when the flash state claims otherwise; this
// code is tested before the flash state.
constexpr UInt32 kSyncOff = 32;
constexpr UInt32 kSyncUnread = 0xFFFF;

// What a flash mode text is followed by, without a separator.
enum class Appended { kNothing, kGuideNumber, kOutputLevel };

struct UnitMode {
    UInt16 code;
    const char* key;
    const char* commanderKey;  // when the flash also commands remote groups
    Appended appended;
};

// The external unit of "0100" records names its mode plainly; it has no
// commander wording. The first row also stands for codes above 7.
constexpr UnitMode kExternalUnitModes[] = {
    {0, "IDS_QEL_AUTO_FLASH_MODE_NONE", "IDS_QEL_AUTO_FLASH_MODE_NONE", Appended::kNothing},
    {1, "IDS_QEL_AUTO_FLASH_MODE_TTL_BL", "IDS_QEL_AUTO_FLASH_MODE_TTL_BL", Appended::kNothing},
    {2, "IDS_QEL_AUTO_FLASH_MODE_TTL", "IDS_QEL_AUTO_FLASH_MODE_TTL", Appended::kNothing},
    {3, "IDS_QEL_AUTO_FLASH_MODE_AA", "IDS_QEL_AUTO_FLASH_MODE_AA", Appended::kNothing},
    {4, "IDS_QEL_AUTO_FLASH_MODE_A", "IDS_QEL_AUTO_FLASH_MODE_A", Appended::kNothing},
    {5, "IDS_QEL_AUTO_FLASH_MODE_M", "IDS_QEL_AUTO_FLASH_MODE_M", Appended::kGuideNumber},
    {6, "IDS_QEL_AUTO_FLASH_MODE_M", "IDS_QEL_AUTO_FLASH_MODE_M", Appended::kOutputLevel},
    {7, "IDS_QEL_AUTO_FLASH_MODE_RPT", "IDS_QEL_AUTO_FLASH_MODE_RPT", Appended::kOutputLevel},
};

// An optional unit on a camera writing "0101"/"0102" records. The first row
// also stands for codes above 7.
constexpr UnitMode kOptionalUnitModes[] = {
    {0, "IDS_QEL_AUTO_FLASH_MODE_NONE", "IDS_QEL_AUTO_FLASH_MODE_COMMANDER", Appended::kNothing},
    {1, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_TTL_BL", "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_TTL_BL_COMDR",
     Appended::kNothing},
    {2, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_TTL", "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_TTL_COMDR",
     Appended::kNothing},
    {3, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_AA", "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_AA_COMDR",
     Appended::kNothing},
    {4, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_A", "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_A_COMDR",
     Appended::kNothing},
    {5, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_M", "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_M_COMDR",
     Appended::kGuideNumber},
    {6, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_M", "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_M_COMDR",
     Appended::kOutputLevel},
    {7, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_RPT", "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_RPT_COMDR",
     Appended::kOutputLevel},
};

// The built-in flash. The first row stands for every unlisted code. Its
// repeating flash has no commander wording.
constexpr UnitMode kBuiltInModes[] = {
    {0, "IDS_QEL_AUTO_FLASH_MODE_NONE", "IDS_QEL_AUTO_FLASH_MODE_COMMANDER", Appended::kNothing},
    {1, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_Z_TTL_BL",
     "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_Z_TTL_BL_COMDR", Appended::kNothing},
    {6, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_M", "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_M_COMDR",
     Appended::kOutputLevel},
    {7, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_RPT", "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_RPT",
     Appended::kOutputLevel},
};
// Built-in TTL (code 1) is balanced fill unless the camera metered spot.
constexpr UInt16 kBuiltInTTL = 1;
constexpr UnitMode kBuiltInSpotTTL = {
    1, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_Z_TTL", "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_Z_TTL_COMDR",
    Appended::kNothing};
constexpr SInt32 kSpotMetering = 3;

template <size_t N>
const UnitMode& ModeFor(const UnitMode (&table)[N], UInt16 code)
{
    const UnitMode* mode = FindRow(table, &UnitMode::code, code);
    return mode ? *mode : table[0];
}

// The older flash mode tag. The commander variants do not follow the order
// of the plain ones: 24, after repeating flash, is the A-mode commander.
constexpr KeyEntry kLegacyFlashModes[] = {
    {0, "IDS_QEL_AUTO_FLASH_MODE_EXTERNAL"},
    {1, "IDS_QEL_AUTO_FLASH_MODE_MANUAL"},
    {2, "IDS_QEL_AUTO_FLASH_MODE_FP"},
    {3, "IDS_QEL_AUTO_FLASH_MODE_NEW_TTL"},
    {4, "IDS_QEL_AUTO_FLASH_MODE_AA"},
    {5, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_TTL"},
    {6, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_M"},
    {7, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_TTL"},
    {8, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_AA"},
    {9, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_A"},
    {10, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_M"},
    {11, "IDS_QEL_AUTO_FLASH_MODE_COMMANDER_TTL"},
    {12, "IDS_QEL_AUTO_FLASH_MODE_COMMANDER_AA"},
    {13, "IDS_QEL_AUTO_FLASH_MODE_COMMANDER_M"},
    {14, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL"},
    {15, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_RPT"},
    {16, "IDS_QEL_AUTO_FLASH_MODE_COMMANDER"},
    {17, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_TTL_COMDR"},
    {18, "IDS_QEL_AUTO_FLASH_MODE_BUILTIN_M_COMDR"},
    {19, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_RPT"},
    {20, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_TTL_COMDR"},
    {21, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_AA_COMDR"},
    {22, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_M_COMDR"},
    {23, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_RPT_COMDR"},
    {24, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_A_COMDR"},
};

// What the unit's settings say beside its mode.
struct UnitSettings {
    UInt8 outputLevel;
    double guideNumber;
};

// A "0101" record carries group data only when the commander flag is
// exactly 1, a "0102" record whenever it is set. Group lines need a flag of
// 1 either way, so a "0102" flag of 2 gives commander wording but no groups.
FlashGroups GroupsUnderCommand(MixedFlashVersion version, UInt8 commander,
                               const FlashGroups& groups)
{
    const bool taken = version == MixedFlashVersion::k0101 ? commander == 1 : commander != 0;
    return taken ? groups : FlashGroups{};
}

constexpr UInt8 kCommanding = 1;

// The mode text followed by its guide number or output level.
CQelString UnitModeText(CQelImgInfo& info, const UnitMode& mode, bool commander,
                        const UnitSettings& settings)
{
    CQelString text;
    text.LoadString(commander ? mode.commanderKey : mode.key);
    CQelString appended;
    if (mode.appended == Appended::kGuideNumber)
        info.GetMixedQBInfo_GuideNumber(settings.guideNumber, &appended);
    else if (mode.appended == Appended::kOutputLevel)
        info.GetMixedQBInfo_FlashAmount(settings.outputLevel, &appended);
    text.Append(appended);
    return text;
}

void ShowGroups(CQelImgInfo& info, const FlashGroups& groups)
{
    info.GetMixedQBInfo_Group(groups.modeA, groups.modeB, groups.modeC, groups.levelA,
                              groups.levelB, groups.levelC);
}

}  // namespace

void CQelImgInfo::GetFlashSyncMode(IVandelTagControl* tags)
{
    StoreTitle(QelItem::kFlashSyncMode, "IDS_QEL_FLASH_SYNC_MODE");
    if (!tags)
        return;
    // Without the flash state the flash counts as not used here.
    const auto flash = ReadFlashState(tags);
    const bool flashUsed = flash && flash->used != 0;
    const auto code = static_cast<UInt32>(
        ReadInt32(tags, QelItem::kFlashSyncMode).value_or(static_cast<SInt32>(kSyncUnread)));

    const char* key = nullptr;
    if (code == kSyncOff)
        key = "IDS_QEL_FLASH_SYNC_OFF";
    else if (flashUsed)
        key = FindKey(kSyncModes, code);
    if (key)
        StoreValueKey(QelItem::kFlashSyncMode, key);
    else
        StoreValue(QelItem::kFlashSyncMode, FlashBlank());
}

void CQelImgInfo::GetMixedQBInfo(IVandelTagControl* tags)
{
    StoreTitle(QelItem::kFlashMode, "IDS_QEL_AUTO_FLASH_MODE");
    if (!tags)
        return;
    // Unlike the sync mode, a missing flash state does not stop the control
    // mode: only a flash state that says "not used" does.
    if (const auto flash = ReadFlashState(tags); flash && flash->used == 0) {
        StoreValue(QelItem::kFlashMode, FlashBlank());
        return;
    }
    const auto record = ReadMixedFlash(tags);
    const MixedFlashVersion version = record ? VersionOf(*record) : MixedFlashVersion::kUnknown;

    if (version == MixedFlashVersion::k0100) {
        const ExternalUnitRecord unit = ReadExternalUnit(*record);
        StoreValue(QelItem::kFlashMode,
                   UnitModeText(*this, ModeFor(kExternalUnitModes, unit.mode), false,
                                {unit.outputLevel, unit.guideNumber}));
        GetMixedQBInfo_BounceAndWidePanel(unit.bounce, unit.widePanel == 1);
        if (unit.controlsGroups == 1)
            ShowGroups(*this, unit.groups);
        return;
    }
    if (version == MixedFlashVersion::k0101 || version == MixedFlashVersion::k0102) {
        const UInt8 source = SourceOf(*record);
        if (source == kSourceOptionalUnit) {
            const OptionalUnitRecord unit = ReadOptionalUnit(*record);
            StoreValue(QelItem::kFlashMode,
                       UnitModeText(*this, ModeFor(kOptionalUnitModes, unit.mode),
                                    unit.commander != 0, {unit.outputLevel, unit.guideNumber}));
            GetMixedQBInfo_BounceAndWidePanel(unit.bounce, unit.widePanel == 1);
            if (unit.commander == kCommanding)
                ShowGroups(*this, GroupsUnderCommand(version, unit.commander, unit.groups));
            return;
        }
        if (source == kSourceBuiltIn) {
            const BuiltInFlashRecord flash = ReadBuiltInFlash(*record);
            const UnitMode* mode = &ModeFor(kBuiltInModes, flash.mode);
            if (flash.mode == kBuiltInTTL &&
                ReadInt32(tags, QelItem::kMeteringMode) == kSpotMetering)
                mode = &kBuiltInSpotTTL;
            StoreValue(QelItem::kFlashMode,
                       UnitModeText(*this, *mode, flash.commander != 0, {flash.outputLevel, 0.0}));
            if (flash.commander == kCommanding)
                ShowGroups(*this, GroupsUnderCommand(version, flash.commander, flash.groups));
            return;
        }
    }
    // No record, a version not known, or a source that says nothing usable.
    GetFlashAutoMode(tags);
}

void CQelImgInfo::GetFlashAutoMode(IVandelTagControl* tags)
{
    if (!tags)
        return;
    if (const auto flash = ReadFlashState(tags); flash && flash->used == 0) {
        StoreValue(QelItem::kFlashMode, FlashBlank());
        return;
    }
    if (const auto code = ReadInt32(tags, QelItem::kFlashMode))
        StoreValueKey(QelItem::kFlashMode, KeyFor(kLegacyFlashModes, static_cast<UInt32>(*code),
                                                  "IDS_QEL_AUTO_FLASH_MODE_NONE"));
}
