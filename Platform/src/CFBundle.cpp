// SPDX-License-Identifier: MIT
// CFBundle: finding bundles and looking up their localized strings.
//
// Every table is read on its first use and kept with the bundle; the
// language is resolved again only when the locale variables change. A
// repeated lookup costs a lock, a comparison of the environment's entry
// pointers with those it last saw, and one hash lookup of the key (of its
// address for a constant key).
#include "CFBundleInternal.h"

#include "CFRuntime.h"
#include "CFStringInternal.h"
#include "InfoPlist.h"
#include "StringsFile.h"

#include <dirent.h>
#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <unordered_map>

extern char** environ;

namespace {

using qelcf::StringHolder;
using qelcf::StringTable;

constexpr char kDefaultTable[] = "Localizable";
constexpr char kFrameworkSuffix[] = ".framework";
#ifdef QEL_CF_INSTALLED_BUNDLES
constexpr char kInstalledBundles[] = QEL_CF_INSTALLED_BUNDLES;
#else
constexpr char kInstalledBundles[] = "";
#endif

// Folders whose names are not the POSIX locale that should reach them.
struct FolderAlias {
    const char* locale;
    const char* folder;
};
constexpr FolderAlias kFolderAliases[] = {
    {"zh", "zh-Hans"},    {"zh_CN", "zh-Hans"}, {"zh_SG", "zh-Hans"},
    {"zh_TW", "zh-Hant"}, {"zh_HK", "zh-Hant"}, {"zh_MO", "zh-Hant"},
    {"pt", "pt-BR"},  // Brazilian is the only Portuguese table
    {"no", "nb"},     {"nn", "nb"},  // Norwegian readers take Bokmål before English
};

// The locale variables, in the order they are consulted.
constexpr std::array<const char*, 4> kLocaleVariables = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};

// The values of the locale variables (null when unset), found in one
// pass over the environment.
std::array<const char*, 4> ReadLocaleVariables()
{
    std::array<const char*, 4> values{};
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const char* text = *entry;
        if (text[0] != 'L')
            continue;
        for (size_t i = 0; i < kLocaleVariables.size(); ++i) {
            const size_t length = std::strlen(kLocaleVariables[i]);
            if (values[i] == nullptr && std::strncmp(text, kLocaleVariables[i], length) == 0 &&
                text[length] == '=')
                values[i] = text + length + 1;
        }
    }
    return values;
}

bool IsDirectory(const std::string& path)
{
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::string DirectoryOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {};
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string ExecutablePath()
{
    std::string path(4096, '\0');
    const ssize_t length = readlink("/proc/self/exe", &path[0], path.size() - 1);
    if (length <= 0)
        return {};
    path.resize(static_cast<size_t>(length));
    return path;
}

}  // namespace

struct __CFBundle : qelcf::CFObject {
    std::string directory;
    std::string resources;
    StringHolder identifier;
    std::string developmentRegion;

    std::mutex lock;
    // The locale variables the current choice was made for.
    bool languageKnown = false;
    std::array<std::string, 4> localeValues;
    std::array<bool, 4> localeSet{};
    std::string language;
    StringTable* defaultTable = nullptr;  // the default table of `language`
    // Texts of constant keys (CFSTR, interned for the life of the process)
    // in the default table, by the key's address: found once, then without
    // hashing the key again. Null for a key the table lacks.
    std::unordered_map<CFStringRef, CFStringRef> constantKeyTexts;
    // The environment the choice was last checked against: the entry
    // pointers and where the locale values were found. setenv, unsetenv and
    // putenv each change an entry pointer, so while every pointer is the
    // same (and the locale values still read the same, should a string have
    // been rewritten in place) the variables need not be read again.
    char** seenEnviron = nullptr;
    std::vector<const char*> seenEntries;
    std::array<const char*, 4> seenValues{};
    // Whether "<candidate>.lproj" exists, per language ever asked for.
    std::unordered_map<std::string, bool> hasLanguage;
    // Tables by "<language>/<table name>".
    std::unordered_map<std::string, std::unique_ptr<StringTable>> tables;

    std::u16string Description() const override
    {
        std::string text = "CFBundle <" + directory + ">";
        return std::u16string(text.begin(), text.end());
    }

    bool HasLanguage(const std::string& candidate)
    {
        auto found = hasLanguage.find(candidate);
        if (found == hasLanguage.end())
            found = hasLanguage.emplace(candidate, IsDirectory(resources + "/" + candidate + ".lproj")).first;
        return found->second;
    }

    bool EnvironmentUnchanged() const
    {
        if (!languageKnown || environ != seenEnviron)
            return false;
        // A shorter environment ends (null) where the old one had an entry.
        const size_t count = seenEntries.size();
        for (size_t i = 0; i < count; ++i)
            if (environ[i] != seenEntries[i])
                return false;
        if (environ != nullptr && environ[count] != nullptr)
            return false;
        for (size_t i = 0; i < seenValues.size(); ++i)
            if (seenValues[i] != nullptr && std::strcmp(seenValues[i], localeValues[i].c_str()) != 0)
                return false;
        return true;
    }

