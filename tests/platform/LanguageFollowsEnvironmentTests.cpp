// A bundle answers every lookup in the language the environment names at
// that moment, however the environment was changed, while repeated lookups
// in an unchanged environment do not read the locale variables again.
#include "CFBundleInternal.h"
#include "PlatformTestSupport.h"
#include "TempTree.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <string>

namespace {

constexpr std::array<const char*, 4> kLocaleVariables = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
constexpr char kUnrelated[] = "QEL_UNRELATED_SETTING";

// Buffers handed to putenv must outlive their place in the environment.
char gLanguageEntry[] = "LANGUAGE=ja";
char gUnrelatedEntry[] = "QEL_UNRELATED_SETTING=1";

class LanguageFollowsEnvironment : public testing::Test {
protected:
    void SetUp() override
    {
        for (size_t i = 0; i < kLocaleVariables.size(); ++i) {
            const char* value = std::getenv(kLocaleVariables[i]);
            saved_[i] = value ? std::optional<std::string>(value) : std::nullopt;
            unsetenv(kLocaleVariables[i]);
        }
        const std::string resources = "Test.framework/Resources/";
        tree_.Write(resources + "Info.plist", InfoPlist("org.example.Follow", "en"));
        tree_.Write(resources + "en.lproj/Localizable.strings", "\"IDS_WB\" = \"White Balance\";");
        tree_.Write(resources + "ja.lproj/Localizable.strings", "\"IDS_WB\" = \"WB-ja\";");
        tree_.Write(resources + "de.lproj/Localizable.strings", "\"IDS_WB\" = \"Weissabgleich\";");
        bundle_ = qelcf::CreateBundleAtPath(tree_.Root() + "/Test.framework");
    }
    void TearDown() override
    {
        CFRelease(bundle_);
        unsetenv(kUnrelated);
        for (size_t i = 0; i < kLocaleVariables.size(); ++i) {
            if (saved_[i])
                setenv(kLocaleVariables[i], saved_[i]->c_str(), 1);
            else
                unsetenv(kLocaleVariables[i]);
        }
        std::memcpy(gLanguageEntry, "LANGUAGE=ja", sizeof gLanguageEntry);
    }

    // The key as a constant, which the bundle remembers by address, and as
    // a string made at run time must find the same text.
    std::string Lookup()
    {
        Owned<CFStringRef> text(CFBundleCopyLocalizedString(bundle_, CFSTR("IDS_WB"), nullptr, nullptr));
        Owned<CFStringRef> madeKey(MakeString("IDS_WB"));
        Owned<CFStringRef> same(CFBundleCopyLocalizedString(bundle_, madeKey, nullptr, nullptr));
        EXPECT_EQ(Utf8(same), Utf8(text));
        return Utf8(text);
    }

    TempTree tree_;
    CFBundleRef bundle_ = nullptr;
    std::array<std::optional<std::string>, 4> saved_;
};

TEST_F(LanguageFollowsEnvironment, EveryKindOfChangeIsSeenByTheNextLookup)
{
    struct Step {
        const char* change;
        std::function<void()> apply;
        const char* expected;
    };
    const Step steps[] = {
        {"nothing set: the development region", [] {}, "White Balance"},
        {"LANG set", [] { setenv("LANG", "de_DE.UTF-8", 1); }, "Weissabgleich"},
        {"an unrelated variable added", [] { setenv(kUnrelated, "0", 1); }, "Weissabgleich"},
        {"LANGUAGE put from the host's buffer", [] { putenv(gLanguageEntry); }, "WB-ja"},
        {"the host's buffer rewritten in place",
         [] { std::memcpy(gLanguageEntry, "LANGUAGE=en", sizeof gLanguageEntry); }, "White Balance"},
        {"an unrelated variable replaced", [] { putenv(gUnrelatedEntry); }, "White Balance"},
        {"LANGUAGE removed", [] { unsetenv("LANGUAGE"); }, "Weissabgleich"},
        {"LC_ALL overrides LANG", [] { setenv("LC_ALL", "ja_JP.UTF-8", 1); }, "WB-ja"},
        {"LANGUAGE set again", [] { setenv("LANGUAGE", "en", 1); }, "White Balance"},
        {"LANGUAGE set back to a value it had", [] { setenv("LANGUAGE", "de", 1); }, "Weissabgleich"},
        {"...and again", [] { setenv("LANGUAGE", "en", 1); }, "White Balance"},
    };
    for (const Step& step : steps) {
        step.apply();
        EXPECT_EQ(Lookup(), step.expected) << step.change;
        EXPECT_EQ(Lookup(), step.expected) << step.change << ", asked again";
        EXPECT_EQ(qelcf::ChosenLanguage(bundle_), qelcf::ChosenLanguage(bundle_)) << step.change;
    }
}

}  // namespace
