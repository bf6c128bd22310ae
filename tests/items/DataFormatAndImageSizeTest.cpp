// SPDX-License-Identifier: MIT
// Data format and image size: the RAW and movie codes, and the image-size
// groups by device and file kind, frames turned on their side included.
#include "TestImgInfo.h"

namespace {

constexpr UInt32 kRawCompression = 0x80093, kHeight = 0x10001, kOrientation = 0x10005,
                 kSensorVariant = 0x8001B;

TEST(DataFormat, MapsTheFormatNumber)
{
    const auto format = &CQelImgInfo::GetDataFormat;
    const UInt32 id = QelItem::kDataFormat;
    auto File = [](std::optional<SInt32> code, std::optional<SInt32> compression) -> Tags {
        return [=](MemoryTagSource& t) { t.Int32(QelItem::kDataFormat, code).Int32(kRawCompression, compression); };
    };
    ExpectItems({
        {"compressed RAW", format, id, File(32, 1), L("IDS_QEL_DATA_FORMAT_RAW_COMPRESSED")},
        {"RAW, compression unread", format, id, File(32, {}), L("IDS_QEL_DATA_FORMAT_RAW")},
        {"last movie code", format, id, File(69, {}), L("IDS_QEL_DATA_FORMAT_QT_MOVIE")},
        {"past the movie codes", format, id, File(70, {}), ""},
        {"compression without RAW", format, id, File(33, 1), ""},
        {"absent", format, id, File({}, {}), {}},
    });
}

constexpr const char *kXY = "IDS_QEL_IMAGE_SIZE_XY", *kL = "IDS_QEL_IMAGE_SIZE_LARGE",
                     *kM = "IDS_QEL_IMAGE_SIZE_MEDIUM", *kS = "IDS_QEL_IMAGE_SIZE_SMALL";

struct ImageSizeCase {
    SInt32 deviceKind, fileKind, width, height;
    std::optional<SInt32> sensorVariant;  // first word of tag 0x8001B
    const char* key;
    SInt32 shownWidth, shownHeight;
};

const ImageSizeCase kImageSizes[] = {
    // SLR groups: margin sizes become the large size, either way up.
    {2, 1030, 3040, 2014, {}, kL, 3008, 2000}, {2, 1030, 2014, 3040, {}, kL, 2000, 3008},
    {2, 1026, 2256, 1496, {}, kXY, 2256, 1496}, {2, 1027, 2256, 1496, {}, kM, 2256, 1496},
    {2, 1028, 1296, 1936, {}, kS, 1296, 1936}, {2, 260, 0, 0, {}, kXY, 0, 0},
    {2, 0, 3040, 2014, {}, kXY, 3040, 2014},
    // 261/263: the sensor variant chooses the group.
    {2, 261, 3216, 2136, 1, kL, 3216, 2136},   {2, 261, 3216, 2136, 0, kM, 3216, 2136},
    {2, 263, 2152, 3264, 7, kL, 2136, 3216}, {2, 261, 4320, 2868, 1, kXY, 4320, 2868},
    // Non-square pixels: 259 names its sizes, 257 and 258 only normalise them.
    {2, 257, 4028, 1324, {}, kXY, 3008, 1960}, {2, 258, 1324, 2012, {}, kXY, 1312, 2000},
    {2, 259, 1324, 4028, {}, kL, 1960, 3008},  {2, 259, 4028, 1312, {}, kXY, 4028, 1312},
    // Compacts correct only upright frames and never name them; others show the read size.
    {1, 517, 3280, 2454, {}, kXY, 3264, 2488}, {1, 517, 2454, 3280, {}, kXY, 2454, 3280},
    {1, 515, 2576, 1924, {}, kXY, 2576, 1924}, {1, 1030, 3040, 2014, {}, kXY, 3040, 2014},
    {3, 517, 3280, 2454, {}, kXY, 3280, 2454}, {4, 1030, 3040, 2014, {}, kXY, 3040, 2014},
};

TEST(ImageSize, NamesAndNormalisesTheFrame)
{
    for (const ImageSizeCase& c : kImageSizes) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kImageSizes));
        MemoryTagSource tags;
        tags.Int32(QelItem::kImageSize, c.width).Int32(kHeight, c.height).Double(kOrientation, 1);
        if (c.sensorVariant)
            tags.Int32s(kSensorVariant, {*c.sensorVariant, 0, 0, 0, 0, 0, 0});
        TestImgInfo info;
        info.Kinds(c.deviceKind, c.fileKind).GetImageSize(&tags);
        EXPECT_EQ(info.Title(QelItem::kImageSize), L("IDS_QEL_IMAGE_SIZE"));
        EXPECT_EQ(info.Value(QelItem::kImageSize), LF(c.key, c.shownWidth, c.shownHeight));
    }
}

}  // namespace
