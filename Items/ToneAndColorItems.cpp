// SPDX-License-Identifier: MIT
// How the camera processed the picture: colour effect, colour space, tone
// table, brightness/contrast, saturation, hue, noise reduction, converter
// lens and the authenticity check.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"
#include "ValueListTables.h"

#include <array>
#include <cstdio>

using qel::FindKey;
using qel::KeyEntry;
using qel::KeyFor;
using qel::kEmptyValue;
using qel::ReadInt32;

namespace {

// The colour tag says 1 for a monochrome picture.
constexpr SInt32 kColorMonochrome = 1;

constexpr KeyEntry kColors[] = {
    {kColorMonochrome, "IDS_QEL_COLOR_BW"},
    {2, "IDS_QEL_COLOR_SEPIA"},
    {3, "IDS_QEL_COLOR_VIVID"},
    {4, "IDS_QEL_COLOR_COOL"},
};
// SLRs name monochrome and plain colour (the fallback) in their own words.
constexpr KeyEntry kSLRColors[] = {
    {kColorMonochrome, "IDS_QEL_COLOR_BW_DSLR"},
    {2, "IDS_QEL_COLOR_SEPIA"},
    {3, "IDS_QEL_COLOR_VIVID"},
    {4, "IDS_QEL_COLOR_COOL"},
};

// Scanner colour spaces, as whole 32-bit codes; anything else is RGB.
constexpr KeyEntry kColorSpaces[] = {
    {0, "IDS_QEL_COLOR_SPACE_UNKNOWN"},
    {0x10000, "IDS_QEL_COLOR_SPACE_CUSTOM"},
    {0x1020001, "IDS_QEL_COLOR_SPACE_GRAY"},
    {0x8020001, "IDS_QEL_COLOR_SPACE_GRAY"},
    {0x10020001, "IDS_QEL_COLOR_SPACE_GRAY"},
    {0x1020100, "IDS_QEL_COLOR_SPACE_PALETTE"},
    {0x2020100, "IDS_QEL_COLOR_SPACE_PALETTE"},
    {0x4020100, "IDS_QEL_COLOR_SPACE_PALETTE"},
    {0x8020100, "IDS_QEL_COLOR_SPACE_PALETTE"},
    {0x8060203, "IDS_QEL_COLOR_SPACE_LCH"},
    {0x10060203, "IDS_QEL_COLOR_SPACE_LCH"},
    {0x8060204, "IDS_QEL_COLOR_SPACE_LAB"},
    {0x10060204, "IDS_QEL_COLOR_SPACE_LAB"},
    {0x8060205, "IDS_QEL_COLOR_SPACE_YCC"},
    {0x10060205, "IDS_QEL_COLOR_SPACE_YCC"},
    {0x8080202, "IDS_QEL_COLOR_SPACE_CMYK"},
    {0x10080202, "IDS_QEL_COLOR_SPACE_CMYK"},
    {0x10020401, "IDS_QEL_COLOR_SPACE_RAW"},
    {0x10020402, "IDS_QEL_COLOR_SPACE_RAW"},
    {0x10020403, "IDS_QEL_COLOR_SPACE_RAW"},
};

// Tone tables. The two ends of the scale (1 and 2) are named by file kind,
// see below; 7 to 15 are unused and show an empty value.
constexpr KeyEntry kToneTables[] = {
    {0, "IDS_QEL_GAMMA_TABLE_NORMAL"},     {3, "IDS_QEL_GAMMA_TABLE_BW"},
    {4, "IDS_QEL_GAMMA_TABLE_AUTO"},       {5, "IDS_QEL_GAMMA_TABLE_MID_LOW"},
    {6, "IDS_QEL_GAMMA_TABLE_MID_HIGH"},   {16, "IDS_QEL_GAMMA_TABLE_USER"},
    {17, "IDS_QEL_GAMMA_TABLE_CUSTOM_1"},  {18, "IDS_QEL_GAMMA_TABLE_CUSTOM_2"},
    {19, "IDS_QEL_GAMMA_TABLE_CUSTOM_3"},
};
// Most bodies call the ends of the tone scale "less" and "more"; files of
// kinds 1026 and 1027 call them "low" and "high". The value list always says
// "low"/"high", so the shown value and the list entry may differ in wording.
constexpr SInt32 kLowHighToneFileKinds[] = {1026, 1027};
constexpr KeyEntry kToneEndsLowHigh[] = {
    {1, "IDS_QEL_GAMMA_TABLE_LOW"},
    {2, "IDS_QEL_GAMMA_TABLE_HIGH"},
};
constexpr KeyEntry kToneEndsLessMore[] = {
    {1, "IDS_QEL_GAMMA_TABLE_LESS"},
    {2, "IDS_QEL_GAMMA_TABLE_MORE"},
};

constexpr KeyEntry kBrightnessContrast[] = {
    {1, "IDS_QEL_BRTCNT_COMP_NORMAL"},     {2, "IDS_QEL_BRTCNT_COMP_AUTO"},
    {0x101, "IDS_QEL_BRTCNT_COMP_BRT_UP"}, {0x102, "IDS_QEL_BRTCNT_COMP_BRT_DOWN"},
    {0x104, "IDS_QEL_BRTCNT_COMP_CNT_UP"}, {0x108, "IDS_QEL_BRTCNT_COMP_CNT_DOWN"},
    {0x10A, "IDS_QEL_BRTCNT_COMP_BW"},     {0x10C, "IDS_QEL_BRTCNT_COMP_SEPIA"},
};

constexpr KeyEntry kSaturationAdjustments[] = {
    {1, "IDS_QEL_SATURATION_ADJUSTMENT_NORMAL"},
    {2, "IDS_QEL_SATURATION_ADJUSTMENT_MODERATE"},
    {3, "IDS_QEL_SATURATION_ADJUSTMENT_ENHANCED"},
    {4, "IDS_QEL_SATURATION_ADJUSTMENT_AUTO"},
};

// A picture in sepia, cool or monochrome colour has no saturation step; the
// effect is named instead.
constexpr KeyEntry kSaturationCompEffects[] = {
    {2, "IDS_QEL_SATURATION_COMP_SEPIA"},
    {4, "IDS_QEL_SATURATION_COMP_COOL"},
    {1, "IDS_QEL_SATURATION_COMP_MONO"},
};
// Saturation steps run from -2 to +2; -3 and below mean no step was recorded.
constexpr SInt32 kHighestUnsetSaturationComp = -3;

constexpr KeyEntry kNoiseReduction[] = {
    {0, "IDS_QEL_NOISE_REDUCTION_OFF"},
    {1, "IDS_QEL_NOISE_REDUCTION_FIXED"},
};

// 0xFFFF is "on" without a level.
constexpr KeyEntry kHighSensitivityNR[] = {
    {0, "IDS_QEL_HIGH_SENSITIVITY_NR_OFF"},
    {1, "IDS_QEL_HIGH_SENSITIVITY_NR_OFF"},
    {2, "IDS_QEL_HIGH_SENSITIVITY_NR_ON_LOW"},
    {3, "IDS_QEL_HIGH_SENSITIVITY_NR_ON_MEDIUM_LOW"},
    {4, "IDS_QEL_HIGH_SENSITIVITY_NR_ON_NORMAL"},
    {5, "IDS_QEL_HIGH_SENSITIVITY_NR_ON_MEDIUM_HIGH"},
    {6, "IDS_QEL_HIGH_SENSITIVITY_NR_ON_HIGH"},
    {0xFFFF, "IDS_QEL_HIGH_SENSITIVITY_NR_ON"},
};

constexpr KeyEntry kConverterLenses[] = {
    {0x1001, "IDS_QEL_CONVERTER_LENS_FISH_EYE1"}, {0x1002, "IDS_QEL_CONVERTER_LENS_FISH_EYE2"},
    {0x2001, "IDS_QEL_CONVERTER_LENS_WIDE"},      {0x3001, "IDS_QEL_CONVERTER_LENS_TELE1"},
    {0x3002, "IDS_QEL_CONVERTER_LENS_TELE2"},     {0x4001, "IDS_QEL_CONVERTER_LENS_SLIDE"},
};

constexpr KeyEntry kFalsification[] = {
    {0, "IDS_QEL_FALSIFICATION_INFO_OFF"},
    {1, "IDS_QEL_FALSIFICATION_INFO_ON"},
};

// A step as the camera menu shows it: signed when non-zero (+2, -1), bare 0.
std::array<char, 16> StepText(SInt32 step)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), step != 0 ? "%+ld" : "%ld", static_cast<long>(step));
    return text;
}

