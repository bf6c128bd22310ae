// Localized formats print numbers and texts of any length whole: around the
// length that fits a small buffer, and well beyond it.
#include "FormatArguments.h"

#include "CQelString.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Apply(const char* format, qel::FormatArgument argument)
{
    CFMutableStringRef out = CFStringCreateMutable(nullptr, 0);
    CFStringRef formatString = CFStringCreateWithCString(nullptr, format, kCFStringEncodingUTF8);
    qel::AppendFormatted(out, formatString, &argument, 1);
    CQelString text(out);
    CFRelease(formatString);
    CFRelease(out);
    return text.ToUTF8();
}

TEST(FormatLengths, PrintWholeAtEveryLength)
{
    const std::string longText(300, 'x');
    struct Case {
        const char* format;
        qel::FormatArgument argument;
        std::string expected;
    };
    const Case cases[] = {
        {"%63d", 7, std::string(62, ' ') + "7"},
        {"%64d", 7, std::string(63, ' ') + "7"},
        {"%65d", 7, std::string(64, ' ') + "7"},
        {"%-9999d|", -1, "-1" + std::string(9997, ' ') + "|"},
        {"%.60f", 0.5, "0." + std::string("5") + std::string(59, '0')},
        {"%s", longText.c_str(), longText},
        {"%.63s|", longText.c_str(), std::string(63, 'x') + "|"},
        {"%.64s|", longText.c_str(), std::string(64, 'x') + "|"},
        {"[%s]", "", "[]"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Apply(c.format, c.argument), c.expected) << c.format;
}

}  // namespace
