// SPDX-License-Identifier: MIT
// The Unicode encodings, converted without ICU: UTF-8, UTF-16 and UTF-32
// in either byte order, and non-lossy ASCII.
#include "UnicodeForms.h"

#include "CFStringInternal.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using qelcf::AppendUTF8;


enum class ByteOrder { Big, Little };
constexpr ByteOrder kHostOrder =
    __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ByteOrder::Little : ByteOrder::Big;

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void PutUnit(std::string& out, uint32_t value, int bytes, ByteOrder order)
{
    for (int i = 0; i < bytes; ++i) {
        const int shift = order == ByteOrder::Big ? 8 * (bytes - 1 - i) : 8 * i;
        out += static_cast<char>((value >> shift) & 0xFF);
    }
}

uint32_t GetUnit(const UInt8* bytes, int size, ByteOrder order)
{
    uint32_t value = 0;
    for (int i = 0; i < size; ++i) {
        const int shift = order == ByteOrder::Big ? 8 * (size - 1 - i) : 8 * i;
        value |= static_cast<uint32_t>(bytes[i]) << shift;
    }
    return value;
}

// Reads a leading byte-order mark of a `size`-byte unit; answers whether
// one was there.
bool ReadByteOrderMark(const UInt8* bytes, size_t length, int size, ByteOrder& order)
{
    if (length < static_cast<size_t>(size))
        return false;
    if (GetUnit(bytes, size, ByteOrder::Big) == 0xFEFF) {
        order = ByteOrder::Big;
        return true;
    }
    if (GetUnit(bytes, size, ByteOrder::Little) == 0xFEFF) {
        order = ByteOrder::Little;
        return true;
    }
    return false;
}

void PutScalarUTF16(std::u16string& out, uint32_t scalar)
{
    if (scalar >= 0x10000) {
        out += static_cast<char16_t>(0xD800 + ((scalar - 0x10000) >> 10));
        out += static_cast<char16_t>(0xDC00 + ((scalar - 0x10000) & 0x3FF));
    } else {
        out += static_cast<char16_t>(scalar);
    }
}

bool DecodeUTF16(const UInt8* bytes, size_t length, ByteOrder order, std::u16string& out)
{
    if (length % 2 != 0)
        return false;
    out.clear();
    out.reserve(length / 2);
    for (size_t i = 0; i < length; i += 2)
        out += static_cast<char16_t>(GetUnit(bytes + i, 2, order));
    return true;
}

bool DecodeUTF32(const UInt8* bytes, size_t length, ByteOrder order, std::u16string& out)
{
    if (length % 4 != 0)
        return false;
    out.clear();
    for (size_t i = 0; i < length; i += 4) {
        const uint32_t scalar = GetUnit(bytes + i, 4, order);
        if (scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF))
            return false;
        PutScalarUTF16(out, scalar);
    }
    return true;
}

// Calls `emit(scalar)` for each code point, or `lost()` for an unpaired
// surrogate; stops at the first false.
template <class Emit, class Lost>
bool ForEachScalar(const std::u16string& units, Emit emit, Lost lost)
{
    for (size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        if (IsHighSurrogate(unit) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
            emit(0x10000 + ((static_cast<uint32_t>(unit) - 0xD800) << 10) + (units[i + 1] - 0xDC00));
            ++i;
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            if (!lost())
                return false;
        } else {
            emit(unit);
        }
    }
    return true;
}

// Strict UTF-8: overlong forms, surrogates and values past U+10FFFF are
// malformed. When lenient, each malformed sequence becomes U+FFFD.
bool DecodeUTF8(const UInt8* bytes, size_t length, bool lenient, std::u16string& out)
{
    out.clear();
    out.reserve(length);
    size_t i = 0;
    while (i < length) {
        const UInt8 lead = bytes[i];
        if (lead < 0x80) {
            out += static_cast<char16_t>(lead);
            ++i;
            continue;
        }
        int extra = 0;
        uint32_t scalar = 0;
        uint32_t minimum = 0;
        if (lead >= 0xC2 && lead <= 0xDF) {
            extra = 1, scalar = lead & 0x1F, minimum = 0x80;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            extra = 2, scalar = lead & 0x0F, minimum = 0x800;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            extra = 3, scalar = lead & 0x07, minimum = 0x10000;
        }
        bool valid = extra > 0;
        int consumed = 1;
        if (valid) {
            for (int k = 1; k <= extra; ++k) {
                if (i + static_cast<size_t>(k) >= length || (bytes[i + k] & 0xC0) != 0x80) {
                    valid = false;
                    break;
                }
                scalar = (scalar << 6) | (bytes[i + k] & 0x3F);
                ++consumed;
            }
        }
        if (valid && (scalar < minimum || scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF)))
            valid = false;
        if (!valid) {
            if (!lenient)
                return false;
            out += u'\uFFFD';
            i += static_cast<size_t>(consumed);
            continue;
        }
        PutScalarUTF16(out, scalar);
        i += static_cast<size_t>(consumed);
    }
    return true;
}

