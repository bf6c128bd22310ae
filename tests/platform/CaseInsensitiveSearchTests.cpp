// A case-insensitive search finds a unit wherever the unit folds to the same
// letter as what is sought, for every UTF-16 unit, whatever shortcut the
// search takes for characters without case.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>

namespace {

UChar32 Folded(UChar32 unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF ? unit : u_foldCase(unit, U_FOLD_CASE_DEFAULT);
}

TEST(CaseInsensitiveSearch, FindsExactlyTheUnitsThatFoldAlike)
{
    // Letters that other scripts' characters fold onto (long s, Kelvin sign),
    // punctuation the strings tables escape, digits, and a letter beyond ASCII.
    const UniChar sought[] = {'&', '%', ' ', '0', '_', 's', 'S', 'k', 'K', 0x00E9, 0x212B};
    for (UniChar lead : sought) {
        const UniChar needle[2] = {lead, '!'};
        Owned<CFStringRef> find(CFStringCreateWithCharacters(nullptr, needle, 2));
        for (UChar32 unit = 0; unit <= 0xFFFF; ++unit) {
            const UniChar text[3] = {'x', static_cast<UniChar>(unit), '!'};
            Owned<CFStringRef> string(CFStringCreateWithCharacters(nullptr, text, 3));
            CFRange found = CFRangeMake(-1, 0);
            const bool hit = CFStringFindWithOptions(string, find, CFRangeMake(0, 3),
                                                     kCFCompareCaseInsensitive, &found);
            const bool alike = unit == lead || Folded(unit) == Folded(lead);
            ASSERT_EQ(hit, alike) << std::hex << "unit " << unit << " sought " << lead;
            if (hit) {
                EXPECT_EQ(found.location, 1);
            }
        }
    }
}

}  // namespace
