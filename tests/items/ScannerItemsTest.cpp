// SPDX-License-Identifier: MIT
// Film-scanner items: mapped settings, filter intensities and the analog
// gains, which the red channel's tag carries for all three channels.
#include "TestImgInfo.h"

#include <array>
#include <cmath>

namespace {

using namespace QelItem;
const double kNaN = std::nan("");

Tags Intensity(UInt32 id, double enabled, double intensity)
{
    return [=](MemoryTagSource& t) { t.Record(id, kQelValueIntensity, std::array<double, 7>{enabled, 0, intensity}); };
}

void Gains(MemoryTagSource& tags)
{
    tags.Double(kScanGainMaster, -0.25).Doubles(kScanGainRed, {1.0, 0.0, kNaN});
}

TEST(ScannerItems, Values)
{
    const std::string unit = " " + L("IDS_QEL_SCAN_ANALOG_GAIN_UNIT");
    const auto film = &CQelImgInfo::GetScanFilmType, gem = &CQelImgInfo::GetScanGEMIntensity,
               roc = &CQelImgInfo::GetScanROCIntensity, gain = &CQelImgInfo::GetScanAnalogGain;
    ExpectItems({
        {"film 0x101", film, kScanFilmType, Int(kScanFilmType, 0x101), L("IDS_QEL_SCAN_FILM_TYPE_NEGA_MONO")},
        {"film 2", film, kScanFilmType, Int(kScanFilmType, 2), L("IDS_QEL_SCAN_FILM_TYPE_UNKNOWN")},
        {"enhance 2", &CQelImgInfo::GetScanImageEnhance, kScanImageEnhance, Int(kScanImageEnhance, 2),
         L("IDS_QEL_SCAN_IMAGE_ENHANCE_OFF")},
        {"GEM 2.5", gem, kScanGEM, Intensity(kScanGEM, 1, 2.5), "2.50"},
        {"ROC NaN flag", roc, kScanROC, Intensity(kScanROC, kNaN, 2.5), L("IDS_QEL_SCAN_ROC_OFF")},
        {"ROC unreadable", roc, kScanROC, [](auto&) {}, "0.00"},
        {"GEM, no tag source", gem, kScanGEM, nullptr, {}},
        {"master gain", gain, kScanGainMaster, Gains, "-0.25" + unit},
        {"red gain", gain, kScanGainRed, Gains, "+1.00" + unit},
        {"green from the red tag", gain, kScanGainGreen, Gains, "0.00" + unit},
        {"blue NaN", gain, kScanGainBlue, Gains, "0.00" + unit},
        {"no master: no channels", gain, kScanGainBlue, [](auto& t) { t.Doubles(kScanGainRed, {1, 1, 1}); }, {}},
    });
}

}  // namespace
