// SPDX-License-Identifier: MIT
// CFString: interned constants, reference counts, editing in place, C
// strings, search (case-insensitive over every UTF-16 unit) and comparison.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <cstring>
#include <string>
#include <thread>

namespace {

// The same text always gives the same object, from any buffer, any place
// naming it and any thread; a buffer that now holds another text gives that
// text's constant. Releasing a constant does not free it.
TEST(ConstantStrings, FollowTheTextNotTheBuffer)
{
    const char* texts[] = {"IDS_QEL_WB", "IDS_QEL_WB_CLOUDY", "IDS_QEL_WB", "", "IDS_QEL_MODEL", "IDS_QEL_WB_CLOUDY"};
    char buffer[32];
    for (const char* text : texts) {
        std::strcpy(buffer, text);  // rewritten in place, as a host formatting its keys would
        CFStringRef fromBuffer = __CFStringMakeConstantString(buffer);
        EXPECT_EQ(Utf8(fromBuffer), text);
        EXPECT_EQ(fromBuffer, __CFStringMakeConstantString(text)) << text;
        EXPECT_EQ(fromBuffer, __CFStringMakeConstantString(std::string(text).c_str())) << text;
    }
    CFStringRef first = CFSTR("IDS_QEL_WB");
    CFRelease(first);
    CFRelease(first);
    auto named = [] { return CFSTR("IDS_QEL_WB"); };
    EXPECT_EQ(named(), first);
    EXPECT_EQ(__CFStringMakeConstantString("IDS_QEL_WB"), first);
    EXPECT_NE(CFSTR("IDS_QEL_WB_CLOUDY"), first);
    EXPECT_EQ(Utf8(first), "IDS_QEL_WB");
    CFStringRef there = nullptr;
    std::thread([&there] { there = __CFStringMakeConstantString("IDS_QEL_WB"); }).join();
    EXPECT_EQ(there, first);
}

TEST(String, LastReleaseFreesAndCopiesAreIndependent)
{
    CFMutableStringRef text = CFStringCreateMutable(nullptr, 0);
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
        {"abc", [](CFMutableStringRef s) { CFStringReplace(s, CFRangeMake(0, 0), CFSTR(">")); }, ">abc"},
        {"abc", [](CFMutableStringRef s) { CFStringReplace(s, CFRangeMake(3, 0), CFSTR("<")); }, "abc<"},
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

// C strings of texts of changing lengths one after another, which share a
// conversion buffer; the terminator needs room.
TEST(StringEdits, CStringsOneAfterAnother)
{
    struct Case {
        const char* text;
        CFStringEncoding encoding;
        CFIndex bufferSize;
        const char* expected;  // null: the conversion fails
    };
    const Case cases[] = {
        {"White Balance Incandescent, fine-tuned +2", kCFStringEncodingUTF8, 64, "White Balance Incandescent, fine-tuned +2"},
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
    EXPECT_EQ(CFStringFind(CFSTR("&&x&&"), CFSTR("x"), 0).location, 2);
    EXPECT_EQ(CFStringFind(CFSTR("&&x&&"), CFSTR("y"), 0).location, -1);
}

UChar32 Folded(UChar32 unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF ? unit : u_foldCase(unit, U_FOLD_CASE_DEFAULT);
}

// A unit is found wherever it folds to the same letter as what is sought, for
// every UTF-16 unit, whatever shortcut the search takes for characters
// without case: letters other scripts fold onto (long s, Kelvin sign),
// punctuation the strings tables escape, digits, a letter beyond ASCII.
TEST(String, CaseInsensitiveSearchFindsExactlyTheUnitsThatFoldAlike)
{
    const std::initializer_list<UniChar> sought = {'&', '%', ' ', '0', '_', 's', 'S', 'k', 'K', 0x00E9, 0x212B};
    for (UniChar lead : sought) {
        const UniChar needle[2] = {lead, '!'};
        Owned<CFStringRef> find(CFStringCreateWithCharacters(nullptr, needle, 2));
        for (UChar32 unit = 0; unit <= 0xFFFF; ++unit) {
            const UniChar text[3] = {'x', static_cast<UniChar>(unit), '!'};
            Owned<CFStringRef> string(CFStringCreateWithCharacters(nullptr, text, 3));
            CFRange found = CFRangeMake(-1, 0);
            const bool hit = CFStringFindWithOptions(string, find, CFRangeMake(0, 3), kCFCompareCaseInsensitive, &found);
            ASSERT_EQ(hit, unit == lead || Folded(unit) == Folded(lead)) << std::hex << "unit " << unit << " sought " << lead;
            if (hit) {
                EXPECT_EQ(found.location, 1);
            }
        }
    }
}

TEST(String, LengthAndCharactersCountUTF16Units)
{
    Owned<CFStringRef> text(MakeString("a\xC3\xA9\xF0\x9F\x93\xB7"));  // a, e-acute, camera emoji
    ASSERT_EQ(CFStringGetLength(text), 4);
    EXPECT_EQ(CFStringGetCharacterAtIndex(text, 1), 0x00E9);
    UniChar units[2] = {};
    CFStringGetCharacters(text, CFRangeMake(2, 2), units);
    EXPECT_EQ(units[0], 0xD83D);
    EXPECT_EQ(units[1], 0xDCF7);
    EXPECT_EQ(CFStringGetCharacterAtIndex(text, 3), 0xDCF7);
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
        {"abc", "abc", 0, kCFCompareEqualTo},        {"abc", "abd", 0, kCFCompareLessThan},
        {"abc", "ab", 0, kCFCompareGreaterThan},     {"ABC", "abc", 0, kCFCompareLessThan},
        {"ABC", "abc", kCFCompareCaseInsensitive, kCFCompareEqualTo}, {"", "", 0, kCFCompareEqualTo},
    };
    for (const CompareCase& c : cases) {
        Owned<CFStringRef> a(MakeString(c.a));
        Owned<CFStringRef> b(MakeString(c.b));
        EXPECT_EQ(CFStringCompare(a, b, c.options), c.expected) << c.a << " vs " << c.b;
    }
}

}  // namespace
