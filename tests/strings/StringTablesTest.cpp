// SPDX-License-Identifier: MIT
// The string tables against the code and against each other.
#include "StringsFile.h"
#include "../support/Utf8.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const fs::path kSource = QEL_SOURCE_DIR;
constexpr unsigned kExposureComp = 0x9204;

std::string ReadFile(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

// Every key the library's sources load.
std::set<std::string> KeysInCode()
{
    std::set<std::string> keys;
    const std::regex key("\"(IDS_QEL_[A-Z0-9_]+)\"");
    for (const char* folder : {"Framework", "String", "Dictionary", "TagControl", "ImgInfo", "Items"}) {
        for (const auto& entry : fs::recursive_directory_iterator(kSource / folder)) {
            std::string text = ReadFile(entry.path());
            for (std::sregex_iterator it(text.begin(), text.end(), key), end; it != end; ++it)
                keys.insert((*it)[1]);
        }
    }
    return keys;
}

struct Table {
    std::string language;
    std::map<std::string, std::string> texts;
};

std::vector<Table> Tables()
{
    std::vector<Table> tables;
    for (const auto& entry : fs::directory_iterator(kSource / "Resources")) {
        fs::path file = entry.path() / "Localizable.strings";
        if (entry.path().extension() != ".lproj" || !fs::exists(file))
            continue;
        qelcf::StringTable parsed;
        qelcf::StringsFileError error;
        Table table{entry.path().stem().string(), {}};
        EXPECT_TRUE(qelcf::ParseStringsFile(ReadFile(file), parsed, error))
            << file << ":" << error.line << ": " << error.message;
        parsed.ForEach([&](const std::u16string& key, CFStringRef text) {
            std::vector<UniChar> units(static_cast<size_t>(CFStringGetLength(text)));
            if (!units.empty())
                CFStringGetCharacters(text, CFRangeMake(0, static_cast<CFIndex>(units.size())), units.data());
            table.texts[Utf8(key)] = Utf8(std::u16string(units.begin(), units.end()));
        });
        tables.push_back(std::move(table));
    }
    std::sort(tables.begin(), tables.end(),
              [](const Table& a, const Table& b) { return a.language < b.language; });
    return tables;
}

// The arguments each format key receives (Resources/FormatKeys.txt).
std::map<std::string, std::string> FormatSignatures()
{
    std::map<std::string, std::string> signatures;
    std::istringstream lines(ReadFile(kSource / "Resources" / "FormatKeys.txt"));
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream words(line);
        std::string key, argument, signature;
        words >> key;
        while (words >> argument)
            signature += argument;
        signatures[key] = signature;
    }
    return signatures;
}

// What a conversion character accepts: s a C string, d/u an integer, f a double.
char ArgumentClass(char conversion)
{
    switch (conversion) {
    case 's': case '@': return 's';
    case 'd': case 'i': case 'u': case 'x': case 'X': case 'o': case 'c': return 'd';
    case 'f': case 'F': case 'e': case 'E': case 'g': case 'G': case 'a': case 'A': return 'f';
    default: return 0;
    }
}

// Checks one format text against the arguments passed; empty when it fits.
std::string CheckFormat(const std::string& text, const std::string& signature)
{
    const std::regex conversion(R"(%(?:(\d+)\$)?[-+ #0']*(\d+|\*)?(?:\.(\d+|\*))?(hh|h|ll|l|z|j|t|q|L)?(.?))");
    size_t sequential = 0, positional = 0;
    std::set<size_t> used;
    for (std::sregex_iterator it(text.begin(), text.end(), conversion), end; it != end; ++it) {
        const std::smatch& m = *it;
        if (m[5] == "%" && m[0] == "%%")
            continue;
        if (m[2] == "*" || m[3] == "*")
            return "takes a width or precision argument the code does not pass";
        char cls = m[5].length() ? ArgumentClass(m[5].str()[0]) : 0;
        if (!cls)
            return "unknown conversion " + m[0].str();
        size_t position = m[1].matched ? std::stoul(m[1]) : ++sequential;
        positional += m[1].matched;
        if (position < 1 || position > signature.size())
            return m[0].str() + " names an argument that is not passed";
        char expected = signature[position - 1] == 'u' ? 'd' : signature[position - 1];
        if (cls != expected)
            return m[0].str() + " does not fit argument " + std::to_string(position);
        used.insert(position);
    }
    if (positional && sequential)
        return "mixes positional and sequential conversions";
    if (!positional && sequential != signature.size())
        return "uses " + std::to_string(sequential) + " of " + std::to_string(signature.size()) +
               " arguments in order";
    if (used.empty() && !signature.empty())
        return "shows none of its arguments";
    return {};
}

TEST(StringTables, HoldExactlyTheKeysTheLibraryLoads)
{
    const std::set<std::string> used = KeysInCode();
    ASSERT_GT(used.size(), 300u);
    const std::vector<Table> tables = Tables();
    ASSERT_FALSE(tables.empty());
    for (const Table& table : tables) {
        for (const std::string& key : used)
            EXPECT_TRUE(table.texts.count(key)) << table.language << " lacks " << key;
        for (const auto& entry : table.texts)
            EXPECT_TRUE(used.count(entry.first)) << table.language << " has unused " << entry.first;
    }
}

