// SPDX-License-Identifier: MIT
// Exif, TIFF and GPS tags of an image, as the library's items read them.
//
//  Item     Type          Size          From the image
//  0x10F    2 text        Exif count    Exif.Image.Make, trailing blanks removed
//  0x110    2 text        Exif count    Exif.Image.Model, trailing blanks removed
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
//                                       blanks (the camera's padding) removed; a
//                                       comment in the Latin script spelt in ASCII
//  0x9290   2 text        Exif count    Exif.Photo.SubSecTimeOriginal, else SubSecTime
//  0x10000  3 int32       4             Exif.Photo.PixelXDimension above 0, else the image's width
//  0x10001  3 int32       4             Exif.Photo.PixelYDimension above 0, else the image's height
//  0x10005  4 double      8             Exif.Image.Orientation
//  0x30001  3 int32       4             GPSLatitudeRef: "N" 0, "S" 1
//  0x30002  4 doubles     24            GPSLatitude: whole degrees, whole minutes,
//                                       seconds rounded to hundredths (carried)
//  0x30003  3 int32       4             GPSLongitudeRef: "E" 2, "W" 3
//  0x30004  4 doubles     24            GPSLongitude, as the latitude
//  0x30005  3 int32       4             GPSAltitudeRef: 0 above, 1 below sea level
//  0x30006  4 double      8             GPSAltitude, metres, negative below sea level
//  0x30007  4 doubles     24            GPSTimeStamp: whole hours, whole minutes,
//                                       seconds rounded to hundredths (carried)
//  0x30010  2 text        Exif count    GPSImgDirectionRef: "T" true, "M" magnetic north
//  0x30011  4 double      8             GPSImgDirection, degrees
//  0x80002  260 ISO       4             mode 0 (a plain ISO number) and
//                                       Exif.Photo.ISOSpeedRatings (1 to 65534), else
//                                       the Exif 2.3 sensitivity SensitivityType names
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
#include <unicode/translit.h>
#include <unicode/uscript.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
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
    kText,           // bytes up to the first zero, less trailing blanks, sized by the Exif count
    kInt32,          // one integer
    kDouble,         // one number
    kSexagesimal,    // degrees/minutes/seconds or h/m/s, see kSexagesimalRanges
    kAltitude,       // one number, negative when GPSAltitudeRef says below sea level
    kValueStep,      // a signed rational as whole steps of a fraction
    kComment,        // user comment without its character-code prefix
    kLatitudeRef,    // "N"/"S" as the numbers 0/1
    kLongitudeRef,   // "E"/"W" as the numbers 2/3
};

// What a value must be to be delivered at all.
enum class Check {
    kAny,
    kMeasure,   // a rational, as Exif records measures, and not negative
    kPositive,  // an integer above 0: 0 means the writer did not know it
};

struct ExifTag {
    const char* key;
    UInt32 item;
    Conversion conversion;
    Check check;
};

