// SPDX-License-Identifier: MIT
// Exif, TIFF and GPS tags of an image, as the library's items read them.
//
//  Item     Type          Size          From the image
//  0x10F    2 text        Exif count    Exif.Image.Make
//  0x110    2 text        Exif count    Exif.Image.Model
//  0x132    2 text        Exif count    Exif.Image.DateTime
//  0x829A   4 double      8             Exif.Photo.ExposureTime (rational, exact)
//  0x829D   4 double      8             Exif.Photo.FNumber
//  0x8822   3 int32       4             Exif.Photo.ExposureProgram
//  0x9003   2 text        Exif count    Exif.Photo.DateTimeOriginal
//  0x9204   17 value step 6             Exif.Photo.ExposureBiasValue: n/d reduced
//                                       becomes {n, 1, d}; a fraction beyond
//                                       16 bits becomes hundredths {round(100 n/d), 1, 100}
//  0x9207   3 int32       4             Exif.Photo.MeteringMode
//  0x920A   4 double      8             Exif.Photo.FocalLength
//  0x9286   2 text        length + 1    Exif.Photo.UserComment without its 8-byte
//                                       character-code prefix (UNICODE decoded to
//                                       UTF-8), cut at the first zero, trailing
//                                       blanks (the camera's padding) removed
//  0x9290   2 text        Exif count    Exif.Photo.SubSecTimeOriginal, else SubSecTime
//  0x10000  3 int32       4             Exif.Photo.PixelXDimension, else the image's width
//  0x10001  3 int32       4             Exif.Photo.PixelYDimension, else the image's height
//  0x10005  4 double      8             Exif.Image.Orientation
//  0x30001  3 int32       4             GPSLatitudeRef: "N" 0, "S" 1
//  0x30002  4 doubles     24            GPSLatitude: degrees, minutes, seconds
//  0x30003  3 int32       4             GPSLongitudeRef: "E" 2, "W" 3
//  0x30004  4 doubles     24            GPSLongitude
//  0x30005  3 int32       4             GPSAltitudeRef: 0 above, 1 below sea level
//  0x30006  4 double      8             GPSAltitude, metres, as recorded (no sign)
//  0x30007  4 doubles     24            GPSTimeStamp: hours, minutes, seconds
//  0x30010  2 text        Exif count    GPSImgDirectionRef: "T" true, "M" magnetic north
//  0x30011  4 double      8             GPSImgDirection, degrees
//  0x80002  260 ISO       4             mode 0 (a plain ISO number) and
//                                       Exif.Photo.ISOSpeedRatings (1 to 65535)
//  0x80005  266 WB        8             {setting, 0 K} from Exif.Photo.WhiteBalance
//                                       and Exif.Photo.LightSource, see kLightSources
//
// Numbers missing from a GPS triple count as 0; a rational with a zero
// denominator, a value of the wrong Exif type or out of range leaves the tag
// out rather than delivering a made-up number.
#include "ExivTagSource.h"

#include "SourceFile.h"
#include "TagSourceError.h"

#include <exiv2/exiv2.hpp>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace qel {

