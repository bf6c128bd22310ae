// SPDX-License-Identifier: MIT
// The in-camera picture style: sharpening, picture effect program and colour
// mode, with the monochrome filter that both of the latter may add.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"
#include "ValueListTables.h"

#include <optional>

using qel::FindKey;
using qel::KeyEntry;
using qel::KeyFor;
using qel::kEmptyValue;
using qel::ReadInt32;
using qel::RecordListPosition;

namespace {

constexpr UInt32 kTagMonochromeFilter = 0x800B3;
constexpr UInt32 kTagColorModeSpace = 0x8001E;

// Auto sharpening (9) is shown but offered by neither list.
constexpr KeyEntry kSharpeningLevels[] = {
    {0, "IDS_QEL_SHARPENING_NONE"},       {1, "IDS_QEL_SHARPENING_LOW"},
    {2, "IDS_QEL_SHARPENING_MEDIUM"},     {3, "IDS_QEL_SHARPENING_HIGH"},
    {4, "IDS_QEL_SHARPENING_MEDIUM_LOW"}, {5, "IDS_QEL_SHARPENING_MEDIUM_HIGH"},
    {9, "IDS_QEL_SHARPENING_AUTO"},
};

constexpr SInt32 kImageEffectMonochrome = 10;
constexpr KeyEntry kImageEffects[] = {
    {1, "IDS_QEL_IMAGE_EFFECT_PROGRAM_NORMAL"},
    {2, "IDS_QEL_IMAGE_EFFECT_PROGRAM_VIVID"},
    {3, "IDS_QEL_IMAGE_EFFECT_PROGRAM_SHARP"},
    {4, "IDS_QEL_IMAGE_EFFECT_PROGRAM_SOFT"},
    {5, "IDS_QEL_IMAGE_EFFECT_PROGRAM_DIRECT_PRINT"},
    {6, "IDS_QEL_IMAGE_EFFECT_PROGRAM_PORTRAIT"},
    {7, "IDS_QEL_IMAGE_EFFECT_PROGRAM_LANDSCAPE"},
    {8, "IDS_QEL_IMAGE_EFFECT_PROGRAM_CUSTOM"},
    {9, "IDS_QEL_IMAGE_EFFECT_PROGRAM_MORE_VIVID"},
    {kImageEffectMonochrome, "IDS_QEL_IMAGE_EFFECT_PROGRAM_BW"},
};
// The K740 names three of its programs in its own words; only its own file
// kind, no other of its family, uses them.
constexpr SInt32 kK740FileKind = 1028;
constexpr KeyEntry kK740ImageEffects[] = {
    {2, "IDS_QEL_IMAGE_EFFECT_PROGRAM_VIVID_K740"},
    {6, "IDS_QEL_IMAGE_EFFECT_PROGRAM_PORTRAIT_K740"},
    {8, "IDS_QEL_IMAGE_EFFECT_PROGRAM_CUSTOM_K740"},
};

// Filters of black-and-white pictures, for picture effects and colour mode.
constexpr KeyEntry kMonochromeFilters[] = {
    {2, "IDS_QEL_MONOCHROME_FILTER_EFFECT_YELLOW"},
    {3, "IDS_QEL_MONOCHROME_FILTER_EFFECT_ORANGE"},
    {4, "IDS_QEL_MONOCHROME_FILTER_EFFECT_RED"},
    {5, "IDS_QEL_MONOCHROME_FILTER_EFFECT_GREEN"},
};
constexpr char kFilterSeparator[] = ", ";

constexpr KeyEntry kColorModes[] = {
    {1, "IDS_QEL_COLOR_MODE_MODE1"},  {2, "IDS_QEL_COLOR_MODE_MODE2"},
    {3, "IDS_QEL_COLOR_MODE_MODE3"},  {4, "IDS_QEL_COLOR_MODE_MODE1A"},
    {5, "IDS_QEL_COLOR_MODE_MODE3A"},
};
// Bodies with a fixed colour space per mode: mode II is Adobe RGB, the rest sRGB.
constexpr KeyEntry kFixedColorModeSpaces[] = {
    {1, "IDS_QEL_COLOR_MODE_SRGB"}, {2, "IDS_QEL_COLOR_MODE_ADOBE_RGB"},
    {3, "IDS_QEL_COLOR_MODE_SRGB"}, {4, "IDS_QEL_COLOR_MODE_SRGB"},
    {5, "IDS_QEL_COLOR_MODE_SRGB"},
};
// Bodies that record the colour space in a tag of its own. 260 is not one of
// them, although its white balance follows these bodies.
constexpr SInt32 kSeparateColorSpaceFileKinds[] = {261, 262, 263, 1028, 1029, 1030};
constexpr KeyEntry kColorModeSpaces[] = {
    {1, "IDS_QEL_COLOR_MODE_SRGB"},
    {2, "IDS_QEL_COLOR_MODE_ADOBE_RGB"},
    {3, "IDS_QEL_COLOR_MODE_UNCALIBRATED"},
};
constexpr char kUnknownColorMode[] = "?";
// The colour tag says 1 for a monochrome picture, whatever the colour mode.
constexpr SInt32 kColorMonochrome = 1;

// Appends ", " and the filter of a black-and-white picture; the filter
// number when one was appended.
std::optional<UInt32> AppendMonochromeFilter(IVandelTagControl* tagControl, CQelString& text)
{
    auto filter = ReadInt32(tagControl, kTagMonochromeFilter);
    if (!filter)
        return std::nullopt;
    const char* key = FindKey(kMonochromeFilters, *filter);
    if (!key)
        return std::nullopt;
    text.Append(kFilterSeparator, kCFStringEncodingASCII);
    text.AppendLoadString(key);
    return static_cast<UInt32>(*filter);
}

}  // namespace

