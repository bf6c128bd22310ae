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
#include <functional>
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
        const char* values[] = {language, lcAll, lcMessages, lang};
        for (size_t i = 0; i < kLocaleVariables.size(); ++i)
            Set(kLocaleVariables[i], values[i]);
    }

private:
    std::array<std::optional<std::string>, 4> saved_;
};

using Candidates = std::vector<std::string>;

constexpr char kJapaneseWB[] = "\xE3\x83\x9B\xE3\x83\xAF\xE3\x82\xA4\xE3\x83\x88\xE3\x83\x90\xE3\x83\xA9\xE3\x83\xB3\xE3\x82\xB9";
constexpr char kUnrelated[] = "QEL_UNRELATED_SETTING";
// Buffers handed to putenv must outlive their place in the environment.
char gLanguageEntry[] = "LANGUAGE=ja";
char gUnrelatedEntry[] = "QEL_UNRELATED_SETTING=1";

TEST(Language, CandidatesFromTheEnvironment)
{
    struct Case {
        const char* language;
        const char* lcAll;
        const char* lcMessages;
        const char* lang;
        Candidates expected;
    };
    const Case cases[] = {
        {nullptr, nullptr, nullptr, nullptr, {}},
        {"fr:de", nullptr, nullptr, "ja_JP.UTF-8", {"fr", "de", "ja_JP", "ja"}},
        {"pt_BR:pt", nullptr, nullptr, nullptr, {"pt_BR", "pt"}},
        {"", nullptr, nullptr, "ja_JP.UTF-8", {"ja_JP", "ja"}},
        {nullptr, "de_CH.UTF-8@euro", "fr_FR", "ja_JP", {"de_CH", "de"}},
        {nullptr, nullptr, "fr_FR", "ja_JP", {"fr_FR", "fr"}},
        {nullptr, "", "", "it_IT", {"it_IT", "it"}},
        {"en", "C", nullptr, "ja_JP", {"en"}},
        {nullptr, "C.UTF-8", nullptr, "ja", {}},
        {"POSIX::es", nullptr, nullptr, nullptr, {"es"}},
        {"zh-Hans", nullptr, nullptr, nullptr, {"zh-Hans", "zh"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(qelcf::LanguageCandidates(c.language, c.lcAll, c.lcMessages, c.lang), c.expected)
            << (c.language ? c.language : "-") << " " << (c.lang ? c.lang : "-");
}

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
        tree_.Write("lib/Test.framework/Resources/en.lproj/Units.strings", "\"IDS_MM\" = \"%d mm\";\n");
        tree_.Write("lib/Test.framework/Resources/ja.lproj/Localizable.strings",
                    Utf16LEWithBOM(u"\"IDS_WB\" = \"\u30DB\u30EF\u30A4\u30C8\u30D0\u30E9\u30F3\u30B9\";"));
        tree_.Write("lib/Test.framework/Resources/de_CH.lproj/Localizable.strings",
                    "\"IDS_WB\" = \"Weissabgleich\";");
        tree_.Write("lib/Test.framework/Resources/de.lproj/Localizable.strings", "\"IDS_WB\" = \"WB-de\";");
        tree_.Write("lib/Other.framework/Resources/Info.plist", InfoPlist("org.example.Other", "en"));
        tree_.Write("lib/NotAFramework/Resources/Info.plist", InfoPlist("org.example.Test", "en"));
        bundle_ = qelcf::CreateBundleAtPath(frameworkDir_);
    }
    void TearDown() override
    {
        CFRelease(bundle_);
        unsetenv(kUnrelated);
    }

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

TEST_F(BundleTest, FindsTheFrameworkByIdentifierAmongDirectories)
{
    const std::vector<std::string> directories = {tree_.Root() + "/missing", tree_.Root(),
                                                  tree_.Root() + "/lib"};
    EXPECT_EQ(qelcf::FindBundleDirectory(directories, "org.example.Test"), frameworkDir_);
    EXPECT_EQ(qelcf::FindBundleDirectory(directories, "org.example.Other"), tree_.Root() + "/lib/Other.framework");
    EXPECT_EQ(qelcf::FindBundleDirectory(directories, "org.example.None"), "");
    EXPECT_EQ(Utf8(CFBundleGetIdentifier(bundle_)), "org.example.Test");
}

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
        {nullptr, nullptr, "ja_JP.UTF-8", "ja", nullptr},
        {nullptr, "de_CH.UTF-8", "ja_JP.UTF-8", "de_CH", "Weissabgleich"},
        {"fr", "C", "it_IT", "en", "White Balance"},  // nothing installed: development region
        {nullptr, nullptr, nullptr, "en", "White Balance"},
        {"en", "C", nullptr, "en", "White Balance"},
    };
    for (const Case& c : cases) {
        environment_.SetAll(c.language, c.lcAll, nullptr, c.lang);
        EXPECT_EQ(qelcf::ChosenLanguage(bundle_), c.chosen) << (c.language ? c.language : "-");
        if (c.text) {
            EXPECT_EQ(Lookup(CFSTR("IDS_WB")), c.text) << c.chosen;
        }
    }
}