    // Caller holds `lock`.
    void FollowEnvironment()
    {
        if (EnvironmentUnchanged())
            return;
        seenValues = ReadLocaleVariables();
        ResolveLanguage(seenValues);
        seenEnviron = environ;
        seenEntries.clear();
        for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry)
            seenEntries.push_back(*entry);
    }

    // Caller holds `lock`.
    void ResolveLanguage(const std::array<const char*, 4>& values)
    {
        bool same = languageKnown;
        for (size_t i = 0; i < values.size() && same; ++i)
            same = (values[i] != nullptr) == localeSet[i] &&
                   (values[i] == nullptr || localeValues[i] == values[i]);
        if (same)
            return;
        for (size_t i = 0; i < values.size(); ++i) {
            localeSet[i] = values[i] != nullptr;
            localeValues[i] = values[i] ? values[i] : "";
        }
        language = developmentRegion;
        for (const std::string& candidate :
             qelcf::LanguageCandidates(values[0], values[1], values[2], values[3])) {
            if (HasLanguage(candidate)) {
                language = candidate;
                break;
            }
        }
        defaultTable = &Table(kDefaultTable);
        constantKeyTexts.clear();
        languageKnown = true;
    }

    // Caller holds `lock`.
    CFStringRef FindInDefaultTable(CFStringRef key)
    {
        if (!key->immortal)
            return defaultTable->Find(key->units);
        auto [known, added] = constantKeyTexts.try_emplace(key, nullptr);
        if (added)
            known->second = defaultTable->Find(key->units);
        return known->second;
    }

    // Caller holds `lock`.
    StringTable& Table(const std::string& name)
    {
        std::unique_ptr<StringTable>& table = tables[language + "/" + name];
        if (!table)
            table = qelcf::LoadStringsFile(resources + "/" + language + ".lproj/" + name + ".strings");
        return *table;
    }
};

namespace qelcf {

CFBundleRef CreateBundleAtPath(const std::string& directory)
{
    __CFBundle* bundle = CreateObject<__CFBundle>();
    bundle->directory = directory;
    bundle->resources = directory + "/Resources";
    const auto info = ReadInfoPlistFile(bundle->resources + "/Info.plist");
    auto identifier = info.find("CFBundleIdentifier");
    if (identifier != info.end())
        bundle->identifier.reset(CFStringCreateWithCString(nullptr, identifier->second.c_str(),
                                                           kCFStringEncodingUTF8));
    auto region = info.find("CFBundleDevelopmentRegion");
    bundle->developmentRegion = region != info.end() ? region->second : "en";
    return bundle;
}

std::vector<std::string> LoadedObjectDirectories()
{
    std::vector<std::string> directories;
    auto add = [&](const std::string& directory) {
        if (!directory.empty() &&
            std::find(directories.begin(), directories.end(), directory) == directories.end())
            directories.push_back(directory);
    };
    add(DirectoryOf(ExecutablePath()));
    std::vector<std::string> objects;
    // The object holding this code first: when the library is being loaded,
    // its own directory is the one that holds its framework.
    Dl_info self{};
    if (dladdr(reinterpret_cast<void*>(&LoadedObjectDirectories), &self) != 0 && self.dli_fname != nullptr &&
        std::strchr(self.dli_fname, '/') != nullptr)
        objects.push_back(self.dli_fname);
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void* data) {
            if (info->dlpi_name != nullptr && std::strchr(info->dlpi_name, '/') != nullptr)
                static_cast<std::vector<std::string>*>(data)->push_back(info->dlpi_name);
            return 0;
        },
        &objects);
    for (const std::string& object : objects) {
        char resolved[PATH_MAX];
        add(DirectoryOf(realpath(object.c_str(), resolved) ? std::string(resolved) : object));
    }
    // An installed library keeps its bundles under the data folder, at a fixed
    // distance from its own, so a moved prefix still finds them.
    const size_t beside = directories.size();
    for (size_t i = 0; i < beside && kInstalledBundles[0] != '\0'; ++i)
        add(directories[i] + "/" + kInstalledBundles);
    return directories;
}

std::string FindBundleDirectory(const std::vector<std::string>& directories,
                                const std::string& identifier)
{
    const size_t suffixLength = sizeof(kFrameworkSuffix) - 1;
    for (const std::string& directory : directories) {
        DIR* listing = opendir(directory.c_str());
        if (listing == nullptr)
            continue;
        std::string found;
        while (const dirent* entry = readdir(listing)) {
            const std::string name = entry->d_name;
            if (name.size() <= suffixLength ||
                name.compare(name.size() - suffixLength, suffixLength, kFrameworkSuffix) != 0)
                continue;
            const std::string candidate = directory + "/" + name;
            const auto info = ReadInfoPlistFile(candidate + "/Resources/Info.plist");
            auto id = info.find("CFBundleIdentifier");
            if (id != info.end() && id->second == identifier) {
                found = candidate;
                break;
            }
        }
        closedir(listing);
        if (!found.empty())
            return found;
    }
    return {};
}

