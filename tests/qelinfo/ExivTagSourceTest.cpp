// SPDX-License-Identifier: MIT
// Images: which Exif tags reach the library under which item, in which form.
// Damaged images are the robustness suite's.
#include "ExivTagSource.h"
#include "QelinfoTestSupport.h"
#include "TagSourceError.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using qel::ExivTagSource;
using qelinfo_test::ExifEntry;
using qelinfo_test::ScratchFolder;
using Bytes = std::vector<UInt8>;

Bytes Text(const std::string& text)
{
    const auto* first = reinterpret_cast<const UInt8*>(text.data());
    Bytes bytes(first, first + text.size());
    bytes.push_back(0);
    return bytes;
}
Bytes Int(SInt32 value) { return qel::HostBytes(std::vector<SInt32>{value}); }
Bytes Doubles(const std::vector<double>& values) { return qel::HostBytes(values); }
Bytes Step(SInt16 value, SInt16 numerator, SInt16 denominator) { return qel::HostBytes(std::vector<SInt16>{value, numerator, denominator}); }

struct Delivery {
    UInt32 type;
    Bytes bytes;
    UInt32 size;
};
Delivery As(UInt32 type, Bytes bytes) { return {type, bytes, static_cast<UInt32>(bytes.size())}; }

// Exif in the image, the item looked at, and what the item's tag delivers
// (nullopt: no tag).
struct ExifCase {
    const char* name;
    std::vector<ExifEntry> exif;
    UInt32 item;
    std::optional<Delivery> delivery;
};

class ExifDelivery : public ::testing::TestWithParam<ExifCase> {};

TEST_P(ExifDelivery, ReachesTheItemInTheLibrarysForm)
{
    const ExifCase& c = GetParam();
    ScratchFolder folder;
    auto source = ExivTagSource::FromFile(folder.WriteJpeg("shot.jpg", c.exif));
    if (!c.delivery) {
        EXPECT_EQ(source->GetTagInfo(c.item, 0), 0u);
        return;
    }
    const Delivery& expected = *c.delivery;
    EXPECT_EQ(source->GetTagInfo(c.item, 0), expected.type);
    EXPECT_EQ(source->GetTagSize(c.item, 0), expected.size);
    Bytes buffer(expected.bytes.size());
    ITagError* error = source->GetTagValue(c.item, expected.type, static_cast<UInt32>(buffer.size()),
                                           buffer.data(), 0);
    ASSERT_EQ(error, nullptr);
    EXPECT_EQ(buffer, expected.bytes);
}

const ExifEntry kWBManual{"Exif.Photo.WhiteBalance", "Short", "1"};
const ExifEntry kWBAuto{"Exif.Photo.WhiteBalance", "Short", "0"};
Delivery WB(UInt32 setting) { return As(266, qel::HostBytes(std::vector<UInt32>{setting, 0})); }
Delivery ISO(UInt16 iso) { return As(260, qel::HostBytes(std::vector<UInt16>{0, iso})); }
const ExifEntry kISOTooHigh{"Exif.Photo.ISOSpeedRatings", "Short", "65535"};
const ExifEntry kSOS{"Exif.Photo.StandardOutputSensitivity", "Long", "10000"};
const ExifEntry kREI{"Exif.Photo.RecommendedExposureIndex", "Long", "12800"};

