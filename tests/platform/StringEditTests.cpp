// Editing a mutable string in place: appending it to itself and replacing
// its text with itself, a shorter or a longer text, at lengths that fit the
// string's buffer and lengths that make it grow.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>

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

}  // namespace
