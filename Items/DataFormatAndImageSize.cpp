// SPDX-License-Identifier: MIT
// Data format (JPEG quality, TIFF, RAW, movie) and image size. Each camera
// family records its frames with a few pixels of margin; the image size maps
// such a frame back to the nominal size its menu offers before naming it
// large, medium or small.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <array>

using qel::KeyEntry;

namespace {

constexpr UInt32 kTagRawCompression = 0x80093;  // 1: compressed RAW
constexpr UInt32 kTagImageHeight = 0x10001;     // the width is tag 0x10000, the item itself
constexpr UInt32 kTagOrientation = 0x10005;     // read, never applied: sizes match either way up
constexpr UInt32 kTagSensorVariant = 0x8001B;   // seven words; the first tells the sensor variant

// ---- Data format

constexpr SInt32 kDataFormatRAW = 32;  // compressed or not: tag 0x80093 tells

constexpr KeyEntry kDataFormats[] = {
    {0, "IDS_QEL_DATA_FORMAT_JPEG_BASIC"},  {1, "IDS_QEL_DATA_FORMAT_JPEG_NORMAL"},
    {2, "IDS_QEL_DATA_FORMAT_JPEG_FINE"},   {3, "IDS_QEL_DATA_FORMAT_JPEG_EXTRA"},
    {16, "IDS_QEL_DATA_FORMAT_TIFF_YCC"},   {17, "IDS_QEL_DATA_FORMAT_TIFF_RGB"},
    // 64..69: the movie codes of the compact cameras.
    {64, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},   {65, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},
    {66, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},   {67, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},
    {68, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},   {69, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},
};

// ---- Image size

struct Size {
    SInt32 width;
    SInt32 height;
};

// A size missing from a camera's menu (the 260/262 cameras have no small size).
constexpr Size kNoSize = {0, 0};

enum SizeClass { kPlain, kLarge, kMedium, kSmall };

constexpr const char* kSizeClassKeys[] = {
    "IDS_QEL_IMAGE_SIZE_XY", "IDS_QEL_IMAGE_SIZE_LARGE", "IDS_QEL_IMAGE_SIZE_MEDIUM",
    "IDS_QEL_IMAGE_SIZE_SMALL",
};

// File kind 0 is unknown; it also pads the kind lists below, so it never
// matches a row.
constexpr SInt32 kUnknownFileKind = 0;
using FileKinds = std::array<SInt32, 3>;

bool Lists(const FileKinds& kinds, SInt32 fileKind)
{
    return fileKind != kUnknownFileKind && qel::Lists(kinds, fileKind);
}

// Compact cameras store a slightly larger frame than their menu size; the
// size must match in the stored orientation (a turned frame is shown as read).
struct CompactCorrection {
    FileKinds fileKinds;
    Size stored;
    Size shown;
};

constexpr CompactCorrection kCompactCorrections[] = {
    {{513, 514}, {2576, 1924}, {2560, 1920}},
    {{515}, {2608, 1950}, {2592, 1944}},
    // 2488, not 2448: the height these cameras' own menus show for the size.
    {{516, 517, 518}, {3280, 2454}, {3264, 2488}},
};

// Which SLR sensor variant a row applies to (tag 0x8001B, first word).
enum class SensorVariant { kAny, kMarked, kUnmarked };

// The sizes of one SLR family. A frame of the margin size is shown as the
// large size; every size is accepted upright or turned.
struct SLRSizeGroup {
    FileKinds fileKinds;
    SensorVariant variant;
    Size margin;
    Size large;
    Size medium;
    Size small;
};

constexpr SLRSizeGroup kSLRSizeGroups[] = {
    // kinds        sensor variant             margin        large         medium        small
    {{1030}, SensorVariant::kAny,      {3040, 2014}, {3008, 2000}, {2256, 1496}, {1504, 1000}},
    {{1026}, SensorVariant::kAny,      {3040, 2014}, {3008, 2000}, {2240, 1488}, {1504, 1000}},
    {{1027}, SensorVariant::kAny,      {3040, 2014}, {3008, 2000}, {2256, 1496}, {1504, 1000}},
    {{1025}, SensorVariant::kAny,      {3034, 2024}, {3008, 2000}, {2240, 1488}, {1504, 1000}},
    {{1028, 1029}, SensorVariant::kAny, {3904, 2616}, {3872, 2592}, {2896, 1944}, {1936, 1296}},
    {{260, 262}, SensorVariant::kAny,  {2496, 1648}, {2464, 1632}, {1840, 1224}, kNoSize},
    {{261, 263}, SensorVariant::kMarked,   {3264, 2152}, {3216, 2136}, {2400, 1600}, {1600, 1064}},
    {{261, 263}, SensorVariant::kUnmarked, {4320, 2868}, {4288, 2848}, {3216, 2136}, {2144, 1424}},
};

// One recognised frame size: what the file holds, what is shown, how it is named.
struct SizeRule {
    Size stored;
    Size shown;
    SizeClass named;
};

// Cameras with non-square pixels store frames wider than the picture; each
// is stretched back to the picture's size.
constexpr FileKinds kStretchedFrameKinds = {257, 258, 259};
constexpr SInt32 kStretchedFrameNamedKind = 259;  // only 259 names its sizes; 257/258 stay plain
constexpr SizeRule kStretchedFrames[] = {
    {{4028, 1324}, {3008, 1960}, kLarge},
    {{3008, 1960}, {3008, 1960}, kLarge},
    {{2012, 1324}, {2000, 1312}, kMedium},
    {{2000, 1312}, {2000, 1312}, kMedium},
};

std::array<SizeRule, 4> RulesOf(const SLRSizeGroup& group)
{
    return {{
        {group.margin, group.large, kLarge},
        {group.large, group.large, kLarge},
        {group.medium, group.medium, kMedium},
        {group.small, group.small, kSmall},
    }};
}

bool Matches(Size nominal, Size read)
{
    if (nominal.width == kNoSize.width && nominal.height == kNoSize.height)
        return false;
    return (read.width == nominal.width && read.height == nominal.height) ||
           (read.width == nominal.height && read.height == nominal.width);
}

// The first rule whose size matches the frame upright or turned.
template <class Rules>
const SizeRule* MatchingRule(const Rules& rules, Size read)
{
    for (const SizeRule& rule : rules)
        if (Matches(rule.stored, read))
            return &rule;
    return nullptr;
}

// Dimension by dimension, so that a portrait frame stays portrait.
Size Normalised(const SizeRule& rule, Size read)
{
    auto dimension = [&rule](SInt32 value) {
        if (value == rule.stored.width)
            return rule.shown.width;
        if (value == rule.stored.height)
            return rule.shown.height;
        return value;
    };
    return {dimension(read.width), dimension(read.height)};
}

bool SensorVariantMarked(IVandelTagControl* tags)
{
    auto record = qel::ReadRecord<std::array<SInt32, 7>>(tags, kTagSensorVariant, kQelValueInt32);
    return record && (*record)[0] != 0;
}

const SLRSizeGroup* SLRSizeGroupFor(SInt32 fileKind, IVandelTagControl* tags)
{
    bool variantKnown = false;
    bool marked = false;
    for (const SLRSizeGroup& group : kSLRSizeGroups) {
        if (!Lists(group.fileKinds, fileKind))
            continue;
        if (group.variant == SensorVariant::kAny)
            return &group;
        if (!variantKnown) {
            marked = SensorVariantMarked(tags);
            variantKnown = true;
        }
        if ((group.variant == SensorVariant::kMarked) == marked)
            return &group;
    }
    return nullptr;
}

void ReadOrientation(IVandelTagControl* tags)
{
    qel::ReadDouble(tags, kTagOrientation);
}

}  // namespace

