// CFString editing, search and comparison, constants and reference counts.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>

namespace {

TEST(String, ConstantsAreInternedAndSurviveRelease)
{
    CFStringRef first = CFSTR("IDS_QEL_WB");
    CFRelease(first);
    CFRelease(first);
    EXPECT_EQ(CFSTR("IDS_QEL_WB"), first);
    EXPECT_NE(CFSTR("IDS_QEL_WB_AUTO"), first);
    EXPECT_EQ(Utf8(first), "IDS_QEL_WB");
}

TEST(String, LastReleaseFreesAndCopiesAreIndependent)
{
    CFMutableStringRef text = CFStringCreateMutable(nullptr, 0);
    EXPECT_EQ(CFGetRetainCount(text), 1);
    CFRetain(text);
    EXPECT_EQ(CFGetRetainCount(text), 2);
    CFRelease(text);
    EXPECT_EQ(CFGetRetainCount(text), 1);

    CFStringAppend(text, CFSTR("Auto"));
    Owned<CFStringRef> copy(CFStringCreateCopy(nullptr, text));
    Owned<CFMutableStringRef> mutableCopy(CFStringCreateMutableCopy(nullptr, 0, text));
    CFStringAppend(text, CFSTR(" WB"));
    EXPECT_EQ(Utf8(copy), "Auto");
    EXPECT_EQ(Utf8(mutableCopy), "Auto");
    EXPECT_EQ(Utf8(text), "Auto WB");
    CFRelease(text);  // leak checkers catch a missing free here
}

TEST(String, AppendingToItself)
{
    Owned<CFMutableStringRef> text(CFStringCreateMutable(nullptr, 0));
    CFStringAppend(text, CFSTR("ab"));
    CFStringAppend(text, text);
    EXPECT_EQ(Utf8(text), "abab");
}

struct FindCase {
    const char* text;
    const char* needle;
    CFStringCompareFlags options;
    CFIndex location;  // -1: not found
};

TEST(String, FindWithOptions)
{
    const FindCase cases[] = {
        {"Flash && Sync", "&&", kCFCompareCaseInsensitive, 6},
        {"A && B && C", "&&", 0, 2},
        {"A && B && C", "&&", kCFCompareBackwards, 7},
        {"Cloudy", "CLOUD", kCFCompareCaseInsensitive, 0},
        {"Cloudy", "CLOUD", 0, -1},
        {"\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89", kCFCompareCaseInsensitive, 0},
        {"Shade", "ade", kCFCompareAnchored, -1},
        {"Shade", "Sha", kCFCompareAnchored, 0},
        {"Shade", "ade", kCFCompareAnchored | kCFCompareBackwards, 2},
        {"Shade", "", 0, -1},
        {"ab", "abc", 0, -1},
    };
    for (const FindCase& c : cases) {
        Owned<CFStringRef> text(MakeString(c.text));
        Owned<CFStringRef> needle(MakeString(c.needle));
        CFRange found = CFRangeMake(-1, 0);
        const Boolean ok = CFStringFindWithOptions(text, needle, CFRangeMake(0, CFStringGetLength(text)),
                                                   c.options, &found);
        EXPECT_EQ(ok != 0, c.location >= 0) << c.text << " / " << c.needle;
        if (ok) {
            EXPECT_EQ(found.location, c.location) << c.text << " / " << c.needle;
        }
    }
}

TEST(String, FindStaysInsideTheGivenRange)
{
    Owned<CFStringRef> text(MakeString("&&x&&"));
    CFRange found{};
    EXPECT_TRUE(CFStringFindWithOptions(text, CFSTR("&&"), CFRangeMake(1, 4), 0, &found));
    EXPECT_EQ(found.location, 3);
    EXPECT_FALSE(CFStringFindWithOptions(text, CFSTR("&&"), CFRangeMake(1, 3), 0, &found));
    EXPECT_EQ(CFStringFind(text, CFSTR("x"), 0).location, 2);
    EXPECT_EQ(CFStringFind(text, CFSTR("y"), 0).location, -1);
}

TEST(String, EditingRanges)
{
    struct Edit {
        const char* start;
        void (*apply)(CFMutableStringRef);
        const char* expected;
    };
    const Edit edits[] = {
        {"Flash &&", [](CFMutableStringRef s) { CFStringReplace(s, CFRangeMake(6, 2), CFSTR("&")); }, "Flash &"},
        {"abc", [](CFMutableStringRef s) { CFStringReplace(s, CFRangeMake(0, 0), CFSTR(">")); }, ">abc"},
        {"abc", [](CFMutableStringRef s) { CFStringReplace(s, CFRangeMake(3, 0), CFSTR("<")); }, "abc<"},
        {"abc", [](CFMutableStringRef s) { CFStringReplaceAll(s, CFSTR("xyz!")); }, "xyz!"},
        {"abcdef", [](CFMutableStringRef s) { CFStringDelete(s, CFRangeMake(1, 3)); }, "aef"},
        {"abcdef", [](CFMutableStringRef s) { CFStringDelete(s, CFRangeMake(0, 6)); }, ""},
        {"abc", [](CFMutableStringRef s) { CFStringAppendCString(s, "\xC3\xA9", kCFStringEncodingUTF8); }, "abc\xC3\xA9"},
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

TEST(String, LengthAndCharactersCountUTF16Units)
{
    Owned<CFStringRef> text(MakeString("a\xC3\xA9\xF0\x9F\x93\xB7"));  // a, e-acute, camera emoji
    ASSERT_EQ(CFStringGetLength(text), 4);
    EXPECT_EQ(CFStringGetCharacterAtIndex(text, 1), 0x00E9);
    EXPECT_EQ(CFStringGetCharacterAtIndex(text, 2), 0xD83D);
    EXPECT_EQ(CFStringGetCharacterAtIndex(text, 3), 0xDCF7);
    UniChar units[2] = {};
    CFStringGetCharacters(text, CFRangeMake(2, 2), units);
    EXPECT_EQ(units[0], 0xD83D);
    EXPECT_EQ(units[1], 0xDCF7);
}

TEST(String, Compare)
{
    struct CompareCase {
        const char* a;
        const char* b;
        CFStringCompareFlags options;
        CFComparisonResult expected;
    };
    const CompareCase cases[] = {
        {"abc", "abc", 0, kCFCompareEqualTo},
        {"abc", "abd", 0, kCFCompareLessThan},
        {"abc", "ab", 0, kCFCompareGreaterThan},
        {"ABC", "abc", 0, kCFCompareLessThan},
        {"ABC", "abc", kCFCompareCaseInsensitive, kCFCompareEqualTo},
        {"", "", 0, kCFCompareEqualTo},
    };
    for (const CompareCase& c : cases) {
        Owned<CFStringRef> a(MakeString(c.a));
        Owned<CFStringRef> b(MakeString(c.b));
        EXPECT_EQ(CFStringCompare(a, b, c.options), c.expected) << c.a << " vs " << c.b;
    }
}

TEST(String, GetCStringNeedsRoomForTheTerminator)
{
    Owned<CFStringRef> text(MakeString("abc"));
    char buffer[4] = {'x', 'x', 'x', 'x'};
    EXPECT_FALSE(CFStringGetCString(text, buffer, 3, kCFStringEncodingASCII));
    EXPECT_TRUE(CFStringGetCString(text, buffer, 4, kCFStringEncodingASCII));
    EXPECT_STREQ(buffer, "abc");
    Owned<CFStringRef> accented(MakeString("\xC3\xA9"));
    EXPECT_FALSE(CFStringGetCString(accented, buffer, 4, kCFStringEncodingASCII));
}

}  // namespace
