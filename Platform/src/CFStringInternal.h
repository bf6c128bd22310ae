// SPDX-License-Identifier: MIT
// The string object and the helpers the other areas of the layer share.
//
// A CFString is a sequence of UTF-16 code units. Mutable and immutable
// strings share one representation; only the flag tells them apart.
#ifndef QEL_PLATFORM_CFSTRINGINTERNAL_H
#define QEL_PLATFORM_CFSTRINGINTERNAL_H

#include "CFRuntime.h"

#include <cstdint>
#include <string>

struct __CFString : qelcf::CFObject {
    std::u16string units;
    bool isMutable = false;
    std::u16string Description() const override { return units; }
};

namespace qelcf {

// The units of a string; an empty sequence for a null reference.
const std::u16string& UnitsOf(CFStringRef string);

// A new immutable string owning the given units.
CFStringRef CreateStringFromUnits(std::u16string units);

// UTF-8 bytes decoded leniently: each malformed sequence becomes U+FFFD.
std::u16string DecodeUTF8Lenient(const char* bytes, size_t length);

// Appends the UTF-8 form of one Unicode scalar value.
void AppendUTF8(std::string& out, uint32_t scalar);

// UTF-16 units as UTF-8; unpaired surrogates become U+FFFD.
std::string EncodeUTF8(const std::u16string& units);

}  // namespace qelcf

#endif
