// SPDX-License-Identifier: MIT
// Reader of the string entries of a bundle's XML Info.plist: each
// <key>name</key> followed by <string>text</string> at any depth. Other
// value types are skipped. Enough for CFBundleIdentifier and
// CFBundleDevelopmentRegion; not a general property-list parser.
#ifndef QEL_PLATFORM_INFOPLIST_H
#define QEL_PLATFORM_INFOPLIST_H

#include <map>
#include <string>

namespace qelcf {

std::map<std::string, std::string> ReadInfoPlistStrings(const std::string& xml);

// The entries of the file at `path`; empty when it cannot be read.
std::map<std::string, std::string> ReadInfoPlistFile(const std::string& path);

}  // namespace qelcf

#endif