std::vector<std::string> LanguageCandidates(const char* language, const char* lcAll,
                                            const char* lcMessages, const char* lang)
{
    std::vector<std::string> candidates;
    auto add = [&](const std::string& candidate) {
        if (std::find(candidates.begin(), candidates.end(), candidate) == candidates.end())
            candidates.push_back(candidate);
    };
    auto addLocale = [&](std::string name) {
        name = name.substr(0, name.find_first_of(".@"));
        if (name.empty() || name == "C" || name == "POSIX")
            return;
        // From the whole name down to the bare language: "zh_Hant_TW", "zh_Hant", "zh".
        for (size_t end = name.size(); end != std::string::npos && end > 0;
             end = name.find_last_of("_-", end - 1)) {
            const std::string prefix = name.substr(0, end);
            std::string dashed = prefix, underscored = prefix;
            std::replace(dashed.begin(), dashed.end(), '_', '-');
            std::replace(underscored.begin(), underscored.end(), '-', '_');
            add(prefix);
            add(dashed);
            for (const FolderAlias& alias : kFolderAliases)
                if (underscored == alias.locale)
                    add(alias.folder);
        }
    };
    if (language != nullptr) {
        std::string list = language;
        size_t start = 0;
        while (start <= list.size()) {
            size_t end = list.find(':', start);
            if (end == std::string::npos)
                end = list.size();
            addLocale(list.substr(start, end - start));
            start = end + 1;
        }
    }
    // The messages locale is the first of these that is set, as in POSIX.
    for (const char* locale : {lcAll, lcMessages, lang}) {
        if (locale != nullptr && *locale != '\0') {
            addLocale(locale);
            break;
        }
    }
    return candidates;
}

std::string ChosenLanguage(CFBundleRef bundle)
{
    std::lock_guard<std::mutex> guard(bundle->lock);
    bundle->FollowEnvironment();
    return bundle->language;
}

}  // namespace qelcf

CFBundleRef CFBundleGetBundleWithIdentifier(CFStringRef bundleID)
{
    if (bundleID == nullptr)
        return nullptr;
    // Found or not, the answer is kept; found bundles live for the process.
    static qelcf::NoDestructor<std::mutex> lock;
    static qelcf::NoDestructor<std::map<std::u16string, CFBundleRef>> known;
    std::lock_guard<std::mutex> guard(*lock);
    const std::u16string& key = qelcf::UnitsOf(bundleID);
    auto found = known->find(key);
    if (found != known->end())
        return found->second;
    const std::string directory =
        qelcf::FindBundleDirectory(qelcf::LoadedObjectDirectories(), qelcf::EncodeUTF8(key));
    CFBundleRef bundle = directory.empty() ? nullptr : qelcf::CreateBundleAtPath(directory);
    if (bundle != nullptr)
        bundle->immortal = true;
    known->emplace(key, bundle);
    return bundle;
}

CFBundleRef CFBundleGetMainBundle(void)
{
    static CFBundleRef mainBundle = [] {
        CFBundleRef bundle = qelcf::CreateBundleAtPath(DirectoryOf(ExecutablePath()));
        bundle->immortal = true;
        return bundle;
    }();
    return mainBundle;
}

CFStringRef CFBundleGetIdentifier(CFBundleRef bundle)
{
    return bundle ? bundle->identifier.get() : nullptr;
}

CFBundleRefNum CFBundleOpenBundleResourceMap(CFBundleRef)
{
    // No resource-fork maps here; the Mac answers -1 for a bundle without one.
    return -1;
}

void CFBundleCloseBundleResourceMap(CFBundleRef, CFBundleRefNum) {}

CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value,
                                        CFStringRef tableName)
{
    if (key == nullptr)
        return value ? CFStringCreateCopy(nullptr, value) : CFStringCreateCopy(nullptr, CFSTR(""));
    if (bundle != nullptr) {
        std::lock_guard<std::mutex> guard(bundle->lock);
        bundle->FollowEnvironment();
        CFStringRef text =
            tableName == nullptr || CFStringGetLength(tableName) == 0
                ? bundle->FindInDefaultTable(key)
                : bundle->Table(qelcf::EncodeUTF8(qelcf::UnitsOf(tableName))).Find(qelcf::UnitsOf(key));
        if (text)
            return static_cast<CFStringRef>(CFRetain(text));
    }
    // Without a translation: the default value, or the key when that is
    // missing or empty.
    if (value != nullptr && CFStringGetLength(value) > 0)
        return CFStringCreateCopy(nullptr, value);
    return CFStringCreateCopy(nullptr, key);
}
