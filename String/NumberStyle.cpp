// SPDX-License-Identifier: MIT
#include "NumberStyle.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
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

// Precisions printed without printf: a double times 10^4 (5^4 needs 10 bits)
// is exact in a 64-bit extended mantissa, so rounding it to an integer is
// the correctly rounded decimal printf prints.
constexpr int kMaxDirectPrecision = 4;
constexpr long double kPowersOfTen[] = {1, 10, 100, 1000, 10000};
constexpr bool kExactProducts = std::numeric_limits<long double>::digits >= 64;
// Beyond this the scaled value leaves the range of a 64-bit integer.
constexpr double kMaxDirectValue = 1e14;

}  // namespace

int PrintFixed(char* out, size_t size, double value, int precision, bool plus)
{
    const auto printed = [&] {
        const CNumericScope cNumbers;
        return std::snprintf(out, size, plus ? "%+.*f" : "%.*f", precision, value);
    };
    if (!kExactProducts || precision < 0 || precision > kMaxDirectPrecision ||
        !(std::fabs(value) < kMaxDirectValue))
        return printed();
    const bool negative = std::signbit(value);
    // Ties go to the even neighbour, as printf rounds in the default mode.
    const long double scaled = std::nearbyint(std::fabs(static_cast<long double>(value)) *
                                              kPowersOfTen[precision]);
    unsigned long long units = static_cast<unsigned long long>(scaled);
    char digits[32];
    char* first = digits + sizeof digits;
    for (int place = 0; place < precision; ++place) {
        *--first = static_cast<char>('0' + units % 10);
        units /= 10;
    }
    if (precision > 0)
        *--first = '.';
    do {
        *--first = static_cast<char>('0' + units % 10);
        units /= 10;
    } while (units != 0);
    if (negative)
        *--first = '-';
    else if (plus)
        *--first = '+';
    const size_t length = static_cast<size_t>(digits + sizeof digits - first);
    if (length + 1 > size)
        return printed();  // cut as printf cuts
    std::memcpy(out, first, length);
    out[length] = '\0';
    return static_cast<int>(length);
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
