// SPDX-License-Identifier: MIT
#include "CQelString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr CFStringEncoding kASCII = kCFStringEncodingASCII;
constexpr CFStringEncoding kUTF8 = kCFStringEncodingUTF8;

// Keys without a translation come back as themselves, so they carry the
// texts whose doubled ampersands are unescaped: only the first pair.
TEST(Ampersands, OnlyTheFirstPairIsUnescaped)
{
    for (auto [key, text] : {std::pair{"IDS_QEL_NO_SUCH_KEY", "IDS_QEL_NO_SUCH_KEY"}, {"R&&D", "R&D"},
                             {"A&&B&&C", "A&B&&C"}, {"&&&&", "&&&"}}) {
        CQelString loaded;
        EXPECT_TRUE(loaded.LoadString(key));
        EXPECT_EQ(loaded.ToUTF8(), text);
    }
}

// The whole text or a zero-filled buffer, never more than `size` bytes; the
// buffer must exceed the text by two.
TEST(CStringExport, WholeTextOrZeroFilledBuffer)
{
    const struct { const char* text; CFStringEncoding encoding; UInt32 size; std::string delivered; } cases[] = {
        {"0123456789", kASCII, 12, ""}, {"0123456789", kASCII, 13, "0123456789"}, {"0123456789", kASCII, 0, ""},
        {"Gr\xC3\xB6\xC3\x9F" "e", kASCII, 16, "Gr??e"}, {"Gr\xC3\xB6\xC3\x9F" "e", kUTF8, 9, ""},
        {"Gr\xC3\xB6\xC3\x9F" "e", kUTF8, 10, "Gr\xC3\xB6\xC3\x9F" "e"},
    };
    for (const auto& c : cases) {
        std::vector<char> buffer(c.size + 4, 'x');  // guard bytes past `size`
        EXPECT_EQ(CQelString(c.text, kUTF8).GetCString(buffer.data(), c.size, c.encoding), c.delivered.size());
        std::string expected = c.delivered;
        expected.resize(c.size, '\0');
        EXPECT_EQ(std::string(buffer.data(), c.size), expected) << c.text << " in " << c.size;
        EXPECT_EQ(std::string(buffer.data() + c.size, 4), "xxxx");
    }
}

TEST(CQelStringTest, ByteLengthsEqualityFormatsAndTheCachedPointer)
{
    EXPECT_EQ(CQelString().GetByteLength(kASCII), 2u);
    EXPECT_EQ(CQelString("abc", kASCII).GetByteLength(kCFStringEncodingUTF16), 8u);
    // Inverted on purpose, as hosts have always seen it: equal texts compare false.
    EXPECT_FALSE(CQelString("Sunny", kASCII) == CQelString("Sunny", kASCII));
    EXPECT_TRUE(CQelString("Sunny", kASCII) == CQelString("Shade", kASCII));

    CQelString text("unchanged", kASCII);
    EXPECT_FALSE(text.LoadStringWithFormat(static_cast<const char*>(nullptr), 5));
    EXPECT_EQ(text.ToUTF8(), "unchanged");
    EXPECT_TRUE(text.LoadStringWithFormat("%d of %s", 3, "ten"));  // the key is its own format
    EXPECT_EQ(text.ToUTF8(), "3 of ten");

    const char* bytes = text.GetCStringPtr(kASCII);
    EXPECT_EQ(text.GetCStringPtr(kASCII), bytes);
    text.Append("0", kASCII);
    EXPECT_STREQ(text.GetCStringPtr(kASCII), "3 of ten0");
    text.Clear();
    EXPECT_STREQ(text.GetCStringPtr(kASCII), "");
}

}  // namespace
