// SPDX-License-Identifier: MIT
// Numbers take the decimal separator of the user's language, through every
// way the library prints them, whatever numeric locale the host has set.
#include "TestImgInfo.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

namespace {

using namespace QelItem;

// Sets LANGUAGE (and optionally the C numeric locale) for one test.
class LanguageScope {
public:
    explicit LanguageScope(const char* language) { setenv("LANGUAGE", language, 1); }
    ~LanguageScope()
    {
        setenv("LANGUAGE", "en", 1);
        std::setlocale(LC_NUMERIC, "C");
    }
};

// A German numeric locale (decimal comma), made with localedef when the
// system has none installed; false when neither is possible.
bool UseGermanNumbers()
{
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8"))
        return true;
    const std::string made = (std::filesystem::temp_directory_path() / "qel-locales").string();
    std::filesystem::create_directories(made);
    const std::string command = "localedef -i de_DE -f UTF-8 " + made + "/de_DE.UTF-8 >/dev/null 2>&1";
    if (!std::filesystem::exists(made + "/de_DE.UTF-8") && std::system(command.c_str()) != 0)
        return false;
    setenv("LOCPATH", made.c_str(), 1);
    return std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
}

TEST(NumberStyle, EveryPrintedNumberTakesTheLanguagesSeparator)
{
    const struct {
        const char* language;
        bool germanHostLocale;
        const char* compensation;  // printed, then passed to a format as text
        const char* time;          // printed twice, then formatted
        const char* stamp;         // printed and appended
        const char* altitude;      // a double given to a localized format
    } cases[] = {
        {"en", false, "-0.7", "1/3.3", "09:05:7.50", "4.5"},
        {"de", false, "-0,7", "1/3,3", "09:05:7,50", "4,5"},
        {"ja", false, "-0.7", "1/3.3", "09:05:7.50", "4.5"},
        {"en", true, "-0.7", "1/3.3", "09:05:7.50", "4.5"},
        {"de", true, "-0,7", "1/3,3", "09:05:7,50", "4,5"},
    };
    // Titles follow the language from read to read, back to one read before.
    std::map<std::string, std::string> titles;
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.language << (c.germanHostLocale ? " in de_DE" : ""));
        LanguageScope language(c.language);
        if (c.germanHostLocale && !UseGermanNumbers()) {
            std::cout << "no German locale can be made: host-locale rows skipped\n";
            continue;
        }
        MemoryTagSource slr;
        slr.Text(271, "TALVO").Text(272, "TALVO Q77");
        slr.ValueStep(kExposureComp, -4, 1, 6).Double(kExposureTime, 0.3).Double(0x829D, 5.6);
        slr.Doubles(kGPSTimeStamp, {9.0, 5.0, 7.5}).Double(kGPSAltitude, 4.5);
        TestImgInfo info;
        info.ReadFileTags(&slr);
        EXPECT_NE(info.Value(kExposureComp).value_or("").find(c.compensation), std::string::npos)
            << *info.Value(kExposureComp);
        EXPECT_NE(info.Value(kExposureTime).value_or("").find(c.time), std::string::npos)
            << *info.Value(kExposureTime);
        EXPECT_EQ(info.Value(kGPSTimeStamp), c.stamp);
        EXPECT_NE(info.Value(kGPSAltitude).value_or("").find(c.altitude), std::string::npos)
            << info.Value(kGPSAltitude).value_or("<none>");
        const std::string title = info.Title(kExposureTime).value_or("");
        EXPECT_EQ(titles.emplace(c.language, title).first->second, title);
    }
    std::set<std::string> distinct;
    for (const auto& [language, title] : titles)
        distinct.insert(title);
    EXPECT_EQ(distinct.size(), titles.size());
}

}  // namespace
