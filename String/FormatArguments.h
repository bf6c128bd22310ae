// SPDX-License-Identifier: MIT
// Localized formats applied to arguments whose types the library knows.
//
// A strings table is written by translators and may be extended by users, so
// its format texts are not trusted to match what the code passes. The
// library therefore applies a localized format to a typed list of arguments
// rather than to a C variable argument list: every conversion takes the
// argument its position names (%3$d) or the next one, and
//   - a conversion whose argument does not exist prints nothing;
//   - a conversion that does not fit its argument's type (%s given a number)
//     prints the argument in that argument's own plain form;
//   - %n and unknown conversions print nothing.
// So a translation may pick any subset of the arguments by position (the
// GPS position picks degrees-minutes-seconds or degrees with decimal
// minutes) and can never read an argument the code did not pass.
// Numbers print as printf prints them in the C locale, with the decimal
// separator given; C-string arguments are numbers the library printed and
// take the separator too.
#ifndef QEL_FORMAT_ARGUMENTS_H
#define QEL_FORMAT_ARGUMENTS_H

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>

namespace qel {

struct FormatArgument {
    enum class Kind { Signed, Unsigned, Double, CString, CFString };

    FormatArgument(int value) : kind(Kind::Signed), integer(value) {}
    FormatArgument(long value) : kind(Kind::Signed), integer(value) {}
    FormatArgument(long long value) : kind(Kind::Signed), integer(value) {}
    FormatArgument(unsigned value) : kind(Kind::Unsigned), integer(static_cast<long long>(value)) {}
    FormatArgument(unsigned long value)
        : kind(Kind::Unsigned), integer(static_cast<long long>(value)) {}
    FormatArgument(double value) : kind(Kind::Double), real(value) {}
    FormatArgument(const char* value) : kind(Kind::CString), text(value) {}
    FormatArgument(CFStringRef value) : kind(Kind::CFString), string(value) {}

    Kind kind;
    union {
        long long integer;
        double real;
        const char* text;
        CFStringRef string;
    };
};

// Appends `format` applied to `arguments` to `out`.
void AppendFormatted(CFMutableStringRef out, CFStringRef format,
                     const FormatArgument* arguments, size_t count, UniChar decimalSeparator = '.');

}  // namespace qel

#endif
