// Editing a mutable string in place: appending it to itself and replacing
// its text with itself, a shorter or a longer text, at lengths that fit the
// string's buffer and lengths that make it grow. And C strings of texts of
// changing lengths one after another, which share a conversion buffer.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

TEST(StringEdits, AppendAndReplaceInPlace)
{
    for (size_t length : {0u, 1u, 7u, 8u, 15u, 16u, 100u}) {
        const std::string text(length, 'a');
        Owned<CFStringRef> source(MakeString(text.c_str()));
        Owned<CFMutableStringRef> edited(CFStringCreateMutableCopy(nullptr, 0, source));

        CFStringAppend(edited, edited);
        EXPECT_EQ(Utf8(edited), text + text) << length;
        CFStringReplaceAll(edited, edited);
        EXPECT_EQ(Utf8(edited), text + text) << length;
        CFStringReplaceAll(edited, source);
        EXPECT_EQ(Utf8(edited), text) << length;
        Owned<CFStringRef> longer(MakeString((text + "bcdefghijklmnopqrstuvwxyz").c_str()));
        CFStringReplaceAll(edited, longer);
        EXPECT_EQ(Utf8(edited), text + "bcdefghijklmnopqrstuvwxyz") << length;
        CFStringAppend(edited, source);
        EXPECT_EQ(Utf8(edited), text + "bcdefghijklmnopqrstuvwxyz" + text) << length;
        CFStringReplaceAll(edited, nullptr);
        EXPECT_EQ(CFStringGetLength(edited), 0) << length;
    }
}

TEST(StringEdits, CStringsOneAfterAnother)
{
    struct Case {
        const char* text;
        CFStringEncoding encoding;
        CFIndex bufferSize;
        const char* expected;  // null: the conversion fails
    };
    const Case cases[] = {
        {"White Balance Incandescent, fine-tuned +2", kCFStringEncodingUTF8, 64,
         "White Balance Incandescent, fine-tuned +2"},
        {"WB", kCFStringEncodingUTF8, 3, "WB"},
        {"WB", kCFStringEncodingUTF8, 2, nullptr},
        {"Wei\xC3\x9F", kCFStringEncodingUTF8, 6, "Wei\xC3\x9F"},
        {"Wei\xC3\x9F", kCFStringEncodingASCII, 64, nullptr},
        {"Wei\xC3\x9F", kCFStringEncodingISOLatin1, 5, "Wei\xDF"},
        {"", kCFStringEncodingUTF8, 1, ""},
        {"Cloudy", kCFStringEncodingASCII, 7, "Cloudy"},
    };
    for (const Case& c : cases) {
        Owned<CFStringRef> text(MakeString(c.text));
        char buffer[128];
        std::memset(buffer, 'x', sizeof buffer);
        const bool converted = CFStringGetCString(text, buffer, c.bufferSize, c.encoding);
        ASSERT_EQ(converted, c.expected != nullptr) << c.text << " into " << c.bufferSize;
        if (converted) {
            EXPECT_STREQ(buffer, c.expected) << c.text;
        }
    }
}

}  // namespace