// The UTF-8 bytes of one code point written at `at`; answers their count.
size_t PutUTF8(char* at, uint32_t scalar)
{
    if (scalar < 0x80) {
        at[0] = static_cast<char>(scalar);
        return 1;
    }
    if (scalar < 0x800) {
        at[0] = static_cast<char>(0xC0 | (scalar >> 6));
        at[1] = static_cast<char>(0x80 | (scalar & 0x3F));
        return 2;
    }
    if (scalar < 0x10000) {
        at[0] = static_cast<char>(0xE0 | (scalar >> 12));
        at[1] = static_cast<char>(0x80 | ((scalar >> 6) & 0x3F));
        at[2] = static_cast<char>(0x80 | (scalar & 0x3F));
        return 3;
    }
    at[0] = static_cast<char>(0xF0 | (scalar >> 18));
    at[1] = static_cast<char>(0x80 | ((scalar >> 12) & 0x3F));
    at[2] = static_cast<char>(0x80 | ((scalar >> 6) & 0x3F));
    at[3] = static_cast<char>(0x80 | (scalar & 0x3F));
    return 4;
}

bool EncodeUTF8(const std::u16string& units, UInt8 lossByte, std::string& out)
{
    // Written straight into room for the longest outcome, three bytes a unit
    // (a surrogate pair takes four for its two units), then cut to size.
    out.resize(3 * units.size());
    char* next = &out[0];
    // Most texts are ASCII throughout: those are copied unit by unit.
    size_t ascii = 0;
    while (ascii < units.size() && units[ascii] < 0x80) {
        next[ascii] = static_cast<char>(units[ascii]);
        ++ascii;
    }
    if (ascii == units.size()) {
        out.resize(ascii);
        return true;
    }
    const bool complete = ForEachScalar(
        units, [&](uint32_t scalar) { next += PutUTF8(next, scalar); },
        [&] {
            *next++ = static_cast<char>(lossByte);
            return lossByte != 0;
        });
    out.resize(static_cast<size_t>(next - out.data()));
    return complete;
}

// Non-lossy ASCII: ASCII as is, a backslash doubled, everything else as
// "\uXXXX".
bool EncodeNonLossyASCII(const std::u16string& units, std::string& out)
{
    out.clear();
    for (char16_t unit : units) {
        if (unit == u'\\') {
            out += "\\\\";
        } else if (unit < 0x80) {
            out += static_cast<char>(unit);
        } else {
            char escape[8];
            snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
            out += escape;
        }
    }
    return true;
}

bool DecodeNonLossyASCII(const UInt8* bytes, size_t length, std::u16string& out)
{
    out.clear();
    for (size_t i = 0; i < length; ++i) {
        if (bytes[i] >= 0x80)
            return false;
        if (bytes[i] != '\\' || i + 1 >= length) {
            out += static_cast<char16_t>(bytes[i]);
            continue;
        }
        if (bytes[i + 1] == '\\') {
            out += u'\\';
            ++i;
            continue;
        }
        if (bytes[i + 1] == 'u' && i + 5 < length) {
            char hex[5] = {static_cast<char>(bytes[i + 2]), static_cast<char>(bytes[i + 3]),
                           static_cast<char>(bytes[i + 4]), static_cast<char>(bytes[i + 5]), 0};
            char* end = nullptr;
            const unsigned long value = std::strtoul(hex, &end, 16);
            if (end == hex + 4) {
                out += static_cast<char16_t>(value);
                i += 5;
                continue;
            }
        }
        out += u'\\';
    }
    return true;
}

struct UnicodeForm {
    CFStringEncoding encoding;
    int unitSize;       // 2 or 4 bytes
    bool hasOrder;      // BE/LE forms state their byte order
    ByteOrder order;
};