INSTANTIATE_TEST_SUITE_P(
    Tags, ExifDelivery,
    ::testing::Values(
        ExifCase{"ExposureTimeExact", {{"Exif.Photo.ExposureTime", "Rational", "1/250"}}, 0x829A,
                 As(4, Doubles({0.004}))},
        ExifCase{"BiasNegativeDenominator", {{"Exif.Photo.ExposureBiasValue", "SRational", "1/-2"}},
                 0x9204, As(17, Step(-1, 1, 2))},
        ExifCase{"BiasTooFineBecomesHundredths",
                 {{"Exif.Photo.ExposureBiasValue", "SRational", "-100000/300001"}}, 0x9204,
                 As(17, Step(-33, 1, 100))},
        ExifCase{"BiasWithoutDenominator", {{"Exif.Photo.ExposureBiasValue", "SRational", "1/0"}},
                 0x9204, std::nullopt},
        ExifCase{"CommentWithoutCharacterCode",
                 {{"Exif.Photo.UserComment", "Comment", "charset=Ascii Harbour at dawn   "}}, 0x9286,
                 As(2, Text("Harbour at dawn"))},
        ExifCase{"LatinCommentSpeltInAscii", {{"Exif.Photo.UserComment", "Comment", "charset=Unicode Grüße – Ærø"}},
                 0x9286, As(2, Text("Grusse - AEro"))},
        ExifCase{"OtherScriptCommentAsWritten", {{"Exif.Photo.UserComment", "Comment", "charset=Unicode 港の朝 Grüße"}},
                 0x9286, As(2, Text("港の朝 Grüße"))},
        ExifCase{"PaddedModelTrimmed", {{"Exif.Image.Model", "Ascii", "TALVO Q77      "}}, 0x110,
                 Delivery{2, Text("TALVO Q77"), 10}},
        ExifCase{"ExposureTimeOfWrongType", {{"Exif.Photo.ExposureTime", "Short", "250"}}, 0x829A, std::nullopt},
        ExifCase{"NegativeFocalLength", {{"Exif.Photo.FocalLength", "SRational", "-50/1"}}, 0x920A, std::nullopt},
        ExifCase{"SubSecondsOriginalFirst",
                 {{"Exif.Photo.SubSecTime", "Ascii", "11"}, {"Exif.Photo.SubSecTimeOriginal", "Ascii", "45"}},
                 0x9290, Delivery{2, Text("45"), 3}},
        ExifCase{"PixelDimension", {{"Exif.Photo.PixelXDimension", "Long", "3872"}}, 0x10000, As(3, Int(3872))},
        ExifCase{"ZeroPixelDimensionIsTheImages", {{"Exif.Photo.PixelYDimension", "Long", "0"}}, 0x10001, As(3, Int(8))},
        ExifCase{"OrientationAsDouble", {{"Exif.Image.Orientation", "Short", "6"}}, 0x10005, As(4, Doubles({6.0}))},
        ExifCase{"LatitudeSouthIsOne", {{"Exif.GPSInfo.GPSLatitudeRef", "Ascii", "S"}}, 0x30001, As(3, Int(1))},
        ExifCase{"LatitudeRefOfALongitudeIsNone", {{"Exif.GPSInfo.GPSLatitudeRef", "Ascii", "E"}}, 0x30001, std::nullopt},
        ExifCase{"FractionalMinutesReachSeconds", {{"Exif.GPSInfo.GPSLatitude", "Rational", "48/1 1234567/100000 0/1"}},
                 0x30002, As(4, Doubles({48, 12, 20.74}))},
        ExifCase{"DecimalDegrees", {{"Exif.GPSInfo.GPSLongitude", "Rational", "4821234/100000 0/1 0/1"}}, 0x30004,
                 As(4, Doubles({48, 12, 44.42}))},
        ExifCase{"HalfHundredthRoundsUp", {{"Exif.GPSInfo.GPSLatitude", "Rational", "1/1 2/1 2745/1000"}}, 0x30002,
                 As(4, Doubles({1, 2, 2.75}))},
        ExifCase{"SecondsCarryIntoDegrees", {{"Exif.GPSInfo.GPSLatitude", "Rational", "10/1 59/1 59999/1000"}},
                 0x30002, As(4, Doubles({11, 0, 0}))},
        ExifCase{"NinetyDegreesIsAPosition", {{"Exif.GPSInfo.GPSLatitude", "Rational", "90/1 0/1 0/1"}}, 0x30002,
                 As(4, Doubles({90, 0, 0}))},
        ExifCase{"BeyondTheGlobe", {{"Exif.GPSInfo.GPSLatitude", "Rational", "90/1 0/1 1/100"}}, 0x30002, std::nullopt},
        ExifCase{"SixtyMinutes", {{"Exif.GPSInfo.GPSLatitude", "Rational", "48/1 60/1 0/1"}}, 0x30002, std::nullopt},
        ExifCase{"NegativeMinutes", {{"Exif.GPSInfo.GPSLatitude", "SRational", "48/1 -1/1 0/1"}}, 0x30002, std::nullopt},
        ExifCase{"UnknownPositionIsNoPosition", {{"Exif.GPSInfo.GPSLongitude", "Rational", "0/0 0/0 0/0"}},
                 0x30004, std::nullopt},
        ExifCase{"AltitudeBelowSeaLevelIsNegative",
                 {{"Exif.GPSInfo.GPSAltitudeRef", "Byte", "1"}, {"Exif.GPSInfo.GPSAltitude", "Rational", "25/2"}},
                 0x30006, As(4, Doubles({-12.5}))},
        ExifCase{"AltitudeBelowSeaLevel", {{"Exif.GPSInfo.GPSAltitudeRef", "Byte", "1"}}, 0x30005, As(3, Int(1))},
        ExifCase{"TimeStampCarriesIntoTheMinute", {{"Exif.GPSInfo.GPSTimeStamp", "Rational", "9/1 5/1 59999/1000"}},
                 0x30007, As(4, Doubles({9, 6, 0}))},
        ExifCase{"MidnightCarriesIntoTheNextDay", {{"Exif.GPSInfo.GPSTimeStamp", "Rational", "23/1 59/1 59999/1000"}},
                 0x30007, As(4, Doubles({0, 0, 0}))},
        ExifCase{"TwentyFourHours", {{"Exif.GPSInfo.GPSTimeStamp", "Rational", "24/1 0/1 0/1"}}, 0x30007, std::nullopt},
        ExifCase{"ISOAsPlainNumber", {{"Exif.Photo.ISOSpeedRatings", "Short", "400"}}, 0x80002, ISO(400)},
        ExifCase{"ISOZeroIsUnknown", {{"Exif.Photo.ISOSpeedRatings", "Short", "0"}}, 0x80002, std::nullopt},
        ExifCase{"ISOTooHighTakesTheNamedExif23Sensitivity",
                 {kISOTooHigh, {"Exif.Photo.SensitivityType", "Short", "2"}, kSOS, kREI}, 0x80002, ISO(12800)},
        ExifCase{"ISOAbsentTakesTheISOSpeedFirst",
                 {{"Exif.Photo.SensitivityType", "Short", "7"}, kSOS, kREI, {"Exif.Photo.ISOSpeed", "Long", "25600"}},
                 0x80002, ISO(25600)},
        ExifCase{"SensitivityTypeNamesATagNotWritten", {kISOTooHigh, {"Exif.Photo.SensitivityType", "Short", "3"}, kSOS},
                 0x80002, std::nullopt},
        ExifCase{"Exif23SensitivityBeyond16Bits",
                 {{"Exif.Photo.SensitivityType", "Short", "1"}, {"Exif.Photo.StandardOutputSensitivity", "Long", "70000"}},
                 0x80002, std::nullopt},
        ExifCase{"AutoWhiteBalance", {kWBAuto, {"Exif.Photo.LightSource", "Short", "10"}}, 0x80005, WB(0)},
        ExifCase{"ManualCloudy", {kWBManual, {"Exif.Photo.LightSource", "Short", "10"}}, 0x80005, WB(6)},
        ExifCase{"LightSourceAloneTungsten", {{"Exif.Photo.LightSource", "Short", "3"}}, 0x80005, WB(1)},
        ExifCase{"IlluminantD65NamesNoSetting", {kWBManual, {"Exif.Photo.LightSource", "Short", "21"}},
                 0x80005, std::nullopt},
        ExifCase{"ManualWithoutLightSource", {kWBManual}, 0x80005, std::nullopt},
        ExifCase{"WrongExifTypeIsLeftOut", {{"Exif.Photo.MeteringMode", "Rational", "5/1"}}, 0x9207, std::nullopt}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ImageFileKind, IsUnknownBecauseMakerNotesAreNotRead)
{
    ScratchFolder folder;
    auto source = ExivTagSource::FromFile(folder.WriteJpeg("shot.jpg", {}));
    SInt32 kind = 0;
    ITagError* error = source->GetFileKind(&kind);
    ASSERT_NE(error, nullptr);
    error->Release();
    EXPECT_EQ(source->OutstandingErrors(), 0u);
}

}  // namespace
