#include "CQelString.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;

// Keys without a translation come back as themselves, so they carry the
// texts whose ampersands are unescaped.
struct AmpersandCase {
    const char* key;
    const char* shown;
};

class Ampersands : public testing::TestWithParam<AmpersandCase> {};

TEST_P(Ampersands, OnlyTheFirstDoubledAmpersandIsUnescaped)
{
    CQelString text;
    EXPECT_TRUE(text.LoadString(GetParam().key));
    EXPECT_EQ(text.ToUTF8(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(LoadString, Ampersands,
                         testing::Values(AmpersandCase{"IDS_QEL_NO_SUCH_KEY", "IDS_QEL_NO_SUCH_KEY"},
                                         AmpersandCase{"R&&D", "R&D"},
                                         AmpersandCase{"A&&B&&C", "A&B&&C"},
                                         AmpersandCase{"&&&&", "&&&"},
                                         AmpersandCase{"single & stays", "single & stays"}));

struct CStringCase {
    const char* text;
    CFStringEncoding encoding;
    UInt32 size;
    UInt32 placed;           // 0: nothing delivered
    const char* bytes;       // what the buffer starts with when delivered
};

class CStringExport : public testing::TestWithParam<CStringCase> {};

TEST_P(CStringExport, DeliversWholeTextOrZeroFilledBuffer)
{
    const CStringCase& c = GetParam();
    CQelString text(c.text, kCFStringEncodingUTF8);
    std::vector<char> buffer(c.size + 8, '\x55');  // guard bytes past `size`
    EXPECT_EQ(text.GetCString(buffer.data(), c.size, c.encoding), c.placed);
    const size_t written = c.placed ? std::strlen(c.bytes) : 0;
    EXPECT_EQ(std::string(buffer.data(), written), std::string(c.bytes, written));
    for (size_t i = written; i < c.size; ++i)
        ASSERT_EQ(buffer[i], 0) << "byte " << i;
    for (size_t i = c.size; i < buffer.size(); ++i)
        ASSERT_EQ(buffer[i], '\x55') << "wrote past the buffer at " << i;
}

INSTANTIATE_TEST_SUITE_P(
    GetCString, CStringExport,
    testing::Values(CStringCase{"0123456789", kASCII, 12, 0, ""},   // length + 2: too small
                    CStringCase{"0123456789", kASCII, 13, 10, "0123456789"},
                    CStringCase{"0123456789", kASCII, 40, 10, "0123456789"},
                    CStringCase{"0123456789", kASCII, 0, 0, ""},
                    CStringCase{"", kASCII, 3, 0, ""},
                    CStringCase{"Gr\xC3\xB6\xC3\x9F" "e", kASCII, 16, 5, "Gr??e"},
                    CStringCase{"Gr\xC3\xB6\xC3\x9F" "e", kCFStringEncodingUTF8, 9, 0, ""},
                    CStringCase{"Gr\xC3\xB6\xC3\x9F" "e", kCFStringEncodingUTF8, 10, 7,
                                "Gr\xC3\xB6\xC3\x9F" "e"}));

TEST(CQelStringTest, ByteLengthIsMaximumEncodedSizePlusTwo)
{
    const struct {
        const char* text;
        CFStringEncoding encoding;
        UInt32 expected;
    } cases[] = {
        {"", kASCII, 2},
        {"abc", kASCII, 5},
        {"abc", kCFStringEncodingUTF16, 8},
        {"abc", kCFStringEncodingUTF8, 11},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CQelString(c.text, kASCII).GetByteLength(c.encoding), c.expected) << c.text;
}

TEST(CQelStringTest, EqualityOperatorAnswersTrueWhenTextsDiffer)
{
    EXPECT_FALSE(CQelString("Sunny", kASCII) == CQelString("Sunny", kASCII));
    EXPECT_TRUE(CQelString("Sunny", kASCII) == CQelString("Shade", kASCII));
}

TEST(CQelStringTest, FormatWithKeyLeavesTextAloneWhenLookupFails)
{
    CQelString text("unchanged", kASCII);
    EXPECT_FALSE(text.LoadStringWithFormat(static_cast<const char*>(nullptr), 5));
    EXPECT_EQ(text.ToUTF8(), "unchanged");
    // An untranslated key is its own format.
    EXPECT_TRUE(text.LoadStringWithFormat("%d of %s", 3, "ten"));
    EXPECT_EQ(text.ToUTF8(), "3 of ten");
}

TEST(CQelStringTest, CopiesAreIndependentAndClearedStringsReusable)
{
    CQelString original("white", kASCII);
    CQelString copy(original);
    copy.Append(" balance", kASCII);
    CQelString assigned;
    assigned = original;
    original.Clear();
    EXPECT_EQ(original.GetLength(), 0);
    original.AppendFormat(CFSTR("%d"), 42);
    EXPECT_EQ(original.ToUTF8(), "42");
    EXPECT_EQ(copy.ToUTF8(), "white balance");
    EXPECT_EQ(assigned.ToUTF8(), "white");
    const CQelString& same = assigned;
    assigned = same;
    EXPECT_EQ(assigned.ToUTF8(), "white");
    EXPECT_EQ(CQelString(static_cast<const char*>(nullptr), kASCII).GetLength(), 0);
}

TEST(CQelStringTest, CStringPointerHoldsTerminatedBytesUntilTheTextChanges)
{
    CQelString text("ISO 100", kASCII);
    const char* bytes = text.GetCStringPtr(kASCII);
    ASSERT_NE(bytes, nullptr);
    EXPECT_STREQ(bytes, "ISO 100");
    EXPECT_EQ(text.GetCStringPtr(kASCII), bytes);  // asked again: the same bytes
    text.Append("0", kASCII);
    EXPECT_STREQ(text.GetCStringPtr(kASCII), "ISO 1000");
}

}  // namespace