void CQelImgInfo::GetSharpening(IVandelTagControl* tagControl)
{
    // An unknown level shows a blank value rather than none.
    StoreMappedItem(tagControl, {QelItem::kSharpening, "IDS_QEL_SHARPENING", kSharpeningLevels,
                                 kEmptyValue, &CQelImgInfo::m_sharpeningListIndex});
}

void CQelImgInfo::GetImageEffectProgram(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kImageEffectProgram, "IDS_QEL_IMAGE_EFFECT_PROGRAM");
    auto program = ReadInt32(tagControl, QelItem::kImageEffectProgram);
    if (!program)
        return;
    const char* key = m_fileKind == kK740FileKind ? FindKey(kK740ImageEffects, *program) : nullptr;
    if (!key)
        key = KeyFor(kImageEffects, *program, kEmptyValue);
    CQelString value;
    if (*key)
        value.LoadString(key);
    if (*program == kImageEffectMonochrome)
        AppendMonochromeFilter(tagControl, value);
    StoreValue(QelItem::kImageEffectProgram, value);
}

void CQelImgInfo::GetColorMode(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kColorMode, "IDS_QEL_COLOR_MODE");
    auto mode = ReadInt32(tagControl, QelItem::kColorMode);
    if (!mode)
        return;
    auto color = ReadInt32(tagControl, QelItem::kColor);
    CQelString value;

    if ((color && *color == kColorMonochrome) ||
        static_cast<UInt32>(*mode) == qel::kColorModeMonochrome) {
        // Black and white, with its filter if one was used; no colour space.
        value.LoadString("IDS_QEL_COLOR_MODE_BW");
        RecordListPosition(qel::kColorModeList, qel::kColorModeMonochrome, m_colorModeListIndex);
        if (auto filter = AppendMonochromeFilter(tagControl, value))
            RecordListPosition(qel::kColorModeList, qel::MonochromeWithFilter(*filter),
                               m_colorModeListIndex);
        StoreValue(QelItem::kColorMode, value);
        return;
    }

    const char* modeKey = FindKey(kColorModes, *mode);
    if (modeKey) {
        value.LoadString(modeKey);
        RecordListPosition(qel::kColorModeList, static_cast<UInt32>(*mode), m_colorModeListIndex);
    } else {
        value.Append(kUnknownColorMode, kCFStringEncodingASCII);
    }

    const char* spaceKey = nullptr;
    if (qel::Lists(kSeparateColorSpaceFileKinds, m_fileKind)) {
        // Read even for an unknown mode: "?" is then followed by the space.
        if (auto space = ReadInt32(tagControl, kTagColorModeSpace))
            spaceKey = FindKey(kColorModeSpaces, *space);
    } else if (modeKey) {
        spaceKey = FindKey(kFixedColorModeSpaces, *mode);
    }
    if (spaceKey) {
        value.Append(" ", kCFStringEncodingASCII);
        value.AppendLoadString(spaceKey);
    }
    StoreValue(QelItem::kColorMode, value);
}
