// SPDX-License-Identifier: MIT
// Metering mode with its unknown fallback, and ISO sensitivity: normal,
// manual, automatic and the two extended ("HI") tables chosen by file kind.
#include "TestImgInfo.h"

#include <array>

namespace {

TEST(MeteringMode, MapsTheExifNumberWithUnknownForTheRest)
{
    const auto metering = &CQelImgInfo::GetMeteringMode;
    const UInt32 id = QelItem::kMeteringMode;
    ExpectItems({
        {"spot", metering, id, Int(id, 3), L("IDS_QEL_METERING_MODE_SPOT")},
        {"0", metering, id, Int(id, 0), L("IDS_QEL_METERING_MODE_UNKNOWN")},
        {"7", metering, id, Int(id, 7), L("IDS_QEL_METERING_MODE_UNKNOWN")},
        {"absent", metering, id, Int(id, {}), {}},
    });
}

Tags ISO(UInt16 mode, UInt16 number)
{
    return [=](MemoryTagSource& t) { t.Record(QelItem::kISOSensitivity, kQelValueISO, std::array<UInt16, 2>{mode, number}); };
}

// 259, 261 and 263 top out at ISO 800, the rest at 1600; 3200 differs.
TEST(ISOSensitivity, ShowsTheModeOrTheSensitivity)
{
    const auto iso = &CQelImgInfo::GetISOSensitivity;
    const UInt32 id = QelItem::kISOSensitivity;
    const char* hi = "IDS_QEL_ISO_SENSITIVITY_HI";
    auto HI = [hi](const char* step, UInt32 base) { return LF((std::string(hi) + step).c_str(), base); };
    ExpectItems({
        {"normal", iso, id, ISO(0, 65535), LF("IDS_QEL_ISO_SENSITIVITY_NORMAL", 65535u), kDeviceSLR, 261},
        {"manual", iso, id, ISO(0x8001, 400), L("IDS_QEL_ISO_SENSITIVITY_MANUAL"), kDeviceSLR, 1030},
        {"auto", iso, id, ISO(0x8009, 3200), L("IDS_QEL_ISO_SENSITIVITY_AUTO"), kDeviceSLR, 261},
        {"3200 over 800", iso, id, ISO(1, 3200), HI("2", 800), kDeviceSLR, 261},
        {"3200 over 1600", iso, id, ISO(1, 3200), HI("1", 1600), kDeviceSLR, 1026},
        {"263 tops at 800", iso, id, ISO(0x8002, 1250), HI("07", 800), kDeviceSLR, 263},
        {"any other mode", iso, id, ISO(0xFFFF, 2200), HI("05", 1600), kDeviceSLR, 0},
        {"not offered", iso, id, ISO(1, 1600), "", kDeviceSLR, 0},
        {"not offered below 1600", iso, id, ISO(1, 1000), "", kDeviceSLR, 262},
        {"not offered above 800", iso, id, ISO(1, 6400), "", kDeviceSLR, 261},
    });
}

}  // namespace
