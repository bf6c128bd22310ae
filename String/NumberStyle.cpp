#include "NumberStyle.h"

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

}  // namespace

CNumericScope::CNumericScope()
    : m_previous(CLocale() ? uselocale(CLocale()) : static_cast<locale_t>(nullptr))
{
}

CNumericScope::~CNumericScope()
{
    if (m_previous)
        uselocale(m_previous);
}

UniChar DecimalSeparator(CFBundleRef bundle)
{
    if (!bundle)
        return kDecimalPoint;
    CFStringRef key = CFSTR("IDS_QEL_DECIMAL_SEPARATOR");
    CFStringRef text = CFBundleCopyLocalizedString(bundle, key, CFSTR(""), nullptr);
    if (!text)
        return kDecimalPoint;
    // A missing key answers the key itself.
    const bool named = CFStringGetLength(text) > 0 && CFStringCompare(text, key, 0) != kCFCompareEqualTo;
    const UniChar separator = named ? CFStringGetCharacterAtIndex(text, 0) : kDecimalPoint;
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
