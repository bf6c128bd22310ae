// SPDX-License-Identifier: MIT
// Bundles: finding a framework by identifier, choosing the language from
// the environment at the moment of each lookup, and localized lookups with
// their fallbacks.
#include "CFBundleInternal.h"
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <vector>

namespace {

constexpr std::array<const char*, 4> kLocaleVariables = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};

// Sets the locale variables for one test and restores them afterwards.
class LocaleEnvironment {
public:
    LocaleEnvironment()
    {
        for (size_t i = 0; i < kLocaleVariables.size(); ++i)
            if (const char* value = std::getenv(kLocaleVariables[i]))
                saved_[i] = value;
    }
    ~LocaleEnvironment()
    {
        for (size_t i = 0; i < kLocaleVariables.size(); ++i)
            Set(kLocaleVariables[i], saved_[i] ? saved_[i]->c_str() : nullptr);
    }
    static void Set(const char* name, const char* value) { value ? setenv(name, value, 1) : unsetenv(name); }
    void SetAll(const char* language, const char* lcAll, const char* lcMessages, const char* lang)
    {
        for (auto [name, value] : {std::pair{"LANGUAGE", language}, {"LC_ALL", lcAll},
                                   {"LC_MESSAGES", lcMessages}, {"LANG", lang}})
            Set(name, value);
    }

private:
    std::array<std::optional<std::string>, 4> saved_;
};

constexpr char kJapaneseWB[] = "\xE3\x83\x9B\xE3\x83\xAF\xE3\x82\xA4\xE3\x83\x88\xE3\x83\x90\xE3\x83\xA9\xE3\x83\xB3\xE3\x82\xB9";

// A framework with English (development region), Japanese in UTF-16, a
// German and a Swiss German table, in a temporary tree.
class BundleTest : public testing::Test {
protected:
    void SetUp() override
    {
        frameworkDir_ = tree_.Root() + "/lib/Test.framework";
        tree_.Write("lib/Test.framework/Resources/Info.plist", InfoPlist("org.example.Test", "en"));
        tree_.Write("lib/Test.framework/Resources/en.lproj/Localizable.strings",
                    "/* White balance */\n\"IDS_WB\" = \"White Balance\";\n\"IDS_AMP\" = \"A && B && C\";\n");
        tree_.Write("lib/Test.framework/Resources/ja.lproj/Localizable.strings",
                    Utf16LEWithBOM(u"\"IDS_WB\" = \"\u30DB\u30EF\u30A4\u30C8\u30D0\u30E9\u30F3\u30B9\";"));
        tree_.Write("lib/Test.framework/Resources/de_CH.lproj/Localizable.strings",
                    "\"IDS_WB\" = \"Weissabgleich\";");
        tree_.Write("lib/Test.framework/Resources/de.lproj/Localizable.strings", "\"IDS_WB\" = \"WB-de\";");
        bundle_ = qelcf::CreateBundleAtPath(frameworkDir_);
    }
    void TearDown() override { CFRelease(bundle_); }

    std::string Lookup(CFStringRef key, CFStringRef value = nullptr, CFStringRef table = nullptr)
    {
        Owned<CFStringRef> text(CFBundleCopyLocalizedString(bundle_, key, value, table));
        return Utf8(text);
    }

    TempTree tree_;
    std::string frameworkDir_;
    CFBundleRef bundle_ = nullptr;
    LocaleEnvironment environment_;
};

TEST_F(BundleTest, ChoosesTheFirstInstalledLanguage)
{
    struct Case {
        const char* language;
        const char* lcAll;
        const char* lang;
        const char* chosen;
        const char* text;
    };
    const Case cases[] = {
        {"ja", nullptr, nullptr, "ja", kJapaneseWB},
        {"fr:de_CH:en", nullptr, nullptr, "de_CH", "Weissabgleich"},
        {nullptr, "de_CH.UTF-8", "ja_JP.UTF-8", "de_CH", "Weissabgleich"},
        {nullptr, nullptr, "ja_JP.UTF-8", "ja", kJapaneseWB},
        {"fr", "C", "it_IT", "en", "White Balance"},  // nothing installed: development region
        {"en", "C", nullptr, "en", "White Balance"},
    };
    for (const Case& c : cases) {
        environment_.SetAll(c.language, c.lcAll, nullptr, c.lang);
        EXPECT_EQ(qelcf::ChosenLanguage(bundle_), c.chosen) << (c.language ? c.language : "-");
        EXPECT_EQ(Lookup(CFSTR("IDS_WB")), c.text) << c.chosen;
    }
}

