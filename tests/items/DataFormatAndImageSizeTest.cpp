// SPDX-License-Identifier: MIT
// Data format and image size: the RAW and movie codes, and the image-size
// groups by device and file kind, frames turned on their side included.
#include "TestImgInfo.h"

namespace {

constexpr UInt32 kRawCompression = 0x80093, kHeight = 0x10001, kOrientation = 0x10005,
                 kSensorVariant = 0x8001B;

TEST(DataFormat, MapsTheFormatNumber)
{
    struct Case {
        std::optional<SInt32> format, rawCompression;
        const char* key;  // "": empty value; null: no value
    } const cases[] = {
        {0, {}, "IDS_QEL_DATA_FORMAT_JPEG_BASIC"}, {3, {}, "IDS_QEL_DATA_FORMAT_JPEG_EXTRA"},
        {17, {}, "IDS_QEL_DATA_FORMAT_TIFF_RGB"},  {32, 1, "IDS_QEL_DATA_FORMAT_RAW_COMPRESSED"},
        {32, 2, "IDS_QEL_DATA_FORMAT_RAW"},        {32, {}, "IDS_QEL_DATA_FORMAT_RAW"},
        {64, {}, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},  {69, {}, "IDS_QEL_DATA_FORMAT_QT_MOVIE"},
        {70, {}, ""}, {4, {}, ""}, {33, 1, ""},    {{}, {}, nullptr},
    };
    for (const Case& c : cases) {
        MemoryTagSource tags;
        tags.Int32(QelItem::kDataFormat, c.format);
        tags.Int32(kRawCompression, c.rawCompression);
        TestImgInfo info;
        SCOPED_TRACE(c.format.value_or(-1));
        ExpectFormatted(info, &CQelImgInfo::GetDataFormat, tags, QelItem::kDataFormat,
                        L("IDS_QEL_DATA_FORMAT"), Shown(c.key));
    }
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
    {2, 1030, 1496, 2256, {}, kM, 1496, 2256}, {2, 1030, 1504, 1000, {}, kS, 1504, 1000},
    {2, 1026, 2256, 1496, {}, kXY, 2256, 1496}, {2, 1026, 2240, 1488, {}, kM, 2240, 1488},
    {2, 1027, 2240, 1488, {}, kXY, 2240, 1488}, {2, 1027, 2256, 1496, {}, kM, 2256, 1496},
    {2, 1025, 2024, 3034, {}, kL, 2000, 3008}, {2, 1025, 3040, 2014, {}, kXY, 3040, 2014},
    {2, 1029, 3904, 2616, {}, kL, 3872, 2592}, {2, 1028, 1296, 1936, {}, kS, 1296, 1936},
    {2, 262, 2496, 1648, {}, kL, 2464, 1632},  {2, 260, 1840, 1224, {}, kM, 1840, 1224},
    {2, 260, 0, 0, {}, kXY, 0, 0},             {2, 0, 3040, 2014, {}, kXY, 3040, 2014},
    // 261/263: the sensor variant chooses the group.
    {2, 261, 3216, 2136, 1, kL, 3216, 2136},   {2, 261, 3216, 2136, 0, kM, 3216, 2136},
    {2, 263, 3216, 2136, {}, kM, 3216, 2136},  {2, 263, 2152, 3264, 7, kL, 2136, 3216},
    {2, 261, 4320, 2868, 0, kL, 4288, 2848},   {2, 261, 4320, 2868, 1, kXY, 4320, 2868},
    {2, 261, 2144, 1424, 0, kS, 2144, 1424},
    // Non-square pixels: 259 names its sizes, 257 and 258 only normalise them.
    {2, 257, 4028, 1324, {}, kXY, 3008, 1960}, {2, 258, 1324, 2012, {}, kXY, 1312, 2000},
    {2, 259, 1324, 4028, {}, kL, 1960, 3008},  {2, 259, 2012, 1324, {}, kM, 2000, 1312},
    {2, 259, 2000, 1312, {}, kM, 2000, 1312},  {2, 259, 4028, 1312, {}, kXY, 4028, 1312},
    // Compacts correct only upright frames and never name them; others show the read size.
    {1, 517, 3280, 2454, {}, kXY, 3264, 2488}, {1, 517, 2454, 3280, {}, kXY, 2454, 3280},
    {1, 513, 2576, 1924, {}, kXY, 2560, 1920}, {1, 515, 2608, 1950, {}, kXY, 2592, 1944},
    {1, 515, 2576, 1924, {}, kXY, 2576, 1924}, {1, 1030, 3040, 2014, {}, kXY, 3040, 2014},
    {3, 517, 3280, 2454, {}, kXY, 3280, 2454}, {4, 1030, 3040, 2014, {}, kXY, 3040, 2014},
};

TEST(ImageSize, NamesAndNormalisesTheFrame)
{
    for (const ImageSizeCase& c : kImageSizes) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kImageSizes));
        EXPECT_NE(L(c.key), c.key) << "size formats must come from the string table";
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

// The orientation is read once, and once more for a margin size; without it
// the size is still shown, and every failed read is released.
TEST(ImageSizeReads, OrientationIsReadAgainForAMarginSize)
{
    struct Case {
        SInt32 deviceKind, fileKind, width, height;
        int orientationReads;
    } const cases[] = {
        {2, 1030, 3040, 2014, 2}, {2, 1030, 3008, 2000, 1}, {2, 261, 4320, 2868, 2},
        {2, 259, 4028, 1324, 1},  {1, 517, 3280, 2454, 1},
    };
    for (const Case& c : cases) {
        MemoryTagSource tags;
        tags.Int32(QelItem::kImageSize, c.width).Int32(kHeight, c.height);
        TestImgInfo info;
        info.Kinds(c.deviceKind, c.fileKind).GetImageSize(&tags);
        int reads = 0;
        for (const auto& read : tags.Reads())
            reads += read.tagID == kOrientation ? 1 : 0;
        EXPECT_EQ(reads, c.orientationReads) << c.fileKind << " " << c.width;
        EXPECT_TRUE(info.Value(QelItem::kImageSize).has_value());
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

// Through the driver: the file is classified as an SLR before its size is named.
TEST(ImageSizeReads, AnSLRFileReadThroughTheDriverIsNamed)
{
    MemoryTagSource tags(1030);
    tags.Text(271, "TALVO CORPORATION").Text(272, "TALVO Q77");
    tags.Int32(QelItem::kImageSize, 3040).Int32(kHeight, 2014);
    TestImgInfo info;
    info.ReadFileTags(&tags);
    EXPECT_EQ(info.Value(QelItem::kImageSize), LF(kL, 3008, 2000));
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

}  // namespace
