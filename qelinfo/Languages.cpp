// SPDX-License-Identifier: MIT
#include "Languages.h"

#include "IQelImgInfo.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <sstream>

#ifndef QEL_BUNDLE_IDENTIFIER
#error "QEL_BUNDLE_IDENTIFIER names the framework's bundle"
#endif

namespace qelinfo {

namespace {

namespace fs = std::filesystem;

constexpr const char* kDefaultDevelopmentRegion = "en";

// The text of <key>name</key><string>text</string> in an Info.plist.
std::string PlistString(const std::string& xml, const std::string& key)
{
    const std::string keyElement = "<key>" + key + "</key>";
    const size_t keyAt = xml.find(keyElement);
    if (keyAt == std::string::npos)
        return {};
    const std::string open = "<string>";
    const size_t start = xml.find(open, keyAt + keyElement.size());
    const size_t end = xml.find("</string>", start);
    if (start == std::string::npos || end == std::string::npos)
        return {};
    return xml.substr(start + open.size(), end - start - open.size());
}

std::string ReadText(const fs::path& path)
{
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The program's folder, the loaded library's and the data folder beside
// it, as the library looks.
std::vector<fs::path> SearchedFolders()
{
    std::vector<fs::path> folders;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error)
        folders.push_back(program.parent_path());
    Dl_info library{};
    if (dladdr(reinterpret_cast<void*>(&IQelImgInfo::CreateImageInfo), &library) != 0 &&
        library.dli_fname != nullptr) {
        const fs::path resolved = fs::canonical(library.dli_fname, error);
        if (!error)
            folders.push_back(resolved.parent_path());
    }
    // An installed library keeps its bundle under the data folder, at the
    // distance from its own folder the build fixed.
    const size_t beside = folders.size();
    for (size_t i = 0; i < beside; ++i)
        folders.push_back(folders[i] / QEL_LIB_TO_BUNDLES);
    return folders;
}

// "de_AT.UTF-8" and "de-at" alike as "de-at".
std::string Normalised(const std::string& name)
{
    std::string normal = name.substr(0, name.find_first_of(".@"));
    for (char& c : normal)
        c = c == '_' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return normal;
}

std::string Primary(const std::string& normalised)
{
    return normalised.substr(0, normalised.find('-'));
}

}  // namespace

std::optional<BundleLanguages> FindBundleLanguages()
try {
    for (const fs::path& folder : SearchedFolders()) {
        std::error_code error;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
            if (entry.path().extension() != ".framework")
                continue;
            const fs::path resources = entry.path() / "Resources";
            const std::string plist = ReadText(resources / "Info.plist");
            if (PlistString(plist, "CFBundleIdentifier") != QEL_BUNDLE_IDENTIFIER)
                continue;
            BundleLanguages bundle;
            bundle.developmentRegion = PlistString(plist, "CFBundleDevelopmentRegion");
            if (bundle.developmentRegion.empty())
                bundle.developmentRegion = kDefaultDevelopmentRegion;
            for (const fs::directory_entry& language : fs::directory_iterator(resources, error))
                if (language.path().extension() == ".lproj" && language.is_directory(error))
                    bundle.languages.push_back(language.path().stem().string());
            std::sort(bundle.languages.begin(), bundle.languages.end());
            return bundle;
        }
    }
    return std::nullopt;
} catch (const fs::filesystem_error&) {
    // A folder that vanished or cannot be listed while it is read.
    return std::nullopt;
}

std::optional<std::string> ServingLanguage(const BundleLanguages& bundle, const std::string& name)
{
    const std::string wanted = Normalised(name);
    if (wanted.empty() || wanted == "c" || wanted == "posix")
        return std::nullopt;
    for (const std::string& language : bundle.languages)
        if (Normalised(language) == wanted)
            return language;
    // A region or script the bundle lacks: the library takes the language's.
    for (const std::string& language : bundle.languages)
        if (Primary(Normalised(language)) == Primary(wanted))
            return language;
    return std::nullopt;
}

std::string FallbackLanguage(const BundleLanguages& bundle)
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* locale = std::getenv(variable);
        if (locale == nullptr || *locale == '\0')
            continue;
        return ServingLanguage(bundle, locale).value_or(bundle.developmentRegion);
    }
    return bundle.developmentRegion;
}

}  // namespace qelinfo