bool IsMonochrome(IVandelTagControl* tagControl)
{
    auto color = ReadInt32(tagControl, QelItem::kColor);
    return color && *color == kColorMonochrome;
}

}  // namespace

void CQelImgInfo::GetColor(IVandelTagControl* tagControl)
{
    const bool slr = m_deviceKind == kDeviceSLR;
    StoreMappedItem(tagControl, {QelItem::kColor, "IDS_QEL_COLOR", slr ? kSLRColors : kColors,
                                 slr ? "IDS_QEL_COLOR_COLOR_DSLR" : "IDS_QEL_COLOR_COLOR"});
}

void CQelImgInfo::GetColorSpace(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kColorSpace, "IDS_QEL_COLOR_SPACE");
    if (!tagControl)
        return;
    // A scan whose colour space cannot be read says so rather than staying blank.
    auto space = ReadInt32(tagControl, QelItem::kColorSpace);
    StoreValueKey(QelItem::kColorSpace,
                  space ? KeyFor(kColorSpaces, *space, "IDS_QEL_COLOR_SPACE_RGB")
                        : "IDS_QEL_COLOR_SPACE_UNKNOWN");
}

void CQelImgInfo::GetGammaTable(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kToneTable, "IDS_QEL_GAMMA_TABLE");
    auto tone = ReadInt32(tagControl, QelItem::kToneTable);
    if (!tone)
        return;
    const bool lowHigh = qel::Lists(kLowHighToneFileKinds, m_fileKind);
    const char* key = FindKey(lowHigh ? kToneEndsLowHigh : kToneEndsLessMore, *tone);
    if (!key)
        key = KeyFor(kToneTables, *tone, kEmptyValue);
    // Black and white, auto and the custom tables are not choices of the list.
    qel::RecordListPosition(ListEntries(QelItem::kToneTable), static_cast<UInt32>(*tone),
                            m_gammaListIndex);
    StoreValueKey(QelItem::kToneTable, key);
}

