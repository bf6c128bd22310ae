// SPDX-License-Identifier: MIT
// Tone and colour items: the rows at each table's edges and fallbacks, the
// blank-versus-missing value of each item, and the list positions recorded.
#include "TestImgInfo.h"

#include <array>

namespace {

using namespace QelItem;
using Formatter = void (CQelImgInfo::*)(IVandelTagControl*);
constexpr SInt32 C = kDeviceCompact, S = kDeviceSLR, N = kDeviceScanner;

// One raw value of the item's own tag, on a device and file kind.
ItemCase Raw(const char* key, Formatter formatter, UInt32 id, std::optional<SInt32> raw,
             SInt32 device = S, SInt32 fileKind = 0)
{
    return {key, formatter, id, Int(id, raw), Shown(key), device, fileKind};
}

TEST(ToneAndColorItems, MapsRawValuesAtTheEdges)
{
    const Formatter color = &CQelImgInfo::GetColor, space = &CQelImgInfo::GetColorSpace,
                    tone = &CQelImgInfo::GetGammaTable, nr = &CQelImgInfo::GetNoiseReduction,
                    highNR = &CQelImgInfo::GetHighSensitivityNR;
    ExpectItems({
        Raw("IDS_QEL_COLOR_BW_DSLR", color, kColor, 1), Raw("IDS_QEL_COLOR_BW", color, kColor, 1, C),
        Raw("IDS_QEL_COLOR_COLOR_DSLR", color, kColor, 9),
        Raw("IDS_QEL_COLOR_SPACE_RAW", space, kColorSpace, 0x10020402, N),
        Raw("IDS_QEL_COLOR_SPACE_RGB", space, kColorSpace, -1, N),
        Raw("IDS_QEL_COLOR_SPACE_UNKNOWN", space, kColorSpace, {}, N),
        // Files of kinds 1026 and 1027 name the ends of the tone scale low and high.
        Raw("IDS_QEL_GAMMA_TABLE_LOW", tone, kToneTable, 1, C, 1027),
        Raw("IDS_QEL_GAMMA_TABLE_HIGH", tone, kToneTable, 2, C, 1026),
        Raw("IDS_QEL_GAMMA_TABLE_LESS", tone, kToneTable, 1, C, 1028),
        Raw("IDS_QEL_GAMMA_TABLE_MORE", tone, kToneTable, 2),
        {"unused tone", tone, kToneTable, Int(kToneTable, 7), ""}, Raw(nullptr, tone, kToneTable, {}),
        {"unknown brightness", &CQelImgInfo::GetBRTCNTComp, kBrightnessContrast, Int(kBrightnessContrast, 0x103), "", C},
        Raw("IDS_QEL_SATURATION_ADJUSTMENT_NONE", &CQelImgInfo::GetSaturationAdjust, kSaturationAdjust, 0),
        Raw("IDS_QEL_NOISE_REDUCTION_FIXED", nr, kNoiseReduction, 1),
        {"unknown noise reduction", nr, kNoiseReduction, Int(kNoiseReduction, 2), "", kDeviceCompactMovie},
        Raw("IDS_QEL_HIGH_SENSITIVITY_NR_ON", highNR, kHighSensitivityNR, 0xFFFF),
        Raw(nullptr, highNR, kHighSensitivityNR, -1),
        Raw("IDS_QEL_CONVERTER_LENS_NONE", &CQelImgInfo::GetConverterLens, kConverterLens, 0x3003, C),
        {"unknown check", &CQelImgInfo::GetFalsificationInfo, kFalsification, Int(kFalsification, 2), ""},
    });
}

// A picture in sepia, cool or monochrome names the effect and reads no step.
TEST(ToneAndColorItems, SaturationAndHueStepsGiveWayToTheColourEffect)
{
    const struct { Formatter formatter; UInt32 id; std::optional<SInt32> color, step; std::optional<std::string> value; } cases[] = {
        {&CQelImgInfo::GetSaturationComp, kSaturationComp, 2, 1, L("IDS_QEL_SATURATION_COMP_SEPIA")},
        {&CQelImgInfo::GetSaturationComp, kSaturationComp, 1, 1, L("IDS_QEL_SATURATION_COMP_MONO")},
        {&CQelImgInfo::GetSaturationComp, kSaturationComp, 0, -3, ""},  // -3 and below: no step recorded
        {&CQelImgInfo::GetSaturationComp, kSaturationComp, 3, -2, "-2"},
        {&CQelImgInfo::GetSaturationComp, kSaturationComp, {}, 0, "0"},
        {&CQelImgInfo::GetHueAdjustment, kHueAdjustment, 1, 2, {}},
        {&CQelImgInfo::GetHueAdjustment, kHueAdjustment, {}, -1, LF("IDS_QEL_HUE_ADJUSTMENT_UNIT", "-1")},
    };
    for (const auto& c : cases) {
        MemoryTagSource tags;
        tags.Int32(kColor, c.color).Int32(c.id, c.step);
        TestImgInfo info;
        (info.Kinds(S, 0).*c.formatter)(&tags);
        EXPECT_EQ(info.Value(c.id), c.value) << c.step.value_or(-99);
        EXPECT_EQ(tags.WasRead(c.id), c.color != 1 && c.color != 2);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

// One object reads several files in turn: a value the list does not offer
// keeps the position of the file before.
TEST(ToneAndColorItems, ListPositionsSurviveValuesTheListLacks)
{
    const struct {
        Formatter formatter;
        UInt32 id;
        SInt32 TestImgInfo::*index;
        std::vector<std::array<SInt32, 3>> steps;  // file kind, raw value, position after it
    } sequences[] = {
        {&CQelImgInfo::GetGammaTable, kToneTable, &TestImgInfo::m_gammaListIndex,
         {{0, 6, 3}, {0, 4, 3}, {1026, 1, 0}, {0, 17, 0}, {0, 7, 0}, {0, 16, 5}, {1028, 2, 4}}},
        {&CQelImgInfo::GetSaturationAdjust, kSaturationAdjust, &TestImgInfo::m_saturationListIndex,
         {{0, 3, 2}, {0, 4, 2}, {0, 1, 0}}},
        {&CQelImgInfo::GetBRTCNTComp, kBrightnessContrast, &TestImgInfo::m_brtcntListIndex, {{0, 1, -1}, {0, 2, -1}}},
    };
    for (const auto& sequence : sequences) {
        TestImgInfo info;
        for (const auto& [fileKind, raw, index] : sequence.steps) {
            MemoryTagSource tags;
            tags.Int32(sequence.id, raw);
            (info.Kinds(S, fileKind).*sequence.formatter)(&tags);
            EXPECT_EQ(info.*sequence.index, index) << std::hex << sequence.id << std::dec << " raw " << raw;
        }
    }
}

}  // namespace
