// SPDX-License-Identifier: MIT
// The Unicode encodings: UTF-8, UTF-16 and UTF-32 (unspecified, big- and
// little-endian) and non-lossy ASCII, converted directly.
//
// External representations of UTF-16 and UTF-32 without a stated order
// carry a host-order BOM; read back, a BOM is honoured and dropped, and
// without one the text is big-endian. Unpaired surrogates become the loss
// byte where the target cannot hold them (UTF-8, UTF-32).
#ifndef QEL_PLATFORM_UNICODEFORMS_H
#define QEL_PLATFORM_UNICODEFORMS_H

#include <CoreFoundation/CoreFoundation.h>

#include <string>

namespace qelcf {

bool IsUnicodeForm(CFStringEncoding encoding);

bool DecodeUnicode(const UInt8* bytes, size_t length, CFStringEncoding encoding, bool isExternal,
                   std::u16string& out);

bool EncodeUnicode(const std::u16string& units, CFStringEncoding encoding, UInt8 lossByte,
                   bool isExternal, std::string& out);

}  // namespace qelcf

#endif