// When two Exif tags feed one item, the first one present wins.
constexpr ExifTag kExifTags[] = {
    {"Exif.Image.Make", 0x10F, Conversion::kText, Check::kAny},
    {"Exif.Image.Model", 0x110, Conversion::kText, Check::kAny},
    {"Exif.Image.DateTime", 0x132, Conversion::kText, Check::kAny},
    {"Exif.Photo.ExposureTime", 0x829A, Conversion::kDouble, Check::kMeasure},
    {"Exif.Photo.FNumber", 0x829D, Conversion::kDouble, Check::kMeasure},
    {"Exif.Photo.ExposureProgram", 0x8822, Conversion::kInt32, Check::kAny},
    {"Exif.Photo.DateTimeOriginal", 0x9003, Conversion::kText, Check::kAny},
    {"Exif.Photo.ExposureBiasValue", 0x9204, Conversion::kValueStep, Check::kAny},
    {"Exif.Photo.MeteringMode", 0x9207, Conversion::kInt32, Check::kAny},
    {"Exif.Photo.FocalLength", 0x920A, Conversion::kDouble, Check::kMeasure},
    {"Exif.Photo.UserComment", 0x9286, Conversion::kComment, Check::kAny},
    {"Exif.Photo.SubSecTimeOriginal", 0x9290, Conversion::kText, Check::kAny},
    {"Exif.Photo.SubSecTime", 0x9290, Conversion::kText, Check::kAny},
    {"Exif.Photo.PixelXDimension", 0x10000, Conversion::kInt32, Check::kPositive},
    {"Exif.Photo.PixelYDimension", 0x10001, Conversion::kInt32, Check::kPositive},
    {"Exif.Image.Orientation", 0x10005, Conversion::kDouble, Check::kAny},
    {"Exif.GPSInfo.GPSLatitudeRef", 0x30001, Conversion::kLatitudeRef, Check::kAny},
    {"Exif.GPSInfo.GPSLatitude", 0x30002, Conversion::kSexagesimal, Check::kMeasure},
    {"Exif.GPSInfo.GPSLongitudeRef", 0x30003, Conversion::kLongitudeRef, Check::kAny},
    {"Exif.GPSInfo.GPSLongitude", 0x30004, Conversion::kSexagesimal, Check::kMeasure},
    {"Exif.GPSInfo.GPSAltitudeRef", 0x30005, Conversion::kInt32, Check::kAny},
    {"Exif.GPSInfo.GPSAltitude", 0x30006, Conversion::kAltitude, Check::kMeasure},
    {"Exif.GPSInfo.GPSTimeStamp", 0x30007, Conversion::kSexagesimal, Check::kMeasure},
    {"Exif.GPSInfo.GPSImgDirectionRef", 0x30010, Conversion::kText, Check::kAny},
    {"Exif.GPSInfo.GPSImgDirection", 0x30011, Conversion::kDouble, Check::kMeasure},
};

// A position or time of day as the panel prints it: whole degrees (hours),
// whole minutes, seconds to hundredths. Every part is counted in hundredths
// of a second, so fractional degrees or minutes reach the seconds and
// 59.999 seconds carry into the minute instead of printing as 60.00.
struct SexagesimalRange {
    UInt32 item;
    long long limit;  // the largest first part (degrees, hours)
    bool wraps;       // a time of day: 24:00 is 00:00 of the next day
};
constexpr SexagesimalRange kSexagesimalRanges[] = {
    {0x30002, 90, false},
    {0x30004, 180, false},
    {0x30007, 24, true},
};
constexpr long long kHundredthsPerUnit[] = {360000, 6000, 100};  // of a degree, minute, second
constexpr long long kSixty = 60;

constexpr const char* kAltitudeRefKey = "Exif.GPSInfo.GPSAltitudeRef";
constexpr SInt32 kBelowSeaLevel = 1;

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
// ISOSpeedRatings holds 65535 when the sensitivity does not fit 16 bits.
constexpr long kISORatingTooHigh = 65535;

// Keys read besides those of kExifTags.
constexpr const char* kISOKey = "Exif.Photo.ISOSpeedRatings";
constexpr const char* kWhiteBalanceKey = "Exif.Photo.WhiteBalance";
constexpr const char* kLightSourceKey = "Exif.Photo.LightSource";
constexpr const char* kSensitivityTypeKey = "Exif.Photo.SensitivityType";
constexpr const char* kSOSKey = "Exif.Photo.StandardOutputSensitivity";
constexpr const char* kREIKey = "Exif.Photo.RecommendedExposureIndex";
constexpr const char* kISOSpeedKey = "Exif.Photo.ISOSpeed";

// Exif 2.3 SensitivityType: which sensitivity tags the camera wrote, the
// ISO speed before the exposure index before the output sensitivity.
struct SensitivityType {
    long type;
    const char* keys[3];
};
constexpr SensitivityType kSensitivityTypes[] = {
    {1, {kSOSKey}},
    {2, {kREIKey}},
    {3, {kISOSpeedKey}},
    {4, {kREIKey, kSOSKey}},
    {5, {kISOSpeedKey, kSOSKey}},
    {6, {kISOSpeedKey, kREIKey}},
    {7, {kISOSpeedKey, kREIKey, kSOSKey}},
};

// A datum's key as numbers: its IFD and its tag, which name it exactly as
// its key does, without building the key's text.
constexpr uint32_t KeyCode(uint32_t ifd, uint16_t tag)
{
    return ifd << 16 | tag;
}

