// SPDX-License-Identifier: MIT
// Where and when a GPS receiver placed the picture: latitude, longitude,
// altitude, image direction and the GPS time. The numbers arrive as
// doubles; each language's formats choose the degree, minute and second
// signs.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <optional>

namespace {

using qel::KeyEntry;

constexpr UInt32 kTagLatitudeRef = 0x30001;
constexpr UInt32 kTagLongitudeRef = 0x30003;
constexpr UInt32 kTagImgDirectionRef = 0x30010;

// The receiver delivers the hemisphere as a number, not a letter. A
// latitude with an east/west code, or the reverse, shows no hemisphere.
constexpr KeyEntry kLatitudeRefs[] = {
    {0, "IDS_QEL_GPS_NORTH"},
    {1, "IDS_QEL_GPS_SOUTH"},
};
constexpr KeyEntry kLongitudeRefs[] = {
    {2, "IDS_QEL_GPS_EAST"},
    {3, "IDS_QEL_GPS_WEST"},
};

// Degrees, minutes and hours print as whole numbers, truncated toward zero.
// A NaN or a number outside the int range has no such value; the 32-bit
// platform's conversion gave INT_MIN for them, and so does this one.
int WholeNumber(double number)
{
    if (!(number > static_cast<double>(INT_MIN) - 1.0 &&
          number < static_cast<double>(INT_MAX) + 1.0))
        return INT_MIN;
    return static_cast<int>(number);
}

// Hemisphere, then the position. The format receives degrees, decimal
// minutes, then degrees, minutes and seconds; each language picks by
// position the ones it shows.
std::optional<CQelString> CoordinateText(IVandelTagControl* tagControl, UInt32 tagID,
                                         UInt32 refTagID, const KeyEntry (&refs)[2])
{
    auto dms = qel::ReadDoubleTriple(tagControl, tagID);
    if (!dms)
        return std::nullopt;
    CQelString text;
    if (auto ref = qel::ReadInt32(tagControl, refTagID))
        if (const char* key = qel::FindKey(refs, *ref))
            text.LoadString(key);
    const double degrees = (*dms)[0], minutes = (*dms)[1], seconds = (*dms)[2];
    CQelString position;
    position.LoadStringWithFormat("IDS_QEL_GPS_DEG_MIN_SEC", WholeNumber(degrees),
                                  minutes + seconds * (1.0 / 60.0), WholeNumber(degrees),
                                  WholeNumber(minutes), seconds);
    text.Append(position);
    return text;
}

std::optional<CQelString> LatitudeText(IVandelTagControl* tagControl)
{
    return CoordinateText(tagControl, QelItem::kGPSLatitude, kTagLatitudeRef, kLatitudeRefs);
}

std::optional<CQelString> LongitudeText(IVandelTagControl* tagControl)
{
    return CoordinateText(tagControl, QelItem::kGPSLongitude, kTagLongitudeRef, kLongitudeRefs);
}

// Metres as the receiver gives them. The above/below sea-level reference is
// not read, so an altitude below sea level shows as delivered.
std::optional<CQelString> AltitudeText(IVandelTagControl* tagControl)
{
    auto metres = qel::ReadDouble(tagControl, QelItem::kGPSAltitude);
    if (!metres)
        return std::nullopt;
    CQelString text;
    text.LoadStringWithFormat("IDS_QEL_GPS_METRIC", *metres);
    return text;
}

// Degrees from true ('T') or magnetic ('M') north. Without either letter
// the direction means nothing and shows no value.
std::optional<CQelString> DirectionText(IVandelTagControl* tagControl)
{
    auto degrees = qel::ReadDouble(tagControl, QelItem::kGPSImgDirection);
    if (!degrees)
        return std::nullopt;
    auto ref = qel::ReadText<16>(tagControl, kTagImgDirectionRef);
    if (!ref)
        return std::nullopt;
    const char* key = std::strchr(ref->c_str(), 'T')   ? "IDS_QEL_GPS_IMG_DIRECTION_T"
                      : std::strchr(ref->c_str(), 'M') ? "IDS_QEL_GPS_IMG_DIRECTION_M"
                                                       : nullptr;
    if (!key)
        return std::nullopt;
    CQelString text;
    text.LoadStringWithFormat(key, *degrees);
    return text;
}

// Hours and minutes two digits wide; the seconds keep two decimals but are
// not padded, so 7.5 seconds reads 09:05:7.50.
std::optional<CQelString> TimeStampText(IVandelTagControl* tagControl)
{
    auto hms = qel::ReadDoubleTriple(tagControl, QelItem::kGPSTimeStamp);
    if (!hms)
        return std::nullopt;
    // A real time takes 12 bytes; a nonsense one is cut, never overrun.
    char stamp[16] = {};
    std::snprintf(stamp, sizeof stamp, "%02d:%02d:%.2f", WholeNumber((*hms)[0]),
                  WholeNumber((*hms)[1]), (*hms)[2]);
    if (stamp[0] == '\0')
        return std::nullopt;
    CQelString text;
    text.AppendNumber(stamp);
    return text;
}

struct LocationItem {
    UInt32 itemID;
    const char* titleKey;
    std::optional<CQelString> (*value)(IVandelTagControl*);
};

constexpr LocationItem kLocationItems[] = {
    {QelItem::kGPSLatitude, "IDS_QEL_GPS_LATITUDE", LatitudeText},
    {QelItem::kGPSLongitude, "IDS_QEL_GPS_LONGITUDE", LongitudeText},
    {QelItem::kGPSAltitude, "IDS_QEL_GPS_ALTITUDE", AltitudeText},
    {QelItem::kGPSImgDirection, "IDS_QEL_GPS_IMG_DIRECTION", DirectionText},
    {QelItem::kGPSTimeStamp, "IDS_QEL_GPS_DATETIME_STAMP", TimeStampText},
};

}  // namespace

void CQelImgInfo::GetGPSInfo(IVandelTagControl* tagControl, UInt32 itemID)
{
    for (const LocationItem& item : kLocationItems) {
        if (item.itemID != itemID)
            continue;
        StoreTitle(itemID, item.titleKey);
        if (auto value = item.value(tagControl))
            StoreValue(itemID, *value);
        return;
    }
    // Any other item is not a location item: nothing, not even a title.
}