// POSIX locale names reach the folders named as the tables are, whatever
// other tables are installed.
TEST(Language, LocaleNamesReachTheShippedFolders)
{
    TempTree tree;
    const std::string framework = "Test.framework";
    tree.Write(framework + "/Resources/Info.plist", InfoPlist("org.example.Test", "en"));
    for (const char* folder : {"en", "de", "ja", "zh-Hans", "zh-Hant", "pt-BR", "nb"})
        tree.Write(framework + "/Resources/" + folder + ".lproj/Localizable.strings", "\"K\" = \"v\";\n");
    CFBundleRef bundle = qelcf::CreateBundleAtPath(tree.Root() + "/" + framework);
    LocaleEnvironment environment;
    const struct {
        const char* language;
        const char* lang;
        const char* chosen;
    } cases[] = {
        {nullptr, "zh_CN.UTF-8", "zh-Hans"}, {nullptr, "zh_SG", "zh-Hans"},
        {nullptr, "zh_TW.UTF-8", "zh-Hant"}, {nullptr, "zh_HK", "zh-Hant"},
        {nullptr, "pt_BR.UTF-8", "pt-BR"},   {nullptr, "pt_PT", "pt-BR"},
        {"pt", nullptr, "pt-BR"},            {nullptr, "nb_NO.UTF-8", "nb"},
        {"no", nullptr, "nb"},               {nullptr, "de_AT.UTF-8@euro", "de"},
        {nullptr, "de_CH", "de"},            {"sr:de", "ja_JP", "de"},
        {"", "ja_JP.UTF-8", "ja"},           {"zh_Hant_TW", nullptr, "zh-Hant"},
        {"sr", "ja_JP.UTF-8", "ja"},         {"sr", nullptr, "en"},
        {nullptr, "C", "en"},                {nullptr, "POSIX", "en"},
    };
    for (const auto& c : cases) {
        environment.SetAll(c.language, nullptr, nullptr, c.lang);
        EXPECT_EQ(qelcf::ChosenLanguage(bundle), c.chosen)
            << (c.language ? c.language : "-") << " " << (c.lang ? c.lang : "-");
    }
    CFRelease(bundle);
}

TEST_F(BundleTest, MissingKeysFallBackToTheValueOrTheKey)
{
    environment_.SetAll("en", nullptr, nullptr, nullptr);
    EXPECT_EQ(Lookup(CFSTR("IDS_WB"), CFSTR("ignored")), "White Balance");
    EXPECT_EQ(Lookup(CFSTR("IDS_NONE"), CFSTR("Default")), "Default");
    EXPECT_EQ(Lookup(CFSTR("IDS_NONE")), "IDS_NONE");
    EXPECT_EQ(Lookup(CFSTR("IDS_NONE"), CFSTR("")), "IDS_NONE");
    EXPECT_EQ(Lookup(nullptr), "");
    EXPECT_EQ(Lookup(CFSTR("IDS_AMP")), "A && B && C");
    EXPECT_EQ(Lookup(CFSTR("IDS_WB"), nullptr, CFSTR("NoSuchTable")), "IDS_WB");
    environment_.SetAll("de_CH", nullptr, nullptr, nullptr);
    EXPECT_EQ(Lookup(CFSTR("IDS_AMP")), "IDS_AMP") << "no fallback to another language's table";
}

TEST_F(BundleTest, MalformedTableAnswersDefaultsAndIsReportedOnce)
{
    tree_.Write("lib/Test.framework/Resources/fr.lproj/Localizable.strings", "\"IDS_WB\" = \"Balance\"\n");
    environment_.SetAll("fr", nullptr, nullptr, nullptr);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Lookup(CFSTR("IDS_WB")), "IDS_WB");
    EXPECT_EQ(Lookup(CFSTR("IDS_WB"), CFSTR("dflt")), "dflt");
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_NE(report.find("fr.lproj/Localizable.strings:2:"), std::string::npos) << report;
    EXPECT_EQ(report.find('\n'), report.size() - 1) << "reported once: " << report;
}

TEST(Bundle, TheBuildTreeFrameworkIsFoundBesideTheProgram)
{
    const std::vector<std::string> directories = qelcf::LoadedObjectDirectories();
    ASSERT_FALSE(directories.empty());
    // Installed, the framework sits beside the shared library rather than
    // the program: the directories of loaded libraries are searched too.
    Dl_info icu{};
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&ucnv_open), &icu), 0);
    const std::string icuDirectory = std::filesystem::canonical(icu.dli_fname).parent_path().string();
    EXPECT_NE(std::find(directories.begin(), directories.end(), icuDirectory), directories.end())
        << icuDirectory;
    CFBundleRef framework = CFBundleGetBundleWithIdentifier(CFSTR("org.qelimginfo.QelImgInfo"));
    ASSERT_NE(framework, nullptr) << "QelImgInfo.framework beside " << directories.front();
    CFRelease(framework);  // harmless: found bundles live for the process
    EXPECT_EQ(Utf8(CFBundleGetIdentifier(framework)), "org.qelimginfo.QelImgInfo");
    EXPECT_EQ(CFBundleGetBundleWithIdentifier(CFSTR("org.example.NotInstalled")), nullptr);
    EXPECT_EQ(CFBundleOpenBundleResourceMap(framework), -1);
}

}  // namespace
