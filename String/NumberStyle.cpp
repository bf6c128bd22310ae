// SPDX-License-Identifier: MIT
#include "NumberStyle.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <system_error>
#include <vector>

namespace qel {
namespace {

constexpr UniChar kDecimalPoint = '.';

// Shared by every thread: a locale object is only read while in use.
locale_t CLocale()
{
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return cLocale;
}

CFStringRef SeparatorKey()
{
    return CFSTR("IDS_QEL_DECIMAL_SEPARATOR");
}

}  // namespace

int PrintFixed(char* out, size_t size, double value, int precision, bool plus)
{
    const auto printed = [&] {
        const CNumericScope cNumbers;
        return std::snprintf(out, size, plus ? "%+.*f" : "%.*f", precision, value);
    };
#if defined(__cpp_lib_to_chars)
    // to_chars rounds the exact binary value as printf does, without the C
    // locale and without floating-point tricks that differ between machines.
    if (precision < 0 || !std::isfinite(value))
        return printed();  // the default precision, infinities and NaN as printf writes them
    char digits[64];
    char* first = digits;
    if (plus && !std::signbit(value))
        *first++ = '+';
    const auto [last, error] = std::to_chars(first, digits + sizeof digits, value,
                                             std::chars_format::fixed, precision);
    const size_t length = static_cast<size_t>(last - digits);
    if (error != std::errc() || length + 1 > size)
        return printed();  // very long numbers, and texts cut as printf cuts them
    std::memcpy(out, digits, length);
    out[length] = '\0';
    return static_cast<int>(length);
#else
    return printed();
#endif
}

CNumericScope::CNumericScope()
    : m_previous(CLocale() ? uselocale(CLocale()) : static_cast<locale_t>(nullptr))
{
}

CNumericScope::~CNumericScope()
{
    if (m_previous)
        uselocale(m_previous);
}

CFStringRef CopyDecimalSeparatorText(CFBundleRef bundle)
{
    return bundle ? CFBundleCopyLocalizedString(bundle, SeparatorKey(), CFSTR(""), nullptr)
                  : nullptr;
}

bool NamesSeparator(CFStringRef text)
{
    // A missing key answers the key itself.
    return text && CFStringGetLength(text) > 0 &&
           CFStringCompare(text, SeparatorKey(), 0) != kCFCompareEqualTo;
}

UniChar SeparatorOf(CFStringRef text)
{
    return NamesSeparator(text) ? CFStringGetCharacterAtIndex(text, 0) : kDecimalPoint;
}

UniChar DecimalSeparator(CFBundleRef bundle)
{
    CFStringRef text = CopyDecimalSeparatorText(bundle);
    const UniChar separator = SeparatorOf(text);
    if (text)
        CFRelease(text);
    return separator;
}

void StyleDecimalPoints(CFMutableStringRef text, CFIndex from, UniChar separator)
{
    if (!text || separator == kDecimalPoint)
        return;
    const CFIndex length = CFStringGetLength(text);
    if (from < 0 || from >= length)
        return;
    std::vector<UniChar> units(static_cast<size_t>(length - from));
    CFStringGetCharacters(text, CFRangeMake(from, length - from), units.data());
    bool changed = false;
    for (UniChar& unit : units) {
        if (unit == kDecimalPoint) {
            unit = separator;
            changed = true;
        }
    }
    if (!changed)
        return;
    CFStringRef styled = CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(),
                                                      static_cast<CFIndex>(units.size()));
    if (styled) {
        CFStringReplace(text, CFRangeMake(from, length - from), styled);
        CFRelease(styled);
    }
}

}  // namespace qel
