// SPDX-License-Identifier: MIT
// Text encodings: the Unicode forms (UnicodeForms) and ASCII are converted
// directly, every other encoding through an ICU converter cached per thread.
// Also the encoding queries of the CoreFoundation API.
#include "CFDataInternal.h"
#include "CFStringEncodingInternal.h"
#include "CFStringInternal.h"
#include "UnicodeForms.h"

#include <QelPlatform/TextEncoding.h>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <array>
#include <cstdint>
#include <memory>
#include <utility>

namespace {

// 8-bit and multibyte encodings and the ICU converter behind each.
struct ConvertedEncoding {
    CFStringEncoding encoding;
    const char* converterName;
};

constexpr ConvertedEncoding kConvertedEncodings[] = {
    {kCFStringEncodingASCII, "US-ASCII"},
    {kCFStringEncodingMacRoman, "macintosh"},
    {kCFStringEncodingISOLatin1, "ISO-8859-1"},
    {kCFStringEncodingWindowsLatin1, "windows-1252"},
    {kCFStringEncodingISOLatin2, "ISO-8859-2"},
    {kCFStringEncodingWindowsLatin2, "windows-1250"},
    {kCFStringEncodingShiftJIS, "Shift_JIS"},
    {kCFStringEncodingDOSJapanese, "windows-932"},
    {kCFStringEncodingEUC_JP, "EUC-JP"},
    {kCFStringEncodingISO_2022_JP, "ISO-2022-JP"},
};
constexpr size_t kConvertedCount = sizeof(kConvertedEncodings) / sizeof(kConvertedEncodings[0]);

int ConvertedIndex(CFStringEncoding encoding)
{
    for (size_t i = 0; i < kConvertedCount; ++i)
        if (kConvertedEncodings[i].encoding == encoding)
            return static_cast<int>(i);
    return -1;
}

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};

// Each thread opens a converter on first use and keeps it, so a conversion
// costs no setup; a converter that cannot be opened is not retried.
struct ConverterCache {
    std::array<std::unique_ptr<UConverter, ConverterCloser>, kConvertedCount> converters;
    std::array<bool, kConvertedCount> failed{};
};

UConverter* ConverterFor(int index)
{
    thread_local ConverterCache cache;
    auto& slot = cache.converters[static_cast<size_t>(index)];
    if (!slot && !cache.failed[static_cast<size_t>(index)]) {
        UErrorCode status = U_ZERO_ERROR;
        slot.reset(ucnv_open(kConvertedEncodings[index].converterName, &status));
        if (U_FAILURE(status))
            slot.reset();
        cache.failed[static_cast<size_t>(index)] = !slot;
    }
    if (slot)
        ucnv_reset(slot.get());
    return slot.get();
}

// Writes the caller's loss byte in place of each character the target
// encoding cannot represent.
void WriteLossByte(const void* context, UConverterFromUnicodeArgs* args, const UChar*, int32_t,
                   UChar32, UConverterCallbackReason reason, UErrorCode* status)
{
    if (reason > UCNV_IRREGULAR)
        return;
    *status = U_ZERO_ERROR;
    ucnv_cbFromUWriteBytes(args, static_cast<const char*>(context), 1, 0, status);
}

bool EncodeWithConverter(UConverter* converter, const std::u16string& units, UInt8 lossByte,
                         std::string& out)
{
    UErrorCode status = U_ZERO_ERROR;
    const char lossChar = static_cast<char>(lossByte);
    if (lossByte != 0)
        ucnv_setFromUCallBack(converter, WriteLossByte, &lossChar, nullptr, nullptr, &status);
    else
        ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                              &status);
    const int32_t length = static_cast<int32_t>(units.size());
    out.resize(static_cast<size_t>(UCNV_GET_MAX_BYTES_FOR_STRING(length, ucnv_getMaxCharSize(converter))));
    const int32_t written = ucnv_fromUChars(converter, &out[0], static_cast<int32_t>(out.size()),
                                            units.data(), length, &status);
    if (U_FAILURE(status))
        return false;
    out.resize(static_cast<size_t>(written));
    return true;
}

bool DecodeWithConverter(UConverter* converter, const UInt8* bytes, size_t length,
                         std::u16string& out)
{
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    out.resize(2 * length + 2);
    const int32_t written = ucnv_toUChars(converter, &out[0], static_cast<int32_t>(out.size()),
                                          reinterpret_cast<const char*>(bytes),
                                          static_cast<int32_t>(length), &status);
    if (U_FAILURE(status))
        return false;
    out.resize(static_cast<size_t>(written));
    return true;
}

