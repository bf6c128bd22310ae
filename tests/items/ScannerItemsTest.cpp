// SPDX-License-Identifier: MIT
// Film-scanner items: mapped settings, plain numbers, filter intensities
// and the analog gains.
#include "TestImgInfo.h"

#include <cmath>
#include <functional>

namespace {

using namespace QelItem;
const double kNaN = std::nan("");

void Intensity(MemoryTagSource& tags, UInt32 id, double enabled, double intensity)
{
    const double record[7] = {enabled, 0, intensity};
    tags.Record(id, kQelValueIntensity, record);
}

void Gains(MemoryTagSource& tags)
{
    tags.Double(kScanGainMaster, -0.25).Doubles(kScanGainRed, {1.0, 0.0, kNaN});
}

TEST(ScannerItems, Values)
{
    const std::string unit = " " + L("IDS_QEL_SCAN_ANALOG_GAIN_UNIT");
    const struct {
        const char* name;
        std::function<void(MemoryTagSource&)> tags;  // null: no tag source at all
        void (CQelImgInfo::*formatter)(IVandelTagControl*);
        UInt32 item;
        std::optional<std::string> value;
    } cases[] = {
        {"film 0x8003", [](auto& t) { t.Int32(kScanFilmType, 0x8003); },
         &CQelImgInfo::GetScanFilmType, kScanFilmType, L("IDS_QEL_SCAN_FILM_TYPE_KODACHROME")},
        {"film 2", [](auto& t) { t.Int32(kScanFilmType, 2); }, &CQelImgInfo::GetScanFilmType,
         kScanFilmType, L("IDS_QEL_SCAN_FILM_TYPE_UNKNOWN")},
        {"enhance 2", [](auto& t) { t.Int32(kScanImageEnhance, 2); },
         &CQelImgInfo::GetScanImageEnhance, kScanImageEnhance, L("IDS_QEL_SCAN_IMAGE_ENHANCE_OFF")},
        {"shadow -12", [](auto& t) { t.Int32(kScanShadow, -12); }, &CQelImgInfo::GetScanShadow,
         kScanShadow, "-12"},
        {"GEM 2.5", [](auto& t) { Intensity(t, kScanGEM, 1, 2.5); },
         &CQelImgInfo::GetScanGEMIntensity, kScanGEM, "2.50"},
        {"GEM off", [](auto& t) { Intensity(t, kScanGEM, 0, 2.5); },
         &CQelImgInfo::GetScanGEMIntensity, kScanGEM, L("IDS_QEL_SCAN_GEM_OFF")},
        {"ROC NaN flag", [](auto& t) { Intensity(t, kScanROC, kNaN, 2.5); },
         &CQelImgInfo::GetScanROCIntensity, kScanROC, L("IDS_QEL_SCAN_ROC_OFF")},
        {"ROC unreadable", [](auto&) {}, &CQelImgInfo::GetScanROCIntensity, kScanROC, "0.00"},
        {"GEM, no tag source", nullptr, &CQelImgInfo::GetScanGEMIntensity, kScanGEM, {}},
        {"film type unreadable", [](auto&) {}, &CQelImgInfo::GetScanFilmType, kScanFilmType, {}},
        {"master gain", Gains, &CQelImgInfo::GetScanAnalogGain, kScanGainMaster, "-0.25" + unit},
        {"red gain", Gains, &CQelImgInfo::GetScanAnalogGain, kScanGainRed, "+1.00" + unit},
        {"green from the red tag", Gains, &CQelImgInfo::GetScanAnalogGain, kScanGainGreen,
         "0.00" + unit},
        {"blue NaN", Gains, &CQelImgInfo::GetScanAnalogGain, kScanGainBlue, "0.00" + unit},
        {"negative zero master", [](auto& t) { t.Double(kScanGainMaster, -0.0); },
         &CQelImgInfo::GetScanAnalogGain, kScanGainMaster, "0.00" + unit},
        {"no master: no channels", [](auto& t) { t.Doubles(kScanGainRed, {1, 1, 1}); },
         &CQelImgInfo::GetScanAnalogGain, kScanGainBlue, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        if (c.tags)
            c.tags(tags);
        TestImgInfo info;
        (info.Kinds(kDeviceScanner, 0).*c.formatter)(c.tags ? &tags : nullptr);
        EXPECT_TRUE(info.Title(c.item));
        EXPECT_EQ(info.Value(c.item), c.value);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

}  // namespace
