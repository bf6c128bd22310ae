// SPDX-License-Identifier: MIT
// Strings tables: syntax, escapes, encodings and malformed files.
#include "PlatformTestSupport.h"
#include "StringsFile.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using Entries = std::vector<std::pair<std::u16string, std::u16string>>;

struct ParseCase {
    const char* name;
    std::string bytes;
    Entries expected;  // every entry must be found with this text
    size_t size;
};

TEST(StringsFile, ParsesEntriesCommentsAndEscapes)
{
    const ParseCase cases[] = {
        {"pairs", "\"IDS_QEL_WB\" = \"White Balance\";\n\"IDS_QEL_ISO\"=\"ISO\";",
         {{u"IDS_QEL_WB", u"White Balance"}, {u"IDS_QEL_ISO", u"ISO"}}, 2},
        {"comments", "/* White balance\n   block */\n// line comment\n\"A\" = /* inside */ \"B\"; // tail\n",
         {{u"A", u"B"}}, 1},
        {"escapes", R"("k" = "q\"b\\n\nt\tr\r";)", {{u"k", u"q\"b\\n\nt\tr\r"}}, 1},
        {"unicode escape", R"("deg" = "\U00B0 \u00b5s";)", {{u"deg", u"\u00B0 \u00B5s"}}, 1},
        {"octal escape", R"("o" = "\101\60x";)", {{u"o", u"A0x"}}, 1},
        {"printf formats kept", "\"EV\" = \"%+.1f EV %1$@ %%\";", {{u"EV", u"%+.1f EV %1$@ %%"}}, 1},
        {"bare words", "key_1 = value.2;", {{u"key_1", u"value.2"}}, 1},
        {"utf-8 with BOM", "\xEF\xBB\xBF\"f\" = \"caf\xC3\xA9\";", {{u"f", u"caf\u00E9"}}, 1},
        {"utf-16le with BOM", Utf16LEWithBOM(u"\"j\" = \"\u65E5\u672C\";"), {{u"j", u"\u65E5\u672C"}}, 1},
        {"empty", "", {}, 0},
    };
    for (const ParseCase& c : cases) {
        qelcf::StringTable table;
        qelcf::StringsFileError error;
        EXPECT_TRUE(qelcf::ParseStringsFile(c.bytes, table, error)) << c.name << ": " << error.message;
        EXPECT_EQ(table.Size(), c.size) << c.name;
        for (const auto& [key, value] : c.expected)
            EXPECT_EQ(Utf8(table.Find(key)), Utf8(value)) << c.name;
    }
}

TEST(StringsFile, MalformedTextIsRejectedWithItsLine)
{
    const std::pair<std::string, int> cases[] = {
        {"\"a\" = \"1\";\n\"b\" = \"2\"\n\"c\" = \"3\";", 3},   // missing ';'
        {"\"a\" = \"1\";\n\n\"b = \"2\";", 3},                  // unterminated string
        {"\"a\" = \"1\";\n/* never closed\n", 2},
        {"\"a\" =", 1},
        {"\"a\" = \"1\";\n\"b\" = \"\xFF\";", 2},  // not UTF-8
    };
    for (const auto& [bytes, line] : cases) {
        qelcf::StringTable table;
        qelcf::StringsFileError error;
        EXPECT_FALSE(qelcf::ParseStringsFile(bytes, table, error)) << bytes;
        EXPECT_EQ(error.line, line) << bytes;
        EXPECT_FALSE(error.message.empty());
        EXPECT_EQ(table.Size(), 0u) << "a malformed table must be empty: " << bytes;
    }
}

}  // namespace