// Every key the source reads, with its place in an ExifIndex: by the address
// of the source's own spelling, by text for any other, and by key code for
// the data; made once.
struct KeyPlaceTables {
    std::unordered_map<const char*, size_t> byAddress;
    std::unordered_map<std::string, size_t> byText;
    std::unordered_map<uint32_t, size_t> byCode;
};

const KeyPlaceTables& KeyPlaces()
{
    static const auto places = [] {
        KeyPlaceTables tables;
        auto add = [&](const char* key) {
            const Exiv2::ExifKey parsed(key);
            const auto place = tables.byText.emplace(parsed.key(), tables.byText.size()).first->second;
            tables.byAddress.emplace(key, place);
            tables.byCode.emplace(KeyCode(static_cast<uint32_t>(parsed.ifdId()), parsed.tag()), place);
        };
        for (const ExifTag& entry : kExifTags)
            add(entry.key);
        for (const char* key : {kISOKey, kWhiteBalanceKey, kLightSourceKey, kSensitivityTypeKey,
                                kSOSKey, kREIKey, kISOSpeedKey})
            add(key);
        return tables;
    }();
    return places;
}

// The first datum of each key the source reads, found in one pass over the
// image's Exif data instead of one search per key (each of which copies
// the key of every datum it passes).
class ExifIndex {
public:
    explicit ExifIndex(const Exiv2::ExifData& exif) : m_exif(exif), m_first(KeyPlaces().byText.size())
    {
        const auto& byCode = KeyPlaces().byCode;
        for (const Exiv2::Exifdatum& datum : exif) {
            auto place = byCode.find(KeyCode(static_cast<uint32_t>(datum.ifdId()), datum.tag()));
            if (place != byCode.end() && !m_first[place->second])
                m_first[place->second] = &datum;
        }
    }

