// SPDX-License-Identifier: MIT
// GPS items: coordinates with their hemisphere, altitude, image direction
// and the GPS time.
#include "TestImgInfo.h"

#include <climits>
#include <cmath>
#include <functional>

namespace {

using namespace QelItem;
using Expected = std::optional<std::string>;

// The position text: whole degrees, minutes, seconds, and whole minutes.
std::string Position(int d, double m, double s, int mWhole)
{
    return LF("IDS_QEL_GPS_DEG_MIN_SEC", d, m + s * (1.0 / 60.0), d, mWhole, s);
}

TEST(Location, Values)
{
    const double nan = std::nan("");
    const std::string tokyo = Position(35, 39, 29.16, 39);
    const struct {
        const char* name;
        UInt32 item;
        std::function<void(MemoryTagSource&)> tags;
        Expected value;
    } cases[] = {
        {"north", kGPSLatitude,
         [](auto& t) { t.Doubles(kGPSLatitude, {35, 39, 29.16}).Int32(0x30001, 0); },
         L("IDS_QEL_GPS_NORTH") + tokyo},
        {"east code on a latitude", kGPSLatitude,
         [](auto& t) { t.Doubles(kGPSLatitude, {35, 39, 29.16}).Int32(0x30001, 2); }, tokyo},
        {"west", kGPSLongitude,
         [](auto& t) { t.Doubles(kGPSLongitude, {35, 39, 29.16}).Int32(0x30003, 3); },
         L("IDS_QEL_GPS_WEST") + tokyo},
        {"reference unreadable, truncation toward zero", kGPSLongitude,
         [](auto& t) { t.Doubles(kGPSLongitude, {-33.9, -51.7, 10}); },
         Position(-33, -51.7, 10, -51)},
        {"NaN and huge whole numbers", kGPSLatitude,
         [nan](auto& t) { t.Doubles(kGPSLatitude, {nan, 1e20, 0}); },
         Position(INT_MIN, 1e20, 0, INT_MIN)},
        {"altitude as delivered", kGPSAltitude, [](auto& t) { t.Double(kGPSAltitude, -12.5); },
         LF("IDS_QEL_GPS_METRIC", -12.5)},
        {"magnetic direction", kGPSImgDirection,
         [](auto& t) { t.Double(kGPSImgDirection, 123.4).Text(0x30010, "M"); },
         LF("IDS_QEL_GPS_IMG_DIRECTION_M", 123.4)},
        {"direction without T or M", kGPSImgDirection,
         [](auto& t) { t.Double(kGPSImgDirection, 123.4).Text(0x30010, "X"); }, {}},
        {"seconds not padded", kGPSTimeStamp,
         [](auto& t) { t.Doubles(kGPSTimeStamp, {9, 5, 7.5}); }, "09:05:7.50"},
        {"nonsense time is cut", kGPSTimeStamp,
         [nan](auto& t) { t.Doubles(kGPSTimeStamp, {nan, 1e12, 1e300}); }, "-2147483648:-21"},
        {"not a location item", 0x30005, [](auto& t) { t.Double(0x30005, 1.0); }, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource tags;
        c.tags(tags);
        TestImgInfo info;
        info.Kinds(kDeviceSLR, 0).GetGPSInfo(&tags, c.item);
        EXPECT_EQ(info.Title(c.item).has_value(), c.item != 0x30005);
        EXPECT_EQ(info.Value(c.item), c.value);
        EXPECT_FALSE(tags.WasRead(0x30005));
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

}  // namespace