TEST(StringTables, FormatTextsAcceptTheArgumentsTheCodePasses)
{
    const auto signatures = FormatSignatures();
    const std::set<std::string> used = KeysInCode();
    for (const auto& signature : signatures)
        EXPECT_TRUE(used.count(signature.first)) << signature.first << " is not loaded by the code";
    for (const Table& table : Tables()) {
        for (const auto& [key, text] : table.texts) {
            auto signature = signatures.find(key);
            if (signature == signatures.end()) {
                // Plain texts are shown as they stand; a '%' there would show raw.
                EXPECT_EQ(text.find('%'), std::string::npos) << table.language << " " << key;
                continue;
            }
            EXPECT_EQ(CheckFormat(text, signature->second), "")
                << table.language << " " << key << " = \"" << text << "\"";
        }
    }
}

std::string Output(const std::string& command)
{
    std::string output;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        size_t n;
        while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0)
            output.append(buffer, n);
        pclose(pipe);
    }
    return output;
}

// The folder of each language we ship and the decimal separator it writes.
const std::map<std::string, std::string> kSeparators = {
    {"en", "."}, {"ja", "."}, {"ko", "."}, {"zh-Hans", "."}, {"zh-Hant", "."},
    {"de", ","}, {"fr", ","}, {"es", ","}, {"it", ","}, {"nl", ","}, {"pt-BR", ","},
    {"sv", ","}, {"da", ","}, {"fi", ","}, {"nb", ","}, {"pl", ","}, {"cs", ","},
    {"sk", ","}, {"ru", ","}, {"tr", ","},
};

TEST(StringTables, EachLanguageNamesItsDecimalSeparator)
{
    for (const Table& table : Tables()) {
        auto named = table.texts.find("IDS_QEL_DECIMAL_SEPARATOR");
        if (named == table.texts.end()) {
            ADD_FAILURE() << table.language << " names no decimal separator";
            continue;
        }
        // A folder named otherwise (pt_BR, zh_CN) is one no locale reaches.
        auto expected = kSeparators.find(table.language);
        if (expected != kSeparators.end())
            EXPECT_EQ(named->second, expected->second) << table.language;
        else
            ADD_FAILURE() << table.language << ".lproj is not a language folder we know";
    }
}

// Hosts that take 8-bit text receive the tables in MacRoman, Latin-1 or
// Shift_JIS: narrow no-break spaces and Roman-numeral signs come out as '?'.
TEST(StringTables, TextsKeepToCharactersEightBitHostsCarry)
{
    const char* lost[] = {"\u202F", "\u2160", "\u2161", "\u2162"};
    for (const Table& table : Tables())
        for (const auto& [key, text] : table.texts)
            for (const char* character : lost)
                EXPECT_TRUE(text.find(character) == std::string::npos) << table.language << " " << key;
}

// Each language shows every cell of the sample SLR, compact, movie and
// scanner grids, and never a raw key; the SLR's exposure compensation shows
// its number in the language's style.
TEST(StringTables, EveryLanguageFillsTheSampleGrids)
{
    const char* samples[] = {"talvo-q77.json", "merivax-e7310.json", "merivax-3710-movie.json",
                             "talvo-filmscan-f40.json"};
    for (const Table& table : Tables()) {
        std::string command = std::string(QELINFO_PATH) + " --format json --lang " + table.language;
        for (const char* sample : samples)
            command += " " + (kSource / "samples" / sample).string();
        std::istringstream lines(Output(command + " 2>&1"));
        int files = 0;
        const std::string& separator = table.texts.count("IDS_QEL_DECIMAL_SEPARATOR")
                                           ? table.texts.at("IDS_QEL_DECIMAL_SEPARATOR") : ".";
        for (std::string line; std::getline(lines, line);) {
            ++files;
            EXPECT_EQ(line.find("IDS_QEL_"), std::string::npos) << table.language << ": " << line;
            nlohmann::json file = nlohmann::json::parse(line, nullptr, false);
            ASSERT_FALSE(file.is_discarded()) << line;
            std::map<unsigned, std::string> lineOf;
            for (const auto& item : file["items"])
                if (item["line"].is_string())
                    lineOf[item["id"].get<unsigned>()] = item["line"].get<std::string>();
            if (files == 1) {
                EXPECT_NE(lineOf[kExposureComp].find("-0" + separator + "3"), std::string::npos)
                    << table.language << ": " << lineOf[kExposureComp];
            }
            for (const auto& row : file["grid"]["cells"])
                for (const auto& cell : row) {
                    unsigned id = cell.get<unsigned>();
                    if (id) {
                        EXPECT_FALSE(lineOf[id].empty())
                            << table.language << " " << file["file"] << " item " << id;
                    }
                }
        }
        EXPECT_EQ(files, 4) << table.language;
    }
}

}  // namespace
