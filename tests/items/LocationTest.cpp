// SPDX-License-Identifier: MIT
// GPS items: coordinates with their hemisphere, altitude, image direction
// and the GPS time.
#include "TestImgInfo.h"

#include <climits>
#include <cmath>

namespace {

using namespace QelItem;

// The position text: whole degrees, minutes, seconds, and whole minutes.
std::string Position(int d, double m, double s, int mWhole)
{
    return LF("IDS_QEL_GPS_DEG_MIN_SEC", d, m + s * (1.0 / 60.0), d, mWhole, s);
}

std::function<void(CQelImgInfo&, IVandelTagControl*)> Gps(UInt32 item)
{
    return [item](CQelImgInfo& info, IVandelTagControl* tags) { info.GetGPSInfo(tags, item); };
}

Tags Triple(UInt32 id, double a, double b, double c, std::optional<SInt32> ref = {}, UInt32 refID = 0)
{
    return [=](MemoryTagSource& t) { t.Doubles(id, {a, b, c}).Int32(refID, ref); };
}

TEST(Location, Values)
{
    const double nan = std::nan("");
    const std::string tokyo = Position(35, 39, 29.16, 39);
    ExpectItems({
        {"north", Gps(kGPSLatitude), kGPSLatitude, Triple(kGPSLatitude, 35, 39, 29.16, 0, 0x30001),
         L("IDS_QEL_GPS_NORTH") + tokyo},
        {"west", Gps(kGPSLongitude), kGPSLongitude, Triple(kGPSLongitude, 35, 39, 29.16, 3, 0x30003),
         L("IDS_QEL_GPS_WEST") + tokyo},
        {"reference unreadable, truncation toward zero", Gps(kGPSLongitude), kGPSLongitude,
         Triple(kGPSLongitude, -33.9, -51.7, 10), Position(-33, -51.7, 10, -51)},
        {"NaN and huge whole numbers", Gps(kGPSLatitude), kGPSLatitude, Triple(kGPSLatitude, nan, 1e20, 0),
         Position(INT_MIN, 1e20, 0, INT_MIN)},
        {"magnetic direction", Gps(kGPSImgDirection), kGPSImgDirection,
         [](auto& t) { t.Double(kGPSImgDirection, 123.4).Text(0x30010, "M"); }, LF("IDS_QEL_GPS_IMG_DIRECTION_M", 123.4)},
        {"direction without T or M", Gps(kGPSImgDirection), kGPSImgDirection,
         [](auto& t) { t.Double(kGPSImgDirection, 123.4).Text(0x30010, "X"); }, {}},
        {"nonsense time is cut", Gps(kGPSTimeStamp), kGPSTimeStamp, Triple(kGPSTimeStamp, nan, 1e12, 1e300),
         "-2147483648:-21"},
    });
    // An item that is no location item is left alone.
    MemoryTagSource tags;
    tags.Double(0x30005, 1.0);
    TestImgInfo info;
    info.GetGPSInfo(&tags, 0x30005);
    EXPECT_EQ(info.Dictionary().GetMapCount(&info.Dictionary().Titles()), 0u);
    EXPECT_FALSE(tags.WasRead(0x30005));
}

}  // namespace
