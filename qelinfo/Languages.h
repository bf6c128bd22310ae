// SPDX-License-Identifier: MIT
// The languages the library has texts in: the .lproj folders of the
// framework bundle it loads, found where the library finds it (beside the
// program or beside the loaded library, by the bundle's identifier).
#ifndef QELINFO_LANGUAGES_H
#define QELINFO_LANGUAGES_H

#include <optional>
#include <string>
#include <vector>

namespace qelinfo {

struct BundleLanguages {
    std::vector<std::string> languages;  // folder names without ".lproj", sorted
    std::string developmentRegion;       // what the library shows without a match
};

std::optional<BundleLanguages> FindBundleLanguages();

// The folder that serves a locale or language name ("de_AT.UTF-8" → "de"),
// if any.
std::optional<std::string> ServingLanguage(const BundleLanguages& bundle, const std::string& name);

// The language shown when `requested` has no folder: the messages locale's
// (LC_ALL, else LC_MESSAGES, else LANG), else the development region.
std::string FallbackLanguage(const BundleLanguages& bundle);

}  // namespace qelinfo

#endif