namespace {

enum class Conversion {
    kText,           // bytes up to the first zero, sized by the Exif count
    kInt32,          // one integer
    kDouble,         // one number
    kTriple,         // three numbers (degrees/minutes/seconds, h/m/s)
    kValueStep,      // a signed rational as whole steps of a fraction
    kComment,        // user comment without its character-code prefix
    kLatitudeRef,    // "N"/"S" as the numbers 0/1
    kLongitudeRef,   // "E"/"W" as the numbers 2/3
};

struct ExifTag {
    const char* key;
    UInt32 item;
    Conversion conversion;
};

// When two Exif tags feed one item, the first one present wins.
constexpr ExifTag kExifTags[] = {
    {"Exif.Image.Make", 0x10F, Conversion::kText},
    {"Exif.Image.Model", 0x110, Conversion::kText},
    {"Exif.Image.DateTime", 0x132, Conversion::kText},
    {"Exif.Photo.ExposureTime", 0x829A, Conversion::kDouble},
    {"Exif.Photo.FNumber", 0x829D, Conversion::kDouble},
    {"Exif.Photo.ExposureProgram", 0x8822, Conversion::kInt32},
    {"Exif.Photo.DateTimeOriginal", 0x9003, Conversion::kText},
    {"Exif.Photo.ExposureBiasValue", 0x9204, Conversion::kValueStep},
    {"Exif.Photo.MeteringMode", 0x9207, Conversion::kInt32},
    {"Exif.Photo.FocalLength", 0x920A, Conversion::kDouble},
    {"Exif.Photo.UserComment", 0x9286, Conversion::kComment},
    {"Exif.Photo.SubSecTimeOriginal", 0x9290, Conversion::kText},
    {"Exif.Photo.SubSecTime", 0x9290, Conversion::kText},
    {"Exif.Photo.PixelXDimension", 0x10000, Conversion::kInt32},
    {"Exif.Photo.PixelYDimension", 0x10001, Conversion::kInt32},
    {"Exif.Image.Orientation", 0x10005, Conversion::kDouble},
    {"Exif.GPSInfo.GPSLatitudeRef", 0x30001, Conversion::kLatitudeRef},
    {"Exif.GPSInfo.GPSLatitude", 0x30002, Conversion::kTriple},
    {"Exif.GPSInfo.GPSLongitudeRef", 0x30003, Conversion::kLongitudeRef},
    {"Exif.GPSInfo.GPSLongitude", 0x30004, Conversion::kTriple},
    {"Exif.GPSInfo.GPSAltitudeRef", 0x30005, Conversion::kInt32},
    {"Exif.GPSInfo.GPSAltitude", 0x30006, Conversion::kDouble},
    {"Exif.GPSInfo.GPSTimeStamp", 0x30007, Conversion::kTriple},
    {"Exif.GPSInfo.GPSImgDirectionRef", 0x30010, Conversion::kText},
    {"Exif.GPSInfo.GPSImgDirection", 0x30011, Conversion::kDouble},
};

struct Reference {
    const char* letter;
    SInt32 code;
};
constexpr Reference kLatitudeRefs[] = {{"N", 0}, {"S", 1}};
constexpr Reference kLongitudeRefs[] = {{"E", 2}, {"W", 3}};

// The camera's white-balance settings, as the library numbers them.
enum WhiteBalanceSetting : UInt32 {
    kWBAuto = 0,
    kWBIncandescent = 1,
    kWBFluorescent = 2,
    kWBSunny = 3,
    kWBFlash = 4,
    kWBShade = 5,
    kWBCloudy = 6,
};

// Exif LightSource values that name exactly one of those settings. The
// standard illuminants (17 to 23), "unknown" and "other" name none; a file
// with those, or a manual white balance without a light source, gets no
// white-balance tag.
struct LightSource {
    long exif;
    WhiteBalanceSetting setting;
};
constexpr LightSource kLightSources[] = {
    {1, kWBSunny},          // daylight
    {2, kWBFluorescent},    {3, kWBIncandescent},  // tungsten
    {4, kWBFlash},          {9, kWBSunny},         // fine weather
    {10, kWBCloudy},        {11, kWBShade},
    {12, kWBFluorescent},   {13, kWBFluorescent},  {14, kWBFluorescent},
    {15, kWBFluorescent},   {16, kWBFluorescent},  // daylight .. warm white fluorescent
    {24, kWBIncandescent},  // ISO studio tungsten
};
constexpr long kExifWhiteBalanceAuto = 0;

struct WhiteBalanceRecord {
    UInt32 mode;
    SInt32 colorTemperature;
};
static_assert(sizeof(WhiteBalanceRecord) == 8, "white-balance record is 8 bytes");

struct ISORecord {
    UInt16 mode;
    UInt16 iso;
};
static_assert(sizeof(ISORecord) == 4, "ISO record is 4 bytes");
constexpr UInt16 kISOModeNumber = 0;

// Keys read besides those of kExifTags.
constexpr const char* kISOKey = "Exif.Photo.ISOSpeedRatings";
constexpr const char* kWhiteBalanceKey = "Exif.Photo.WhiteBalance";
constexpr const char* kLightSourceKey = "Exif.Photo.LightSource";

// Every key the source reads, as exiv2 spells it, with its place in an
// ExifIndex; made once.
const std::unordered_map<std::string, size_t>& KeyPlaces()
{
    static const auto places = [] {
        std::unordered_map<std::string, size_t> places;
        auto add = [&](const char* key) { places.emplace(Exiv2::ExifKey(key).key(), places.size()); };
        for (const ExifTag& entry : kExifTags)
            add(entry.key);
        for (const char* key : {kISOKey, kWhiteBalanceKey, kLightSourceKey})
            add(key);
        return places;
    }();
    return places;
}

// The first datum of each key the source reads, found in one pass over the
// image's Exif data instead of one search per key (each of which copies
// the key of every datum it passes).
class ExifIndex {
public:
    explicit ExifIndex(const Exiv2::ExifData& exif) : m_exif(exif), m_first(KeyPlaces().size())
    {
        for (const Exiv2::Exifdatum& datum : exif) {
            auto place = KeyPlaces().find(datum.key());
            if (place != KeyPlaces().end() && !m_first[place->second])
                m_first[place->second] = &datum;
        }
    }

