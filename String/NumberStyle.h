// SPDX-License-Identifier: MIT
// Numbers in the style of the user's language: the library prints every
// number in the C locale, whatever LC_NUMERIC the host set, and then writes
// its decimal point as the language's table says (IDS_QEL_DECIMAL_SEPARATOR;
// a table without it keeps the point).
#ifndef QEL_NUMBER_STYLE_H
#define QEL_NUMBER_STYLE_H

#include <CoreFoundation/CoreFoundation.h>

#include <locale.h>
#if defined(__APPLE__)
#include <xlocale.h>
#endif

namespace qel {

// Makes printf on this thread print numbers in the C locale while it lives.
class CNumericScope {
public:
    CNumericScope();
    ~CNumericScope();
    CNumericScope(const CNumericScope&) = delete;
    CNumericScope& operator=(const CNumericScope&) = delete;

private:
    locale_t m_previous;
};

// `value` as printf's "%.<precision>f" ("%+.<precision>f" with `plus`)
// prints it in the C locale, into `out` (`size` bytes); answers what
// snprintf answers.
int PrintFixed(char* out, size_t size, double value, int precision, bool plus = false);

// The decimal separator of the user's language, looked up in `bundle`.
UniChar DecimalSeparator(CFBundleRef bundle);
// The table's text for the decimal separator (a new reference), or null;
// an answer that is the key itself means the table lacks it.
CFStringRef CopyDecimalSeparatorText(CFBundleRef bundle);
// Whether that text names a separator, and the separator it names.
bool NamesSeparator(CFStringRef text);
UniChar SeparatorOf(CFStringRef text);

// Writes every '.' of `text` from `from` on as `separator`; the caller
// appended only printed numbers there.
void StyleDecimalPoints(CFMutableStringRef text, CFIndex from, UniChar separator);

}  // namespace qel

#endif
