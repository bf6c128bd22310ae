// SPDX-License-Identifier: MIT
// Localized formats applied to typed arguments: what a translation may
// write, what it cannot do to the library whatever it writes, and numbers and
// texts of any length printed whole.
#include "FormatArguments.h"

#include "CQelString.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

std::string Apply(const char* format, const std::vector<qel::FormatArgument>& arguments,
                  UniChar decimalSeparator = '.')
{
    CFMutableStringRef out = CFStringCreateMutable(nullptr, 0);
    CFStringRef formatString = CFStringCreateWithCString(nullptr, format, kCFStringEncodingUTF8);
    qel::AppendFormatted(out, formatString, arguments.data(), arguments.size(), decimalSeparator);
    CQelString text(out);
    CFRelease(formatString);
    CFRelease(out);
    return text.ToUTF8();
}

struct Case {
    const char* format;
    std::vector<qel::FormatArgument> arguments;
    std::string expected;
};

// The GPS position's arguments: degrees, decimal minutes, degrees, minutes, seconds.
const std::vector<qel::FormatArgument> kPosition = {35, 39.486, 35, 39, 29.16};

const std::string kLong(300, 'x');

const Case kCases[] = {
    // What translations write.
    {"%s sec", {"1/250"}, "1/250 sec"}, {"%d x %d", {3008, 2000}, "3008 x 2000"},
    {"ISO %u", {200u}, "ISO 200"}, {"%2$d x %1$d", {3008, 2000}, "2000 x 3008"},
    {"%3$d°%4$02d'%5$05.2f\"", kPosition, "35°39'29.16\""},
    {"%1$d°%2$.3f'", kPosition, "35°39.486'"}, {"1/%d %d/%d EV", {4, 1, 6}, "1/4 1/6 EV"},
    {"%+.1f EV", {-0.5}, "-0.5 EV"}, {"%.2f m", {-12.345}, "-12.35 m"},
    {"100%% %s", {"x"}, "100% x"}, {"%-4d|%4s|%.1s", {7, "ab", "xyz"}, "7   |  ab|x"},
    {"%x %X %o %c", {255, 255, 8, 65}, "ff FF 10 A"},
    {"%*d|%.*f", {5, 42, 2, 3.14159}, "   42|3.14"}, {"%hhd %hu", {300, 70000}, "44 4464"},
    {"%d", {static_cast<unsigned>(3000000000u)}, "-1294967296"},
    {"%@ and %s", {"text", "UTF-8 °"}, "text and UTF-8 °"},
    // What a careless or hostile translation cannot do.
    {"%s", {42}, "42"}, {"%d", {"text"}, "text"}, {"%f", {7}, "7"}, {"%d %d %d", {1}, "1  "},
    {"%9$d|%0$d", {1}, "|d"}, {"%n%p%k", {1, 2, 3}, ""}, {"%", {1}, ""},
    {"%99999999999d", {1}, "1"}, {"%s", {static_cast<const char*>(nullptr)}, "(null)"},
    // Lengths around the small buffer a number is printed into, and beyond.
    {"%63d", {7}, std::string(62, ' ') + "7"}, {"%64d", {7}, std::string(63, ' ') + "7"},
    {"%65d", {7}, std::string(64, ' ') + "7"}, {"%-9999d|", {-1}, "-1" + std::string(9997, ' ') + "|"},
    {"%s", {kLong.c_str()}, kLong}, {"%.64s|", {kLong.c_str()}, std::string(64, 'x') + "|"},
};

TEST(FormatArguments, AppliesLocalizedFormatsToTypedArguments)
{
    for (const Case& c : kCases)
        EXPECT_EQ(Apply(c.format, c.arguments), c.expected) << c.format;
}

}  // namespace

// A decimal comma reaches the numbers only: doubles, and C strings (numbers
// the library printed); the translation's own text and CF strings keep theirs.
TEST(FormatArguments, TheDecimalSeparatorReachesNumbersOnly)
{
    const CFStringRef name = CFSTR("v1.2");
    EXPECT_EQ(Apply("Sync. %+.1f / %s / %@ / %d / %4$s", {-0.66, "1/3.3", name, 1.5}, ','),
              "Sync. -0,7 / 1/3,3 / v1.2 / 1,500000 / 1,500000");
    EXPECT_EQ(Apply("%3$d°%4$02d'%5$05.2f\"", kPosition, ','), "35°39'29,16\"");
}

// Integers and short fixed decimals are written without printf: whatever the
// flags, width and value, they read exactly as printf prints them, ties and
// negative zero included.
TEST(FormatArguments, NumbersWrittenDirectlyReadAsPrintfPrintsThem)
{
    const char* const flags[] = {"", "+", "-", "0", " ", "+0", "-0"};
    const char* const widths[] = {"", "1", "6"};
    const long long integers[] = {0, 7, -7, 2147483647, -2147483647 - 1, 4294967295};
    const double reals[] = {0.0,   -0.0,  0.05,      0.15,        0.25, -0.125,
                            2.675, 9.995, 1.0 / 3.0, 99999.99995, -0.04};
    char expected[64];
    for (const char* flag : flags)
        for (const char* width : widths) {
            const std::string prefix = std::string("%") + flag + width;
            for (long long value : integers) {
                const int signedValue = static_cast<int>(value);
                const unsigned unsignedValue = static_cast<unsigned>(value);
                std::snprintf(expected, sizeof expected, (prefix + "d").c_str(), signedValue);
                EXPECT_EQ(Apply((prefix + "d").c_str(), {signedValue}), expected);
                std::snprintf(expected, sizeof expected, (prefix + "u").c_str(), unsignedValue);
                EXPECT_EQ(Apply((prefix + "u").c_str(), {unsignedValue}), expected);
            }
            for (double value : reals)
                for (const char* precision : {".0", ".1", ".2", ".4"}) {
                    const std::string format = prefix + precision + "f";
                    std::snprintf(expected, sizeof expected, format.c_str(), value);
                    EXPECT_EQ(Apply(format.c_str(), {value}), expected) << format;
                }
        }
}
