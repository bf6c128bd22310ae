// SPDX-License-Identifier: MIT
// Multi-flash items: one line per remote flash group (A, B, C), the bounce
// and wide-panel line, and the number texts the flash mode items append:
// group flash compensation, manual output level and guide number.
#include "CQelImgInfo.h"
#include "MixedFlashRecord.h"
#include "QelItemIDs.h"

namespace {

enum class GroupLevel { kCompensation, kOutputLevel };

struct GroupMode {
    UInt16 code;
    const char* key;
    GroupLevel level;  // how the group's level byte reads in this mode
};

// A group's own mode codes. They differ from the unit's: for a group, 1 is
// plain TTL and 2 means the group was not used. Unlisted codes (0, 2, 5,
// above 7) leave the group without a value.
constexpr GroupMode kGroupModes[] = {
    {1, "IDS_QEL_AUTO_FLASH_MODE_TTL", GroupLevel::kCompensation},
    {3, "IDS_QEL_AUTO_FLASH_MODE_AA", GroupLevel::kCompensation},
    {4, "IDS_QEL_AUTO_FLASH_MODE_A", GroupLevel::kCompensation},
    {6, "IDS_QEL_AUTO_FLASH_MODE_M", GroupLevel::kOutputLevel},
    {7, "IDS_QEL_AUTO_FLASH_MODE_RPT", GroupLevel::kOutputLevel},
};

struct FlashGroupLine {
    UInt32 itemID;
    const char* titleKey;
};

constexpr FlashGroupLine kGroupLines[] = {
    {QelItem::kFlashGroupA, "IDS_QEL_MIXED_QB_INFO_GROUP_A"},
    {QelItem::kFlashGroupB, "IDS_QEL_MIXED_QB_INFO_GROUP_B"},
    {QelItem::kFlashGroupC, "IDS_QEL_MIXED_QB_INFO_GROUP_C"},
};

// Output levels step down from full power in sixths of a stop; the part of
// a level below a whole stop is shown as this fraction of an EV.
struct EVFraction {
    SInt32 numerator, denominator;
};
constexpr EVFraction kSixthsOfAStop[] = {{0, 1}, {1, 6}, {1, 3}, {1, 2}, {2, 3}, {5, 6}};

constexpr UInt8 kLowestOutputLevel = 48;  // 1/256 of full power

// Group compensation is written in sixth-stops with the sign reversed.
constexpr double kEVPerCompensationStep = -0.16666666666666666;

// Guide number shown instead of 5.6.
constexpr double kGuideNumberShownFor5_6 = 5.7;

}  // namespace

void CQelImgInfo::GetMixedQBInfo_Group(UInt16 modeA, UInt16 modeB, UInt16 modeC, UInt8 levelA,
                                       UInt8 levelB, UInt8 levelC)
{
    const UInt16 modes[] = {modeA, modeB, modeC};
    const UInt8 levels[] = {levelA, levelB, levelC};
    for (size_t group = 0; group < 3; ++group) {
        const FlashGroupLine& line = kGroupLines[group];
        StoreTitle(line.itemID, line.titleKey);
        const GroupMode* mode = qel::FindRow(kGroupModes, &GroupMode::code, modes[group]);
        if (!mode)
            continue;  // group not used: title only
        CQelString value;
        value.LoadString(mode->key);
        CQelString level;
        if (mode->level == GroupLevel::kCompensation)
            GetMixedQBInfo_FlashCompensation(static_cast<char>(levels[group]), &level);
        else
            GetMixedQBInfo_FlashAmount(levels[group], &level);
        value.Append(level);
        StoreValue(line.itemID, value);
    }
}

void CQelImgInfo::GetMixedQBInfo_BounceAndWidePanel(UInt8 bounce, bool widePanel)
{
    StoreTitle(QelItem::kBounceAndWidePanel, "IDS_QEL_BOUNCE_AND_WIDE_PANEL");
    CQelString value;
    const bool bounced = bounce == 1;  // only 1 means the head was tilted
    if (bounced)
        value.LoadString("IDS_QEL_BOUNCE");
    if (widePanel) {
        if (bounced)
            value.Append("/", kCFStringEncodingASCII);
        value.AppendLoadString("IDS_QEL_WIDE_PANEL");
    }
    if (value.GetLength() > 0)
        StoreValue(QelItem::kBounceAndWidePanel, value);
}

int CQelImgInfo::GetMixedQBInfo_FlashCompensation(char level, CQelString* out)
{
    out->Clear();
    const SInt8 steps = static_cast<SInt8>(level);  // signed whatever `char` is
    if (steps != 0)
        out->LoadStringWithFormat("IDS_QEL_MIXED_QB_INFO_FLASH_COMP",
                                  steps * kEVPerCompensationStep);
    return 0;  // no caller uses the result
}

int CQelImgInfo::GetMixedQBInfo_FlashAmount(UInt8 code, CQelString* out)
{
    out->Clear();
    if (code > kLowestOutputLevel)
        return 0;
    // Whole stops halve the power: 1/1, 1/2, ... 1/256.
    const SInt32 powerDenominator = SInt32{1} << (code / 6);
    const EVFraction& below = kSixthsOfAStop[code % 6];
    if (below.numerator == 0)
        out->LoadStringWithFormat("IDS_QEL_MIXED_QB_INFO_MANUAL_EV2", powerDenominator);
    else
        out->LoadStringWithFormat("IDS_QEL_MIXED_QB_INFO_MANUAL_EV1", powerDenominator,
                                  below.numerator, below.denominator);
    return 0;  // no caller uses the result
}

void CQelImgInfo::GetMixedQBInfo_GuideNumber(double guideNumber, CQelString* out)
{
    out->Clear();
    // Guide number 5.6 is shown as 5.7, the figure the flash unit's own
    // panel shows; a NaN, neither below nor above 5.6, is shown as 5.7 too.
    if (!(guideNumber < 5.6 || guideNumber > 5.6))
        guideNumber = kGuideNumberShownFor5_6;
    out->LoadStringWithFormat("IDS_QEL_MIXED_QB_INFO_MANUAL_GN", guideNumber);
}
