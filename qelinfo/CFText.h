// SPDX-License-Identifier: MIT
// CoreFoundation strings handed over by the library, as UTF-8 text.
#ifndef QELINFO_CFTEXT_H
#define QELINFO_CFTEXT_H

#include <QelImgInfo/QelCoreFoundation.h>

#include <optional>
#include <string>

namespace qelinfo {

// Takes ownership of a string returned by a Copy... operation: converts it
// to UTF-8 and releases it. A null string (nothing stored) is nullopt.
std::optional<std::string> AdoptCFString(CFStringRef string);

// The same into `text`, whose buffer is reused when it holds one.
void AdoptCFString(CFStringRef string, std::optional<std::string>& text);

}  // namespace qelinfo

#endif