    // As ExifData::findKey finds it: the first datum with the key, null when
    // there is none or it holds no value.
    const Exiv2::Exifdatum* Find(const char* key) const
    {
        const Exiv2::Exifdatum* datum = nullptr;
        if (auto place = PlaceOf(key)) {
            datum = m_first[*place];
        } else {
            auto it = m_exif.findKey(Exiv2::ExifKey(key));
            datum = it == m_exif.end() ? nullptr : &*it;
        }
        return datum && datum->count() > 0 ? datum : nullptr;
    }

private:
    static std::optional<size_t> PlaceOf(const char* key)
    {
        const KeyPlaceTables& places = KeyPlaces();
        if (auto place = places.byAddress.find(key); place != places.byAddress.end())
            return place->second;
        if (auto place = places.byText.find(key); place != places.byText.end())
            return place->second;
        return std::nullopt;
    }

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

bool IsRational(Exiv2::TypeId type)
{
    return type == Exiv2::unsignedRational || type == Exiv2::signedRational;
}

std::optional<double> CheckedNumberOf(const Exiv2::Exifdatum& datum, Check check)
{
    if (check == Check::kMeasure && !IsRational(datum.typeId()))
        return std::nullopt;
    auto number = NumberAt(datum, 0);
    if (number && check == Check::kMeasure && *number < 0)
        return std::nullopt;
    return number;
}

std::optional<SInt32> CheckedIntegerOf(const Exiv2::Exifdatum& datum, Check check)
{
    auto number = IntegerOf(datum);
    if (number && check == Check::kPositive && *number <= 0)
        return std::nullopt;
    return number;
}

// Whole degrees (hours), whole minutes and seconds in hundredths, carried;
// nullopt for a part that is negative, minutes or seconds of 60 or more,
// or a whole beyond the range's limit.
std::optional<std::vector<double>> SexagesimalOf(const Exiv2::Exifdatum& datum,
                                                 const SexagesimalRange& range)
{
    if (!IsRational(datum.typeId()))
        return std::nullopt;
    const long long whole = range.limit * kHundredthsPerUnit[0];
    long long hundredths = 0;
    double belowHundredths = 0;  // what the parts leave below a hundredth, summed
    for (long i = 0; i < 3 && i < datum.count(); ++i) {
        auto part = RationalAt(datum, i);
        if (!part || part->second == 0)
            return std::nullopt;
        auto [numerator, denominator] = *part;
        if (denominator < 0) {
            numerator = -numerator;
            denominator = -denominator;
        }
        const long long limit = i == 0 ? range.limit : kSixty;
        const bool limitIncluded = i == 0 && !range.wraps;
        if (numerator < 0 || numerator > limit * denominator ||
            (!limitIncluded && numerator == limit * denominator))
            return std::nullopt;
        // Exif numerators have 32 bits, so the product fits.
        const long long scaled = numerator * kHundredthsPerUnit[i];
        hundredths += scaled / denominator;
        belowHundredths += static_cast<double>(scaled % denominator) / static_cast<double>(denominator);
    }
    hundredths += std::llround(belowHundredths);
    if (hundredths > whole)
        return std::nullopt;
    if (range.wraps)
        hundredths %= whole;
    return std::vector<double>{static_cast<double>(hundredths / kHundredthsPerUnit[0]),
                               static_cast<double>(hundredths / kHundredthsPerUnit[1] % kSixty),
                               static_cast<double>(hundredths % kHundredthsPerUnit[1]) / 100.0};
}

const SexagesimalRange* SexagesimalRangeOf(UInt32 item)
{
    for (const SexagesimalRange& range : kSexagesimalRanges)
        if (range.item == item)
            return &range;
    return nullptr;
}

std::string WithoutTrailingBlanks(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
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

// Latin-ASCII, made once per thread (a transliterator is not to be shared
// between threads); null when ICU lacks it.
const icu::Transliterator* LatinToAscii()
{
    thread_local const std::unique_ptr<icu::Transliterator> transliterator =
        []() -> std::unique_ptr<icu::Transliterator> {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Transliterator> made(
            icu::Transliterator::createInstance("Latin-ASCII", UTRANS_FORWARD, status));
        return U_SUCCESS(status) ? std::move(made) : nullptr;
    }();
    return transliterator.get();
}

// The panel shows a comment in ASCII, each other character as '?': a comment
// in the Latin script is spelt without its accents ("Grüße" reads "Grusse");
// one in another script, or not in UTF-8, reaches the library as written.
std::string SpeltForThePanel(const std::string& comment)
{
    const bool ascii = std::all_of(comment.begin(), comment.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii || !IsUTF8(comment) ||
        comment.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max()))
        return comment;
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(comment);
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        UErrorCode status = U_ZERO_ERROR;
        const UScriptCode script = uscript_getScript(text.char32At(i), &status);
        if (U_FAILURE(status) ||
            (script != USCRIPT_LATIN && script != USCRIPT_COMMON && script != USCRIPT_INHERITED))
            return comment;
    }
    const icu::Transliterator* latinToAscii = LatinToAscii();
    if (!latinToAscii)
        return comment;
    latinToAscii->transliterate(text);
    std::string spelt;
    return text.toUTF8String(spelt);
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
    return SpeltForThePanel(WithoutTrailingBlanks(text.substr(0, text.find('\0'))));
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

void AddConverted(TagTable& tags, const ExifTag& entry, const Exiv2::Exifdatum& datum,
                  const ExifIndex& exif)
{
    switch (entry.conversion) {
    case Conversion::kText:
        if (IsText(datum)) {
            const std::string text = WithoutTrailingBlanks(TextOf(datum));
            const auto count = static_cast<UInt32>(datum.count());
            tags.AddText(entry.item, text, std::min(count, static_cast<UInt32>(text.size() + 1)));
        }
        break;
    case Conversion::kInt32:
        AddInt32(tags, entry.item, CheckedIntegerOf(datum, entry.check));
        break;
    case Conversion::kDouble:
        if (auto number = CheckedNumberOf(datum, entry.check))
            tags.AddBytes(entry.item, kQelValueDouble, HostBytes(*number));
        break;
    case Conversion::kSexagesimal:
        if (const SexagesimalRange* range = SexagesimalRangeOf(entry.item))
            if (auto parts = SexagesimalOf(datum, *range))
                tags.AddBytes(entry.item, kQelValueDouble, HostBytes(*parts));
        break;
    case Conversion::kAltitude:
        if (auto metres = CheckedNumberOf(datum, entry.check)) {
            const Exiv2::Exifdatum* reference = FindDatum(exif, kAltitudeRefKey);
            if (reference && IntegerOf(*reference) == kBelowSeaLevel && *metres > 0)
                *metres = -*metres;
            tags.AddBytes(entry.item, kQelValueDouble, HostBytes(*metres));
        }
        break;
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

// A sensitivity the ISO record can carry: 1 to 65535.
std::optional<UInt16> SensitivityOf(const ExifIndex& exif, const char* key)
{
    const Exiv2::Exifdatum* datum = FindDatum(exif, key);
    if (!datum || !IsInteger(datum->typeId()))
        return std::nullopt;
    const long number = datum->toLong(0);
    if (number < 1 || number > std::numeric_limits<UInt16>::max())
        return std::nullopt;
    return static_cast<UInt16>(number);
}

// The Exif 2.3 sensitivity that SensitivityType names.
std::optional<UInt16> Exif23SensitivityOf(const ExifIndex& exif)
{
    const Exiv2::Exifdatum* type = FindDatum(exif, kSensitivityTypeKey);
    if (!type)
        return std::nullopt;
    const auto code = IntegerOf(*type);
    for (const SensitivityType& entry : kSensitivityTypes) {
        if (code != entry.type)
            continue;
        for (const char* key : entry.keys)
            if (key)
                if (auto sensitivity = SensitivityOf(exif, key))
                    return sensitivity;
    }
    return std::nullopt;
}

// ISO sensitivity as a plain ISO number (mode 0).
void AddISOSensitivity(TagTable& tags, const ExifIndex& exif)
{
    std::optional<UInt16> iso = SensitivityOf(exif, kISOKey);
    if (!iso || *iso == kISORatingTooHigh)
        iso = Exif23SensitivityOf(exif);
    if (iso)
        tags.AddBytes(0x80002, kQelValueISO, HostBytes(ISORecord{kISOModeNumber, *iso}));
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

// The tags of the image `open` makes; `path` is what exiv2's messages may
// begin with.
template <class Open>
std::unique_ptr<ExivTagSource> ReadImage(Open open, const std::string& path)
{
    PrepareExiv2();
    auto source = std::make_unique<ExivTagSource>();
    try {
        auto image = open();
        if (!image.get())
            throw TagSourceError("not a readable image");
        image->readMetadata();
        const ExifIndex exif(image->exifData());
        for (const ExifTag& entry : kExifTags)
            if (const Exiv2::Exifdatum* datum = FindDatum(exif, entry.key))
                if (!source->Find(entry.item))
                    AddConverted(*source, entry, *datum, exif);
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

}  // namespace

std::unique_ptr<ExivTagSource> ExivTagSource::FromFile(const std::string& path)
{
    RequireNonEmptyRegularFile(path);
    // Mapped, exiv2 reads the headers straight from memory rather than
    // through stdio; a file it cannot map or recognise there is opened by
    // name, so its message is the one exiv2 gives for the file.
    Exiv2::FileIo file(path);
    return ReadImage(
        [&] {
            try {
                if (file.open() == 0)
                    return Exiv2::ImageFactory::open(file.mmap(false), file.size());
            } catch (const Exiv2::AnyError&) {
            }
            return Exiv2::ImageFactory::open(path);
        },
        path);
}

bool ExivTagSource::IsImage(const std::string& path)
{
    try {
        return Exiv2::ImageFactory::getType(path) != Exiv2::ImageType::none;
    } catch (const std::exception&) {
        return false;
    }
}

std::unique_ptr<ExivTagSource> ExivTagSource::FromMemory(const std::string& bytes)
{
    if (bytes.empty())
        throw TagSourceError("empty file");
    if (bytes.size() > static_cast<size_t>(std::numeric_limits<long>::max()))
        throw TagSourceError("file too large");
    return ReadImage(
        [&] {
            return Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(bytes.data()),
                                             static_cast<long>(bytes.size()));
        },
        std::string());
}

std::string ExivTagSource::FileKindUnknownReason() const
{
    return "the model family is known only from maker notes, which are not read";
}

}  // namespace qel