// ASCII, the encoding the library appends every number it prints in, is
// converted here: setting up the converter would cost more than the
// conversion. The results are ICU's US-ASCII: a byte above 0x7F does not
// decode; a character above U+007F, or an unpaired surrogate, becomes one
// loss byte (a surrogate pair is one character). Without a loss byte a text
// that is not all ASCII is left to ICU, which drops invisible characters
// such as the soft hyphen and fails on the others.
bool DecodeASCII(const UInt8* bytes, size_t length, std::u16string& out)
{
    for (size_t i = 0; i < length; ++i)
        if (bytes[i] > 0x7F)
            return false;
    out.assign(bytes, bytes + length);
    return true;
}

bool IsAllASCII(const std::u16string& units)
{
    for (char16_t unit : units)
        if (unit > 0x7F)
            return false;
    return true;
}

// Only with a loss byte or for an all-ASCII text.
bool EncodeASCII(const std::u16string& units, UInt8 lossByte, std::string& out)
{
    out.clear();
    out.reserve(units.size());
    for (size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        if (unit <= 0x7F) {
            out += static_cast<char>(unit);
            continue;
        }
        const bool pairStart = unit >= 0xD800 && unit <= 0xDBFF && i + 1 < units.size() &&
                               units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF;
        if (pairStart)
            ++i;
        out += static_cast<char>(lossByte);
    }
    return true;
}

}  // namespace

namespace qelcf {

bool DecodeBytes(const UInt8* bytes, size_t length, CFStringEncoding encoding, bool isExternal,
                 std::u16string& out)
{
    if (length > static_cast<size_t>(INT32_MAX / 2))
        return false;
    if (IsUnicodeForm(encoding))
        return DecodeUnicode(bytes, length, encoding, isExternal, out);
    if (encoding == kCFStringEncodingASCII)
        return DecodeASCII(bytes, length, out);
    const int index = ConvertedIndex(encoding);
    if (index < 0)
        return false;
    UConverter* converter = ConverterFor(index);
    return converter != nullptr && DecodeWithConverter(converter, bytes, length, out);
}

bool EncodeUnits(const std::u16string& units, CFStringEncoding encoding, UInt8 lossByte,
                 bool isExternal, std::string& out)
{
    if (units.size() > static_cast<size_t>(INT32_MAX / 8))
        return false;
    if (IsUnicodeForm(encoding))
        return EncodeUnicode(units, encoding, lossByte, isExternal, out);
    if (encoding == kCFStringEncodingASCII && (lossByte != 0 || IsAllASCII(units)))
        return EncodeASCII(units, lossByte, out);
    const int index = ConvertedIndex(encoding);
    if (index < 0)
        return false;
    UConverter* converter = ConverterFor(index);
    return converter != nullptr && EncodeWithConverter(converter, units, lossByte, out);
}

bool IsKnownEncoding(CFStringEncoding encoding)
{
    if (IsUnicodeForm(encoding))
        return true;
    const int index = ConvertedIndex(encoding);
    return index >= 0 && ConverterFor(index) != nullptr;
}

}  // namespace qelcf

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding)
{
    // The Mac's own bounds: UTF-8 three bytes per unit, UTF-32 four, UTF-16
    // two, non-lossy ASCII six ("\uXXXX"), and one byte per unit for every
    // other encoding -- multibyte CJK encodings included, exactly as there.
    if (encoding == kCFStringEncodingUTF8)
        return length * 3;
    if (encoding == kCFStringEncodingUTF32 || encoding == kCFStringEncodingUTF32BE ||
        encoding == kCFStringEncodingUTF32LE)
        return length * 4;
    switch (encoding & 0xFFF) {
    case kCFStringEncodingUnicode:
        return length * 2;
    case kCFStringEncodingNonLossyASCII:
        return length * 6;
    default:
        return length;
    }
}

CFDataRef CFStringCreateExternalRepresentation(CFAllocatorRef, CFStringRef theString,
                                               CFStringEncoding encoding, UInt8 lossByte)
{
    if (theString == nullptr)
        return nullptr;
    std::string bytes;
    if (!qelcf::EncodeUnits(qelcf::UnitsOf(theString), encoding, lossByte, true, bytes))
        return nullptr;
    return qelcf::CreateDataTakingBytes(std::move(bytes));
}

CFStringEncoding CFStringGetSystemEncoding(void)
{
    return kCFStringEncodingUTF8;
}

Boolean CFStringIsEncodingAvailable(CFStringEncoding encoding)
{
    return qelcf::IsKnownEncoding(encoding);
}

TextEncoding GetApplicationTextEncoding(void)
{
    return kCFStringEncodingUTF8;
}