// Every kind of change to the environment is seen by the next lookup, the
// key given as a constant (remembered by address) or made at run time.
TEST_F(BundleTest, LanguageFollowsEveryChangeOfTheEnvironment)
{
    environment_.SetAll(nullptr, nullptr, nullptr, nullptr);
    std::memcpy(gLanguageEntry, "LANGUAGE=ja", sizeof gLanguageEntry);
    struct Step {
        const char* change;
        std::function<void()> apply;
        const char* expected;
    };
    const Step steps[] = {
        {"nothing set: the development region", [] {}, "White Balance"},
        {"LANG set", [] { setenv("LANG", "de_DE.UTF-8", 1); }, "WB-de"},
        {"an unrelated variable added", [] { setenv(kUnrelated, "0", 1); }, "WB-de"},
        {"LANGUAGE put from the host's buffer", [] { putenv(gLanguageEntry); }, kJapaneseWB},
        {"the host's buffer rewritten in place",
         [] { std::memcpy(gLanguageEntry, "LANGUAGE=en", sizeof gLanguageEntry); }, "White Balance"},
        {"an unrelated variable replaced", [] { putenv(gUnrelatedEntry); }, "White Balance"},
        {"LANGUAGE removed", [] { unsetenv("LANGUAGE"); }, "WB-de"},
        {"LC_ALL overrides LANG", [] { setenv("LC_ALL", "ja_JP.UTF-8", 1); }, kJapaneseWB},
        {"LANGUAGE set again", [] { setenv("LANGUAGE", "en", 1); }, "White Balance"},
        {"LANGUAGE set back to a value it had", [] { setenv("LANGUAGE", "de", 1); }, "WB-de"},
        {"...and again", [] { setenv("LANGUAGE", "en", 1); }, "White Balance"},
    };
    Owned<CFStringRef> madeKey(MakeString("IDS_WB"));
    for (const Step& step : steps) {
        step.apply();
        EXPECT_EQ(Lookup(CFSTR("IDS_WB")), step.expected) << step.change;
        EXPECT_EQ(Lookup(madeKey), step.expected) << step.change << ", asked again";
    }
    environment_.SetAll(nullptr, nullptr, nullptr, nullptr);
}

TEST_F(BundleTest, MissingKeysFallBackToTheValueOrTheKey)
{
    environment_.SetAll("en", nullptr, nullptr, nullptr);
    EXPECT_EQ(Lookup(CFSTR("IDS_WB"), CFSTR("ignored")), "White Balance");
    EXPECT_EQ(Lookup(CFSTR("IDS_NONE"), CFSTR("Default")), "Default");
    EXPECT_EQ(Lookup(CFSTR("IDS_NONE"), CFSTR("IDS_NONE")), "IDS_NONE");
    EXPECT_EQ(Lookup(CFSTR("IDS_NONE")), "IDS_NONE");
    EXPECT_EQ(Lookup(CFSTR("IDS_NONE"), CFSTR("")), "IDS_NONE");
    EXPECT_EQ(Lookup(nullptr, CFSTR("v")), "v");
    EXPECT_EQ(Lookup(nullptr), "");
    EXPECT_EQ(Lookup(CFSTR("IDS_AMP")), "A && B && C");
    EXPECT_EQ(Lookup(CFSTR("IDS_MM"), nullptr, CFSTR("Units")), "%d mm");
    EXPECT_EQ(Lookup(CFSTR("IDS_MM"), nullptr, CFSTR("NoSuchTable")), "IDS_MM");
    environment_.SetAll("de_CH", nullptr, nullptr, nullptr);
    EXPECT_EQ(Lookup(CFSTR("IDS_AMP")), "IDS_AMP") << "no fallback to another language's table";
}

TEST_F(BundleTest, TablesAreReadOnceAndKept)
{
    environment_.SetAll("en", nullptr, nullptr, nullptr);
    EXPECT_EQ(Lookup(CFSTR("IDS_WB")), "White Balance");
    std::filesystem::remove_all(frameworkDir_ + "/Resources/en.lproj");
    EXPECT_EQ(Lookup(CFSTR("IDS_WB")), "White Balance");
    // A changed environment is noticed on the next lookup.
    environment_.SetAll("de_CH", nullptr, nullptr, nullptr);
    EXPECT_EQ(Lookup(CFSTR("IDS_WB")), "Weissabgleich");
    environment_.SetAll("en", nullptr, nullptr, nullptr);
    EXPECT_EQ(Lookup(CFSTR("IDS_WB")), "White Balance");
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
    EXPECT_EQ(CFBundleGetBundleWithIdentifier(CFSTR("org.qelimginfo.QelImgInfo")), framework);
    CFRelease(framework);  // harmless: found bundles live for the process
    EXPECT_EQ(Utf8(CFBundleGetIdentifier(framework)), "org.qelimginfo.QelImgInfo");
    EXPECT_EQ(CFBundleGetBundleWithIdentifier(CFSTR("org.example.NotInstalled")), nullptr);
    EXPECT_EQ(CFBundleOpenBundleResourceMap(framework), -1);
}

TEST(Bundle, MainBundleAnswersDefaultsWithoutResources)
{
    CFBundleRef main = CFBundleGetMainBundle();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(CFBundleGetMainBundle(), main);
    Owned<CFStringRef> text(CFBundleCopyLocalizedString(main, CFSTR("IDS_QEL_NOT_THERE"), CFSTR("IDS_QEL_NOT_THERE"), nullptr));
    EXPECT_EQ(Utf8(text), "IDS_QEL_NOT_THERE");
}

}  // namespace
