// SPDX-License-Identifier: MIT
// Conversion between UTF-16 units and bytes in a CoreFoundation encoding.
//
// Unicode encodings are converted directly (UnicodeForms.h); every other encoding goes
// through an ICU converter that each thread opens once and keeps. An
// encoding number the layer does not know makes every call fail.
#ifndef QEL_PLATFORM_CFSTRINGENCODINGINTERNAL_H
#define QEL_PLATFORM_CFSTRINGENCODINGINTERNAL_H

#include <CoreFoundation/CoreFoundation.h>

#include <string>

namespace qelcf {

// Decodes `length` bytes. With `isExternal` a Unicode encoding honours and
// drops a leading byte-order mark (and without one reads big-endian).
// False for an unknown encoding or bytes that are not valid in it.
bool DecodeBytes(const UInt8* bytes, size_t length, CFStringEncoding encoding, bool isExternal,
                 std::u16string& out);

// Encodes the units. A character the encoding cannot hold becomes
// `lossByte`, or fails the call when `lossByte` is 0. With `isExternal`,
// UTF-16 and UTF-32 without a stated byte order get a host-order BOM.
bool EncodeUnits(const std::u16string& units, CFStringEncoding encoding, UInt8 lossByte,
                 bool isExternal, std::string& out);

bool IsKnownEncoding(CFStringEncoding encoding);

}  // namespace qelcf

#endif