    // As ExifData::findKey finds it: the first datum with the key, null when
    // there is none or it holds no value.
    const Exiv2::Exifdatum* Find(const char* key) const
    {
        const Exiv2::Exifdatum* datum = nullptr;
        auto place = KeyPlaces().find(key);
        if (place != KeyPlaces().end()) {
            datum = m_first[place->second];
        } else {
            auto it = m_exif.findKey(Exiv2::ExifKey(key));
            datum = it == m_exif.end() ? nullptr : &*it;
        }
        return datum && datum->count() > 0 ? datum : nullptr;
    }

private:
    const Exiv2::ExifData& m_exif;
    std::vector<const Exiv2::Exifdatum*> m_first;
};

const Exiv2::Exifdatum* FindDatum(const ExifIndex& exif, const char* key)
{
    return exif.Find(key);
}

bool IsInteger(Exiv2::TypeId type)
{
    switch (type) {
    case Exiv2::unsignedByte:
    case Exiv2::unsignedShort:
    case Exiv2::unsignedLong:
    case Exiv2::signedByte:
    case Exiv2::signedShort:
    case Exiv2::signedLong:
        return true;
    default:
        return false;
    }
}

// Numerator and denominator of element i, exact; integers have denominator 1.
std::optional<std::pair<long long, long long>> RationalAt(const Exiv2::Exifdatum& datum, long i)
{
    if (i >= datum.count())
        return std::nullopt;
    using Fraction = std::pair<long long, long long>;
    const Exiv2::Value& value = datum.value();
    const auto at = static_cast<size_t>(i);
    if (auto* unsignedValue = dynamic_cast<const Exiv2::URationalValue*>(&value))
        return Fraction{unsignedValue->value_.at(at).first, unsignedValue->value_.at(at).second};
    if (auto* signedValue = dynamic_cast<const Exiv2::RationalValue*>(&value))
        return Fraction{signedValue->value_.at(at).first, signedValue->value_.at(at).second};
    if (IsInteger(datum.typeId()))
        return Fraction{datum.toLong(i), 1};
    return std::nullopt;
}

std::optional<double> NumberAt(const Exiv2::Exifdatum& datum, long i)
{
    if (auto rational = RationalAt(datum, i)) {
        if (rational->second == 0)
            return std::nullopt;
        return static_cast<double>(rational->first) / static_cast<double>(rational->second);
    }
    if ((datum.typeId() == Exiv2::tiffFloat || datum.typeId() == Exiv2::tiffDouble) &&
        i < datum.count()) {
        double number = datum.toFloat(i);
        if (std::isfinite(number))
            return number;
    }
    return std::nullopt;
}

std::optional<SInt32> IntegerOf(const Exiv2::Exifdatum& datum)
{
    if (!IsInteger(datum.typeId()))
        return std::nullopt;
    long number = datum.toLong(0);
    if (number < std::numeric_limits<SInt32>::min() || number > std::numeric_limits<SInt32>::max())
        return std::nullopt;
    return static_cast<SInt32>(number);
}

std::string TextOf(const Exiv2::Exifdatum& datum)
{
    std::vector<Exiv2::byte> raw(datum.size());
    if (!raw.empty())
        datum.copy(raw.data(), Exiv2::littleEndian);
    std::string text(reinterpret_cast<const char*>(raw.data()), raw.size());
    return text.substr(0, text.find('\0'));
}

bool IsText(const Exiv2::Exifdatum& datum)
{
    return datum.typeId() == Exiv2::asciiString || datum.typeId() == Exiv2::undefined;
}

std::optional<IVandelTagControl::tagStrValueStep> ValueStepOf(const Exiv2::Exifdatum& datum)
{
    auto rational = RationalAt(datum, 0);
    if (!rational || rational->second == 0)
        return std::nullopt;
    long long numerator = rational->first;
    long long denominator = rational->second;
    long long divisor = std::gcd(numerator, denominator);
    if (divisor != 0) {
        numerator /= divisor;
        denominator /= divisor;
    }
    if (denominator < 0) {
        numerator = -numerator;
        denominator = -denominator;
    }
    constexpr long long kMax = std::numeric_limits<SInt16>::max();
    if (std::llabs(numerator) <= kMax && denominator <= kMax)
        return IVandelTagControl::tagStrValueStep{static_cast<SInt16>(numerator), 1,
                                                  static_cast<SInt16>(denominator)};
    // Too fine a fraction for the record: deliver hundredths of a stop.
    double hundredths = std::round(100.0 * static_cast<double>(numerator) /
                                   static_cast<double>(denominator));
    if (!(std::fabs(hundredths) <= static_cast<double>(kMax)))
        return std::nullopt;
    return IVandelTagControl::tagStrValueStep{static_cast<SInt16>(hundredths), 1, 100};
}

std::optional<std::string> CommentOf(const Exiv2::Exifdatum& datum)
{
    std::string text;
    if (auto* comment = dynamic_cast<const Exiv2::CommentValue*>(&datum.value())) {
        text = comment->comment();
    } else {
        // Not decoded as a comment: the first 8 bytes are still the character code.
        constexpr size_t kCharacterCodeLength = 8;
        std::vector<Exiv2::byte> raw(datum.size());
        if (raw.size() < kCharacterCodeLength)
            return std::nullopt;
        datum.copy(raw.data(), Exiv2::littleEndian);
        text.assign(reinterpret_cast<const char*>(raw.data()) + kCharacterCodeLength,
                    raw.size() - kCharacterCodeLength);
    }
    text = text.substr(0, text.find('\0'));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

template <size_t N>
std::optional<SInt32> ReferenceCode(const Exiv2::Exifdatum& datum, const Reference (&table)[N])
{
    std::string letter = TextOf(datum);
    for (const Reference& reference : table)
        if (letter == reference.letter)
            return reference.code;
    return std::nullopt;
}

void AddInt32(TagTable& tags, UInt32 item, std::optional<SInt32> number)
{
    if (number)
        tags.AddBytes(item, kQelValueInt32, HostBytes(*number));
}

void AddConverted(TagTable& tags, const ExifTag& entry, const Exiv2::Exifdatum& datum)
{
    switch (entry.conversion) {
    case Conversion::kText:
        if (IsText(datum))
            tags.AddText(entry.item, TextOf(datum), static_cast<UInt32>(datum.count()));
        break;
    case Conversion::kInt32:
        AddInt32(tags, entry.item, IntegerOf(datum));
        break;
    case Conversion::kDouble:
        if (auto number = NumberAt(datum, 0))
            tags.AddBytes(entry.item, kQelValueDouble, HostBytes(*number));
        break;
    case Conversion::kTriple: {
        std::vector<double> numbers(3, 0.0);
        for (long i = 0; i < 3 && i < datum.count(); ++i) {
            auto number = NumberAt(datum, i);
            if (!number)
                return;
            numbers[static_cast<size_t>(i)] = *number;
        }
        tags.AddBytes(entry.item, kQelValueDouble, HostBytes(numbers));
        break;
    }
    case Conversion::kValueStep:
        if (auto step = ValueStepOf(datum))
            tags.AddBytes(entry.item, kQelValueStep, HostBytes(*step));
        break;
    case Conversion::kComment:
        if (auto comment = CommentOf(datum))
            tags.AddText(entry.item, *comment);
        break;
    case Conversion::kLatitudeRef:
        AddInt32(tags, entry.item, ReferenceCode(datum, kLatitudeRefs));
        break;
    case Conversion::kLongitudeRef:
        AddInt32(tags, entry.item, ReferenceCode(datum, kLongitudeRefs));
        break;
    }
}

// ISO sensitivity as a plain ISO number (mode 0).
void AddISOSensitivity(TagTable& tags, const ExifIndex& exif)
{
    const Exiv2::Exifdatum* datum = FindDatum(exif, kISOKey);
    if (!datum)
        return;
    auto iso = IntegerOf(*datum);
    if (!iso || *iso < 1 || *iso > std::numeric_limits<UInt16>::max())
        return;
    tags.AddBytes(0x80002, kQelValueISO,
                  HostBytes(ISORecord{kISOModeNumber, static_cast<UInt16>(*iso)}));
}

std::optional<WhiteBalanceSetting> WhiteBalanceOf(const ExifIndex& exif)
{
    const Exiv2::Exifdatum* balance = FindDatum(exif, kWhiteBalanceKey);
    if (balance && IntegerOf(*balance) == kExifWhiteBalanceAuto)
        return kWBAuto;
    // Manual, or a file from before the WhiteBalance tag: the light source
    // names the setting.
    const Exiv2::Exifdatum* light = FindDatum(exif, kLightSourceKey);
    if (!light)
        return std::nullopt;
    auto source = IntegerOf(*light);
    for (const LightSource& entry : kLightSources)
        if (source == entry.exif)
            return entry.setting;
    return std::nullopt;
}

void AddWhiteBalance(TagTable& tags, const ExifIndex& exif)
{
    if (auto setting = WhiteBalanceOf(exif))
        tags.AddBytes(0x80005, kQelValueWhiteBalance, HostBytes(WhiteBalanceRecord{*setting, 0}));
}

void AddImageSize(TagTable& tags, const Exiv2::Image& image)
{
    if (image.pixelWidth() > 0)
        tags.AddBytes(0x10000, kQelValueInt32, HostBytes(static_cast<SInt32>(image.pixelWidth())));
    if (image.pixelHeight() > 0)
        tags.AddBytes(0x10001, kQelValueInt32, HostBytes(static_cast<SInt32>(image.pixelHeight())));
}

// exiv2 begins some messages with the file's path; the host names the file
// itself.
std::string WithoutPath(std::string message, const std::string& path)
{
    const std::string prefix = path + ": ";
    if (message.compare(0, prefix.size(), prefix) == 0)
        message.erase(0, prefix.size());
    return message;
}

void PrepareExiv2()
{
    static const bool prepared = [] {
        // Warnings about odd files would interleave with the host's output;
        // what matters reaches the host as an exception.
        Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
        Exiv2::enableBMFF(true);
        return true;
    }();
    (void)prepared;
}

}  // namespace

std::unique_ptr<ExivTagSource> ExivTagSource::FromFile(const std::string& path)
{
    RequireNonEmptyRegularFile(path);
    PrepareExiv2();
    auto source = std::make_unique<ExivTagSource>();
    try {
        auto image = Exiv2::ImageFactory::open(path);
        if (!image.get())
            throw TagSourceError("not a readable image");
        image->readMetadata();
        const ExifIndex exif(image->exifData());
        for (const ExifTag& entry : kExifTags)
            if (const Exiv2::Exifdatum* datum = FindDatum(exif, entry.key))
                if (!source->Find(entry.item))
                    AddConverted(*source, entry, *datum);
        AddISOSensitivity(*source, exif);
        AddWhiteBalance(*source, exif);
        // Only fills in what PixelX/YDimension left open.
        AddImageSize(*source, *image);
    } catch (const Exiv2::AnyError& error) {
        throw TagSourceError("not a readable image: " + WithoutPath(error.what(), path));
    } catch (const TagSourceError&) {
        throw;
    } catch (const std::exception& error) {
        // exiv2 reports some damaged files through the standard exceptions.
        throw TagSourceError(std::string("not a readable image: damaged (") + error.what() + ")");
    }
    return source;
}

std::string ExivTagSource::FileKindUnknownReason() const
{
    return "the model family is known only from maker notes, which are not read";
}

}  // namespace qel
