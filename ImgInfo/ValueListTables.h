// SPDX-License-Identifier: MIT
// The fixed lists of choices that a host offers for six adjustable settings.
// The list builders read them, and the formatters take the current position
// from them too, so a recorded index can never disagree with its list.
#ifndef QEL_VALUE_LIST_TABLES_H
#define QEL_VALUE_LIST_TABLES_H

#include "KeyTables.h"

namespace qel {

struct ValueListEntry {
    UInt32 raw;             // the tag value the choice stands for
    const char* key;        // its text
    const char* filterKey;  // monochrome filter shown after ", ", or null
};

constexpr ValueListEntry kWhiteBalanceList[] = {
    {1, "IDS_QEL_WB_INCANDESCENT", nullptr}, {2, "IDS_QEL_WB_FLUORESCENT", nullptr},
    {3, "IDS_QEL_WB_SUNNY", nullptr},        {4, "IDS_QEL_WB_FLASH", nullptr},
    {5, "IDS_QEL_WB_SHADE", nullptr},        {6, "IDS_QEL_WB_CLOUDY", nullptr},
};

// SLRs and scanners: six levels, in order of strength.
constexpr ValueListEntry kSharpeningList[] = {
    {0, "IDS_QEL_SHARPENING_NONE", nullptr},        {1, "IDS_QEL_SHARPENING_LOW", nullptr},
    {4, "IDS_QEL_SHARPENING_MEDIUM_LOW", nullptr},  {2, "IDS_QEL_SHARPENING_MEDIUM", nullptr},
    {5, "IDS_QEL_SHARPENING_MEDIUM_HIGH", nullptr}, {3, "IDS_QEL_SHARPENING_HIGH", nullptr},
};

// Compact cameras and their movies offer four levels.
constexpr ValueListEntry kCompactSharpeningList[] = {
    {0, "IDS_QEL_SHARPENING_NONE", nullptr},   {1, "IDS_QEL_SHARPENING_LOW", nullptr},
    {2, "IDS_QEL_SHARPENING_MEDIUM", nullptr}, {3, "IDS_QEL_SHARPENING_HIGH", nullptr},
};

// The tone list always names the ends LOW and HIGH, whatever the file kind,
// although the tone formatter shows LESS and MORE for most file kinds.
// Brightness/contrast offers this very same list.
constexpr ValueListEntry kGammaTableList[] = {
    {1, "IDS_QEL_GAMMA_TABLE_LOW", nullptr},      {5, "IDS_QEL_GAMMA_TABLE_MID_LOW", nullptr},
    {0, "IDS_QEL_GAMMA_TABLE_NORMAL", nullptr},   {6, "IDS_QEL_GAMMA_TABLE_MID_HIGH", nullptr},
    {2, "IDS_QEL_GAMMA_TABLE_HIGH", nullptr},     {16, "IDS_QEL_GAMMA_TABLE_USER", nullptr},
};

// A filtered monochrome choice carries the filter number in the upper 16
// bits and 6 (monochrome) in the lower 16.
constexpr UInt32 kColorModeMonochrome = 6;
constexpr UInt32 MonochromeWithFilter(UInt32 filter) { return filter << 16 | kColorModeMonochrome; }

constexpr ValueListEntry kColorModeList[] = {
    {1, "IDS_QEL_COLOR_MODE_MODE1", nullptr},
    {2, "IDS_QEL_COLOR_MODE_MODE2", nullptr},
    {3, "IDS_QEL_COLOR_MODE_MODE3", nullptr},
    {4, "IDS_QEL_COLOR_MODE_MODE1A", nullptr},
    {5, "IDS_QEL_COLOR_MODE_MODE3A", nullptr},
    {kColorModeMonochrome, "IDS_QEL_COLOR_MODE_BW", nullptr},
    {MonochromeWithFilter(2), "IDS_QEL_COLOR_MODE_BW", "IDS_QEL_MONOCHROME_FILTER_EFFECT_YELLOW"},
    {MonochromeWithFilter(3), "IDS_QEL_COLOR_MODE_BW", "IDS_QEL_MONOCHROME_FILTER_EFFECT_ORANGE"},
    {MonochromeWithFilter(4), "IDS_QEL_COLOR_MODE_BW", "IDS_QEL_MONOCHROME_FILTER_EFFECT_RED"},
    {MonochromeWithFilter(5), "IDS_QEL_COLOR_MODE_BW", "IDS_QEL_MONOCHROME_FILTER_EFFECT_GREEN"},
};

constexpr ValueListEntry kSaturationAdjustList[] = {
    {1, "IDS_QEL_SATURATION_ADJUSTMENT_NORMAL", nullptr},
    {2, "IDS_QEL_SATURATION_ADJUSTMENT_MODERATE", nullptr},
    {3, "IDS_QEL_SATURATION_ADJUSTMENT_ENHANCED", nullptr},
};

using ValueListTable = Table<ValueListEntry>;

// Records the position of the choice that stands for `raw` in `index`; a
// value the list does not offer leaves `index` as it was, so an earlier
// file's position survives.
constexpr void RecordListPosition(ValueListTable list, UInt32 raw, SInt32& index)
{
    if (const ValueListEntry* entry = FindRow(list, &ValueListEntry::raw, raw))
        index = static_cast<SInt32>(entry - list.begin());
}

}  // namespace qel

#endif
