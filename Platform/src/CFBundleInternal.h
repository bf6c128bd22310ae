// SPDX-License-Identifier: MIT
// Bundles: where they are found and how a language is chosen for them.
//
// A bundle is a directory with Resources/Info.plist and one
// Resources/<language>.lproj folder per language. The framework's bundle is
// found by identifier among the "*.framework" directories beside the
// running program and every loaded shared object, so one binary works from
// the build tree and from any install prefix. The functions below are
// exposed for tests.
#ifndef QEL_PLATFORM_CFBUNDLEINTERNAL_H
#define QEL_PLATFORM_CFBUNDLEINTERNAL_H

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <vector>

namespace qelcf {

// A bundle for the directory, not registered anywhere: the caller owns it
// and CFRelease frees it with its cached tables.
CFBundleRef CreateBundleAtPath(const std::string& directory);

// The directories of the running program and of every loaded shared
// object, each once: the program's, then the one holding this code.
std::vector<std::string> LoadedObjectDirectories();

// The first "<dir>/*.framework" whose Info.plist has the identifier; empty
// when there is none.
std::string FindBundleDirectory(const std::vector<std::string>& directories,
                                const std::string& identifier);

// Languages to try, best first, from the environment's values (any may be
// null): every entry of LANGUAGE's colon list, then the messages locale
// (LC_ALL, else LC_MESSAGES, else LANG). Each name is tried as written, with
// dashes, and under the folder that serves it, longest first: "zh_TW.UTF-8"
// gives "zh_TW", "zh-TW", "zh-Hant", "zh", "zh-Hans"; "C" and "POSIX" give
// nothing.
std::vector<std::string> LanguageCandidates(const char* language, const char* lcAll,
                                            const char* lcMessages, const char* lang);

// The .lproj language the bundle uses for the current environment.
std::string ChosenLanguage(CFBundleRef bundle);

}  // namespace qelcf

#endif