constexpr UnicodeForm kUnicodeForms[] = {
    {kCFStringEncodingUTF16, 2, false, kHostOrder},
    {kCFStringEncodingUTF16BE, 2, true, ByteOrder::Big},
    {kCFStringEncodingUTF16LE, 2, true, ByteOrder::Little},
    {kCFStringEncodingUTF32, 4, false, kHostOrder},
    {kCFStringEncodingUTF32BE, 4, true, ByteOrder::Big},
    {kCFStringEncodingUTF32LE, 4, true, ByteOrder::Little},
};

const UnicodeForm* UnicodeFormOf(CFStringEncoding encoding)
{
    for (const UnicodeForm& form : kUnicodeForms)
        if (form.encoding == encoding)
            return &form;
    return nullptr;
}

bool DecodeForm(const UnicodeForm& form, const UInt8* bytes, size_t length, bool isExternal,
                       std::u16string& out)
{
    ByteOrder order = form.order;
    if (!form.hasOrder && isExternal) {
        // Text from a file states its byte order with a BOM; without one it
        // is big-endian, the network order.
        order = ByteOrder::Big;
        if (ReadByteOrderMark(bytes, length, form.unitSize, order)) {
            bytes += form.unitSize;
            length -= static_cast<size_t>(form.unitSize);
        }
    }
    return form.unitSize == 2 ? DecodeUTF16(bytes, length, order, out)
                              : DecodeUTF32(bytes, length, order, out);
}

bool EncodeForm(const UnicodeForm& form, const std::u16string& units, UInt8 lossByte,
                       bool isExternal, std::string& out)
{
    out.clear();
    out.reserve((units.size() + 1) * static_cast<size_t>(form.unitSize));
    // The BOM of the unspecified forms is written in host order, as the Mac does.
    if (!form.hasOrder && isExternal)
        PutUnit(out, 0xFEFF, form.unitSize, form.order);
    if (form.unitSize == 2) {
        for (char16_t unit : units)
            PutUnit(out, unit, 2, form.order);
        return true;
    }
    return ForEachScalar(
        units, [&](uint32_t scalar) { PutUnit(out, scalar, 4, form.order); },
        [&] {
            PutUnit(out, lossByte, 4, form.order);
            return lossByte != 0;
        });
}

}  // namespace

namespace qelcf {

void AppendUTF8(std::string& out, uint32_t scalar)
{
    char bytes[4];
    out.append(bytes, PutUTF8(bytes, scalar));
}

std::u16string DecodeUTF8Lenient(const char* bytes, size_t length)
{
    std::u16string units;
    DecodeUTF8(reinterpret_cast<const UInt8*>(bytes), length, true, units);
    return units;
}

std::string EncodeUTF8(const std::u16string& units)
{
    std::string out;
    out.reserve(units.size());
    ForEachScalar(
        units, [&](uint32_t scalar) { AppendUTF8(out, scalar); },
        [&] {
            AppendUTF8(out, 0xFFFD);
            return true;
        });
    return out;
}

bool IsUnicodeForm(CFStringEncoding encoding)
{
    return encoding == kCFStringEncodingUTF8 || encoding == kCFStringEncodingNonLossyASCII ||
           UnicodeFormOf(encoding) != nullptr;
}

bool DecodeUnicode(const UInt8* bytes, size_t length, CFStringEncoding encoding, bool isExternal,
                   std::u16string& out)
{
    if (encoding == kCFStringEncodingUTF8) {
        // A UTF-8 file may open with a BOM; it is not part of the text.
        if (isExternal && length >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF) {
            bytes += 3;
            length -= 3;
        }
        return DecodeUTF8(bytes, length, false, out);
    }
    if (encoding == kCFStringEncodingNonLossyASCII)
        return DecodeNonLossyASCII(bytes, length, out);
    const UnicodeForm* form = UnicodeFormOf(encoding);
    return form != nullptr && DecodeForm(*form, bytes, length, isExternal, out);
}

bool EncodeUnicode(const std::u16string& units, CFStringEncoding encoding, UInt8 lossByte,
                   bool isExternal, std::string& out)
{
    if (encoding == kCFStringEncodingUTF8)
        return ::EncodeUTF8(units, lossByte, out);
    if (encoding == kCFStringEncodingNonLossyASCII)
        return EncodeNonLossyASCII(units, out);
    const UnicodeForm* form = UnicodeFormOf(encoding);
    return form != nullptr && EncodeForm(*form, units, lossByte, isExternal, out);
}

}  // namespace qelcf
