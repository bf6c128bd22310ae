// SPDX-License-Identifier: MIT
// CFString: interned constants, reference counts, editing in place, C
// strings and search.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>

namespace {

// The same text always gives the same object, from any buffer, any place
// naming it and any thread; a buffer that now holds another text gives that
// text's constant. Releasing a constant does not free it.
TEST(ConstantStrings, FollowTheTextNotTheBuffer)
{
    const char* texts[] = {"IDS_QEL_WB", "IDS_QEL_WB_CLOUDY", "IDS_QEL_WB", ""};
    char buffer[32];
    for (const char* text : texts) {
        std::strcpy(buffer, text);  // rewritten in place, as a host formatting its keys would
        CFStringRef fromBuffer = __CFStringMakeConstantString(buffer);
        EXPECT_EQ(Utf8(fromBuffer), text);
        EXPECT_EQ(fromBuffer, __CFStringMakeConstantString(text)) << text;
    }
    CFStringRef first = CFSTR("IDS_QEL_WB");
    CFRelease(first);
    CFRelease(first);
    EXPECT_NE(CFSTR("IDS_QEL_WB_CLOUDY"), first);
    EXPECT_EQ(Utf8(first), "IDS_QEL_WB");
    CFStringRef there = nullptr;
    std::thread([&there] { there = __CFStringMakeConstantString("IDS_QEL_WB"); }).join();
    EXPECT_EQ(there, first);
}

// Appending a string to itself and replacing its text with itself, a shorter
// or a longer text, at lengths that fit its buffer and lengths that grow it.
TEST(StringEdits, AppendAndReplaceInPlace)
{
    const std::string tail = "bcdefghijklmnopqrstuvwxyz";
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
        Owned<CFStringRef> longer(MakeString((text + tail).c_str()));
        CFStringReplaceAll(edited, longer);
        CFStringAppend(edited, source);
        EXPECT_EQ(Utf8(edited), text + tail + text) << length;
        CFStringReplaceAll(edited, nullptr);
        EXPECT_EQ(CFStringGetLength(edited), 0) << length;
    }
}

TEST(StringEdits, EditingRanges)
{
    struct Edit {
        const char* start;
        void (*apply)(CFMutableStringRef);
        const char* expected;
    };
    const Edit edits[] = {
        {"Flash &&", [](CFMutableStringRef s) { CFStringReplace(s, CFRangeMake(6, 2), CFSTR("&")); }, "Flash &"},
        {"abc", [](CFMutableStringRef s) { CFStringReplace(s, CFRangeMake(3, 0), CFSTR("<")); }, "abc<"},
        {"abcdef", [](CFMutableStringRef s) { CFStringDelete(s, CFRangeMake(1, 3)); }, "aef"},
        {"abc", [](CFMutableStringRef s) { CFStringAppendCString(s, "\xE9", kCFStringEncodingISOLatin1); }, "abc\xC3\xA9"},
        // A stray 8-bit byte in "ASCII" text is kept, not the whole text lost.
        {"", [](CFMutableStringRef s) { CFStringAppendCString(s, "F\xE9", kCFStringEncodingASCII); }, "F\xC3\xA9"},
    };
    for (const Edit& edit : edits) {
        Owned<CFStringRef> start(MakeString(edit.start));
        Owned<CFMutableStringRef> text(CFStringCreateMutableCopy(nullptr, 0, start));
        edit.apply(text);
        EXPECT_EQ(Utf8(text), edit.expected) << edit.start;
    }
}

TEST(String, FindWithOptionsInsideTheRange)
{
    struct FindCase {
        const char* text;
        const char* needle;
        CFStringCompareFlags options;
        CFIndex location;  // -1: not found
        CFRange range = CFRangeMake(0, -1);  // -1: the whole text
    };
    const FindCase cases[] = {
        {"Flash && Sync", "&&", kCFCompareCaseInsensitive, 6},
        {"\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89", kCFCompareCaseInsensitive, 0},
        {"A && B && C", "&&", kCFCompareBackwards, 7}, {"Cloudy", "CLOUD", 0, -1},
        {"Shade", "ade", kCFCompareAnchored | kCFCompareBackwards, 2}, {"ab", "abc", 0, -1},
        {"&&x&&", "&&", 0, 3, CFRangeMake(1, 4)},
        {"&&x&&", "&&", 0, -1, CFRangeMake(1, 3)},
    };
    for (const FindCase& c : cases) {
        Owned<CFStringRef> text(MakeString(c.text));
        Owned<CFStringRef> needle(MakeString(c.needle));
        const CFRange range = c.range.length < 0 ? CFRangeMake(0, CFStringGetLength(text)) : c.range;
        CFRange found = CFRangeMake(-1, 0);
        const Boolean ok = CFStringFindWithOptions(text, needle, range, c.options, &found);
        EXPECT_EQ(ok ? found.location : -1, c.location) << c.text << " / " << c.needle;
    }
}

}  // namespace