void CQelImgInfo::GetBRTCNTComp(IVandelTagControl* tagControl)
{
    // No list index: hosts offer the tone scale here without marking a
    // current choice, since the setting's codes are not the scale's.
    StoreMappedItem(tagControl, {QelItem::kBrightnessContrast, "IDS_QEL_BRTCNT_COMP",
                                 kBrightnessContrast, kEmptyValue});
}

void CQelImgInfo::GetSaturationAdjust(IVandelTagControl* tagControl)
{
    StoreMappedItem(tagControl, {QelItem::kSaturationAdjust, "IDS_QEL_SATURATION_ADJUSTMENT",
                                 kSaturationAdjustments, "IDS_QEL_SATURATION_ADJUSTMENT_NONE",
                                 &CQelImgInfo::m_saturationListIndex});
}

void CQelImgInfo::GetSaturationComp(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kSaturationComp, "IDS_QEL_SATURATION_COMP");
    if (!tagControl)
        return;
    if (auto color = ReadInt32(tagControl, QelItem::kColor)) {
        if (const char* effect = FindKey(kSaturationCompEffects, *color)) {
            StoreValueKey(QelItem::kSaturationComp, effect);
            return;
        }
    }
    // From here on the item always gets a value, blank when no step is known.
    auto step = ReadInt32(tagControl, QelItem::kSaturationComp);
    if (!step || *step <= kHighestUnsetSaturationComp) {
        StoreValueKey(QelItem::kSaturationComp, kEmptyValue);
        return;
    }
    const CQelString text(StepText(*step).data(), kCFStringEncodingASCII);
    StoreValue(QelItem::kSaturationComp, text);
}

void CQelImgInfo::GetHueAdjustment(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kHueAdjustment, "IDS_QEL_HUE_ADJUSTMENT");
    // A monochrome picture has no hue to adjust.
    if (IsMonochrome(tagControl))
        return;
    auto hue = ReadInt32(tagControl, QelItem::kHueAdjustment);
    if (!hue)
        return;
    CQelString value;
    value.LoadStringWithFormat("IDS_QEL_HUE_ADJUSTMENT_UNIT", StepText(*hue).data());
    StoreValue(QelItem::kHueAdjustment, value);
}

void CQelImgInfo::GetNoiseReduction(IVandelTagControl* tagControl)
{
    // On SLRs the setting is the long-exposure noise reduction.
    const char* title =
        m_deviceKind == kDeviceSLR ? "IDS_QEL_LONG_EXPOSURE_NR" : "IDS_QEL_NOISE_REDUCTION";
    StoreMappedItem(tagControl, {QelItem::kNoiseReduction, title, kNoiseReduction, kEmptyValue});
}

void CQelImgInfo::GetHighSensitivityNR(IVandelTagControl* tagControl)
{
    // An unknown level leaves the item without a value, not with a blank one.
    StoreMappedItem(tagControl, {QelItem::kHighSensitivityNR, "IDS_QEL_HIGH_SENSITIVITY_NR",
                                 kHighSensitivityNR, nullptr});
}

void CQelImgInfo::GetConverterLens(IVandelTagControl* tagControl)
{
    StoreMappedItem(tagControl, {QelItem::kConverterLens, "IDS_QEL_CONVERTER_LENS",
                                 kConverterLenses, "IDS_QEL_CONVERTER_LENS_NONE"});
}

void CQelImgInfo::GetFalsificationInfo(IVandelTagControl* tagControl)
{
    StoreMappedItem(tagControl, {QelItem::kFalsification, "IDS_QEL_FALSIFICATION_INFO",
                                 kFalsification, kEmptyValue});
}
