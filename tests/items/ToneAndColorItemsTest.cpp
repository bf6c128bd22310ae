// SPDX-License-Identifier: MIT
// Tone and colour items: each raw value against the text a user sees, the
// blank-versus-missing value of each item, and the list positions recorded.
#include "TestImgInfo.h"

namespace {

using Formatter = void (CQelImgInfo::*)(IVandelTagControl*);

// A formatter, the item it fills and the title it gives that item.
struct Item { Formatter formatter; UInt32 id; const char* title; };
#define QEL_ITEM(name, fn, id, title) const Item name{&CQelImgInfo::fn, QelItem::id, title};
QEL_ITEM(kColor, GetColor, kColor, "IDS_QEL_COLOR")
QEL_ITEM(kSpace, GetColorSpace, kColorSpace, "IDS_QEL_COLOR_SPACE")
QEL_ITEM(kTone, GetGammaTable, kToneTable, "IDS_QEL_GAMMA_TABLE")
QEL_ITEM(kBrtCnt, GetBRTCNTComp, kBrightnessContrast, "IDS_QEL_BRTCNT_COMP")
QEL_ITEM(kSatAdjust, GetSaturationAdjust, kSaturationAdjust, "IDS_QEL_SATURATION_ADJUSTMENT")
QEL_ITEM(kNR, GetNoiseReduction, kNoiseReduction, "IDS_QEL_NOISE_REDUCTION")
QEL_ITEM(kLongNR, GetNoiseReduction, kNoiseReduction, "IDS_QEL_LONG_EXPOSURE_NR")
QEL_ITEM(kHighNR, GetHighSensitivityNR, kHighSensitivityNR, "IDS_QEL_HIGH_SENSITIVITY_NR")
QEL_ITEM(kLens, GetConverterLens, kConverterLens, "IDS_QEL_CONVERTER_LENS")
QEL_ITEM(kSatComp, GetSaturationComp, kSaturationComp, "IDS_QEL_SATURATION_COMP")
QEL_ITEM(kHue, GetHueAdjustment, kHueAdjustment, "IDS_QEL_HUE_ADJUSTMENT")
QEL_ITEM(kFalsification, GetFalsificationInfo, kFalsification, "IDS_QEL_FALSIFICATION_INFO")
#undef QEL_ITEM

struct MappedCase {
    const Item& item;
    SInt32 deviceKind, fileKind;
    std::optional<SInt32> raw;  // none: the tag cannot be read
    const char* value;
};

constexpr SInt32 C = kDeviceCompact, S = kDeviceSLR, N = kDeviceScanner;

const MappedCase kMapped[] = {
    {kColor, S, 0, 1, "IDS_QEL_COLOR_BW_DSLR"}, {kColor, C, 0, 1, "IDS_QEL_COLOR_BW"},
    {kColor, C, 0, 0, "IDS_QEL_COLOR_COLOR"}, {kColor, S, 0, 9, "IDS_QEL_COLOR_COLOR_DSLR"},
    {kColor, S, 0, 4, "IDS_QEL_COLOR_COOL"},
    {kSpace, N, 0, 0x2020100, "IDS_QEL_COLOR_SPACE_PALETTE"},
    {kSpace, N, 0, 0x10020404, "IDS_QEL_COLOR_SPACE_RGB"},
    {kSpace, N, 0, 0x10020402, "IDS_QEL_COLOR_SPACE_RAW"},
    {kSpace, N, 0, -1, "IDS_QEL_COLOR_SPACE_RGB"}, {kSpace, N, 0, 0, "IDS_QEL_COLOR_SPACE_UNKNOWN"},
    {kSpace, N, 0, {}, "IDS_QEL_COLOR_SPACE_UNKNOWN"},
    {kTone, C, 1027, 1, "IDS_QEL_GAMMA_TABLE_LOW"}, {kTone, C, 1026, 2, "IDS_QEL_GAMMA_TABLE_HIGH"},
    {kTone, C, 1028, 1, "IDS_QEL_GAMMA_TABLE_LESS"}, {kTone, S, 0, 2, "IDS_QEL_GAMMA_TABLE_MORE"},
    {kTone, S, 1027, 19, "IDS_QEL_GAMMA_TABLE_CUSTOM_3"}, {kTone, S, 0, 7, ""},
    {kTone, S, 0, {}, nullptr}, {kBrtCnt, C, 0, 0x10C, "IDS_QEL_BRTCNT_COMP_SEPIA"},
    {kBrtCnt, C, 0, 0x103, ""}, {kSatAdjust, S, 0, 4, "IDS_QEL_SATURATION_ADJUSTMENT_AUTO"},
    {kSatAdjust, S, 0, 0, "IDS_QEL_SATURATION_ADJUSTMENT_NONE"},
    {kLongNR, S, 0, 1, "IDS_QEL_NOISE_REDUCTION_FIXED"},
    {kNR, C, 0, 0, "IDS_QEL_NOISE_REDUCTION_OFF"}, {kNR, kDeviceCompactMovie, 0, 2, ""},
    {kHighNR, S, 0, 1, "IDS_QEL_HIGH_SENSITIVITY_NR_OFF"},
    {kHighNR, S, 0, 0xFFFF, "IDS_QEL_HIGH_SENSITIVITY_NR_ON"}, {kHighNR, S, 0, 7, nullptr},
    {kHighNR, S, 0, -1, nullptr}, {kLens, C, 0, 0x3002, "IDS_QEL_CONVERTER_LENS_TELE2"},
    {kLens, C, 0, 0x3003, "IDS_QEL_CONVERTER_LENS_NONE"},
    {kFalsification, S, 0, 1, "IDS_QEL_FALSIFICATION_INFO_ON"}, {kFalsification, S, 0, 2, ""},
    {kFalsification, S, 0, {}, nullptr},
};

TEST(ToneAndColorItems, MapsEachRawValueToItsText)
{
    for (const MappedCase& c : kMapped) {
        SCOPED_TRACE(testing::Message() << c.item.title << " raw " << c.raw.value_or(-99)
                                        << " device " << c.deviceKind << " file " << c.fileKind);
        MemoryTagSource tags;
        tags.Int32(c.item.id, c.raw);
        TestImgInfo info;
        ExpectFormatted(info.Kinds(c.deviceKind, c.fileKind), c.item.formatter, tags, c.item.id,
                        L(c.item.title), Shown(c.value));
    }
}

struct StepCase {
    const Item& item;
    std::optional<SInt32> color, step;
    const char* value;  // as in Shown(); hue numbers go through the unit key
    bool readsStep;
};

const StepCase kSteps[] = {
    {kSatComp, 2, 1, "IDS_QEL_SATURATION_COMP_SEPIA", false},
    {kSatComp, 4, 1, "IDS_QEL_SATURATION_COMP_COOL", false},
    {kSatComp, 1, 1, "IDS_QEL_SATURATION_COMP_MONO", false}, {kSatComp, 0, -3, "", true},
    {kSatComp, 0, -4, "", true}, {kSatComp, 3, -2, "-2", true}, {kSatComp, {}, 2, "+2", true},
    {kSatComp, 0, 0, "0", true}, {kSatComp, {}, {}, "", true}, {kHue, 1, 2, nullptr, false},
    {kHue, 3, 0, "0", true}, {kHue, {}, -1, "-1", true}, {kHue, 0, 9, "+9", true},
    {kHue, 0, {}, nullptr, true},
};

TEST(ToneAndColorItems, SaturationAndHueStepsGiveWayToTheColourEffect)
{
    for (const StepCase& c : kSteps) {
        SCOPED_TRACE(testing::Message() << c.item.title << " colour " << c.color.value_or(-99)
                                        << " step " << c.step.value_or(-99));
        MemoryTagSource tags;
        tags.Int32(QelItem::kColor, c.color);
        tags.Int32(c.item.id, c.step);
        TestImgInfo info;
        info.Kinds(kDeviceSLR, 0);
        (info.*c.item.formatter)(&tags);
        std::optional<std::string> expected = Shown(c.value);
        if (c.item.id == QelItem::kHueAdjustment && expected)
            expected = LF("IDS_QEL_HUE_ADJUSTMENT_UNIT", c.value);
        EXPECT_EQ(info.Value(c.item.id), expected);
        EXPECT_EQ(tags.WasRead(c.item.id), c.readsStep);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

// One object reads several files in turn: a value the list does not offer
// keeps the position of the file before.
struct IndexStep { SInt32 fileKind, raw, index; };

TEST(ToneAndColorItems, ListPositionsSurviveValuesTheListLacks)
{
    const struct {
        const Item& item;
        SInt32 TestImgInfo::*index;
        std::vector<IndexStep> steps;
    } sequences[] = {
        {kTone, &TestImgInfo::m_gammaListIndex,
         {{0, 6, 3}, {0, 4, 3}, {1026, 1, 0}, {1028, 1, 0}, {0, 3, 0}, {0, 17, 0}, {0, 18, 0},
          {0, 19, 0}, {0, 7, 0}, {0, -1, 0}, {0, 16, 5}, {0, 5, 1}, {1028, 2, 4}, {0, 0, 2}}},
        {kSatAdjust, &TestImgInfo::m_saturationListIndex,
         {{0, 3, 2}, {0, 4, 2}, {0, 0, 2}, {0, 2, 1}, {0, 1, 0}}},
        {kBrtCnt, &TestImgInfo::m_brtcntListIndex, {{0, 1, -1}, {0, 0, -1}, {0, 2, -1}}},
    };
    for (const auto& sequence : sequences) {
        TestImgInfo info;
        for (const IndexStep& step : sequence.steps) {
            SCOPED_TRACE(testing::Message() << sequence.item.title << " raw " << step.raw);
            MemoryTagSource tags;
            tags.Int32(sequence.item.id, step.raw);
            info.Kinds(kDeviceSLR, step.fileKind);
            (info.*sequence.item.formatter)(&tags);
            EXPECT_EQ(info.*sequence.index, step.index);
        }
    }
}

}  // namespace
