// SPDX-License-Identifier: MIT
// printf-style formatting: conversions, flags, lengths, positional arguments.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

namespace {

std::string Format(const char* formatText, ...)
{
    Owned<CFStringRef> format(MakeString(formatText));
    va_list arguments;
    va_start(arguments, formatText);
    Owned<CFStringRef> text(CFStringCreateWithFormatAndArguments(nullptr, nullptr, format, arguments));
    va_end(arguments);
    return Utf8(text);
}

struct Case {
    std::string actual;
    const char* expected;
};

TEST(Format, ConversionsFlagsWidthsAndLengths)
{
    const Case cases[] = {
        {Format("%d|%i|%u", -7, 42, 3000000000u), "-7|42|3000000000"},
        {Format("%x|%X|%o|%#x|%#o", 255u, 255u, 8u, 255u, 8u), "ff|FF|10|0xff|010"},
        {Format("%5d|%-5d|%05d|%+d|% d", 42, 42, 42, 42, 42), "   42|42   |00042|+42| 42"},
        {Format("%hhd|%hhu|%hd|%hu", 300, 300, 70000, 70000), "44|44|4464|4464"},
        {Format("%ld|%lu|%lld|%llu", LONG_MIN, ULONG_MAX, LLONG_MIN, ULLONG_MAX),
         "-9223372036854775808|18446744073709551615|-9223372036854775808|18446744073709551615"},
        {Format("%f|%.2f|%8.3f|%-8.1f|", 1.5, 2.345, 3.14159, 2.0), "1.500000|2.35|   3.142|2.0     |"},
        {Format("%+.1f|% .0f|%#.0f", 2.25, 2.5, 3.0), "+2.2| 2|3."},
        {Format("[%s]|[%6s]|[%-6s]|[%.2s]", "abc", "abc", "abc", "abc"), "[abc]|[   abc]|[abc   ]|[ab]"},
        {Format("%s", static_cast<const char*>(nullptr)), "(null)"},
        {Format("100%% sure %d%%", 5), "100% sure 5%"},
        {Format("%*d|%-*d|%.*f", 6, 1, 4, 2, 2, 3.14159), "     1|2   |3.14"},
        {Format("%@ and %@", CFSTR("this"), CFSTR("that")), "this and that"},
        {Format("%@", static_cast<CFStringRef>(nullptr)), "(null)"},
        {Format("%q"), "%q"},
        {Format("ends with %"), "ends with %"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.actual, c.expected);
}

TEST(Format, PositionalArgumentsMixWithEveryFeature)
{
    const Case cases[] = {
        {Format("%2$d %1$d", 1, 2), "2 1"},
        // Each argument's type comes from the conversion that names it.
        {Format("%2$.3f %1$d", 7, 2.5), "2.500 7"},
        {Format("%3$@ %1$5d|%2$-6.2f|", 42, 1.5, CFSTR("name")), "name    42|1.50  |"},
        {Format("%1$@/%1$@", CFSTR("twice")), "twice/twice"},
        {Format("%1$*2$d|", 5, 4), "   5|"},
        {Format("%2$hhu %1$lld", 5000000000LL, 257), "1 5000000000"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.actual, c.expected);
}

}  // namespace
