// SPDX-License-Identifier: MIT
// Test texts as UTF-8, converted by the platform layer itself, so a test
// compares with what a host would read.
#ifndef QEL_TEST_UTF8_H
#define QEL_TEST_UTF8_H

#include <CoreFoundation/CoreFoundation.h>

#include <string>

// The string's text as UTF-8, or "<null>".
inline std::string Utf8(CFStringRef string)
{
    if (string == nullptr)
        return "<null>";
    std::string text(static_cast<size_t>(CFStringGetMaximumSizeForEncoding(
                         CFStringGetLength(string), kCFStringEncodingUTF8)) + 1,
                     '\0');
    if (!CFStringGetCString(string, &text[0], static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8))
        return "<unencodable>";
    text.resize(std::char_traits<char>::length(text.c_str()));
    return text;
}

inline std::string Utf8(const std::u16string& units)
{
    CFStringRef string = CFStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(units.data()), static_cast<CFIndex>(units.size()));
    std::string text = Utf8(string);
    if (string)
        CFRelease(string);
    return text;
}

#endif