void CQelImgInfo::GetDataFormat(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kDataFormat, "IDS_QEL_DATA_FORMAT");
    auto format = qel::ReadInt32(tagControl, QelItem::kDataFormat);
    if (!format)
        return;
    const char* key = qel::KeyFor(kDataFormats, *format, qel::kEmptyValue);
    if (*format == kDataFormatRAW) {
        auto compressed = qel::ReadInt32(tagControl, kTagRawCompression);
        key = compressed && *compressed == 1 ? "IDS_QEL_DATA_FORMAT_RAW_COMPRESSED"
                                             : "IDS_QEL_DATA_FORMAT_RAW";
    }
    StoreValueKey(QelItem::kDataFormat, key);
}

void CQelImgInfo::GetImageSize(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kImageSize, "IDS_QEL_IMAGE_SIZE");
    auto width = qel::ReadInt32(tagControl, QelItem::kImageSize);
    if (!width)
        return;
    auto height = qel::ReadInt32(tagControl, kTagImageHeight);
    if (!height)
        return;
    ReadOrientation(tagControl);

    Size size = {*width, *height};
    SizeClass named = kPlain;
    if (m_deviceKind == kDeviceCompact) {
        for (const CompactCorrection& correction : kCompactCorrections) {
            if (Lists(correction.fileKinds, m_fileKind) && size.width == correction.stored.width &&
                size.height == correction.stored.height) {
                size = correction.shown;
                break;
            }
        }
    } else if (m_deviceKind == kDeviceSLR) {
        if (const SLRSizeGroup* group = SLRSizeGroupFor(m_fileKind, tagControl)) {
            const auto rules = RulesOf(*group);
            if (const SizeRule* rule = MatchingRule(rules, size)) {
                if (rule == &rules[0])  // the margin size
                    ReadOrientation(tagControl);
                size = Normalised(*rule, size);
                named = rule->named;
            }
        } else if (Lists(kStretchedFrameKinds, m_fileKind)) {
            if (const SizeRule* rule = MatchingRule(kStretchedFrames, size)) {
                size = Normalised(*rule, size);
                if (m_fileKind == kStretchedFrameNamedKind)
                    named = rule->named;
            }
        }
    }

    CQelString value;
    value.LoadStringWithFormat(kSizeClassKeys[named], size.width, size.height);
    StoreValue(QelItem::kImageSize, value);
}
