// SPDX-License-Identifier: MIT
// Encodings: external representations, loss bytes and byte-order marks.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Bytes = std::vector<UInt8>;

constexpr CFStringEncoding kUnknownEncoding = 0x7777;

// The external representation's bytes; {0xEE} marks a failed conversion.
Bytes External(const char* utf8, CFStringEncoding encoding, UInt8 lossByte)
{
    Owned<CFStringRef> text(MakeString(utf8));
    Owned<CFDataRef> data(CFStringCreateExternalRepresentation(nullptr, text, encoding, lossByte));
    if (data.get() == nullptr)
        return {0xEE};
    const UInt8* bytes = CFDataGetBytePtr(data);
    return Bytes(bytes, bytes + CFDataGetLength(data));
}

struct ExternalCase {
    const char* text;
    CFStringEncoding encoding;
    UInt8 lossByte;
    Bytes expected;
};

TEST(Encoding, ExternalRepresentation)
{
    const ExternalCase cases[] = {
        {"f/2.8 \xC3\xA9", kCFStringEncodingASCII, '?', {'f', '/', '2', '.', '8', ' ', '?'}},
        {"\xC3\xA9", kCFStringEncodingASCII, 0, {0xEE}},
        {"\xE2\x84\xA2\xC3\xA9", kCFStringEncodingISOLatin1, '?', {'?', 0xE9}},
        {"\xE2\x84\xA2\xC3\xA9", kCFStringEncodingMacRoman, '?', {0xAA, 0x8E}},
        // UTF-16 and UTF-32 without a stated order carry a host-order BOM.
        {"A\xC3\xA9", kCFStringEncodingUnicode, 0, {0xFF, 0xFE, 'A', 0, 0xE9, 0}},
        {"A\xC3\xA9", kCFStringEncodingUTF16BE, 0, {0, 'A', 0, 0xE9}},
        {"\xF0\x9F\x93\xB7", kCFStringEncodingUTF32LE, 0, {0xF7, 0xF4, 0x01, 0}},
        {"\xE2\x82\xAC\xE6\x97\xA5", kCFStringEncodingShiftJIS, '?', {'?', 0x93, 0xFA}},
        {"", kCFStringEncodingUTF8, 0, {}},
        {"abc", kUnknownEncoding, '?', {0xEE}},
    };
    for (const ExternalCase& c : cases)
        EXPECT_EQ(External(c.text, c.encoding, c.lossByte), c.expected)
            << c.text << " in 0x" << std::hex << c.encoding;
}

TEST(Encoding, DecodingHonoursByteOrderMarksAndRejectsBadBytes)
{
    struct DecodeCase {
        Bytes bytes;
        CFStringEncoding encoding;
        bool isExternal;
        const char* expected;  // "<null>" when decoding must fail
    };
    const DecodeCase cases[] = {
        {{0xFE, 0xFF, 0, 'A'}, kCFStringEncodingUnicode, true, "A"},
        {{0, 'A', 0, 'B'}, kCFStringEncodingUnicode, true, "AB"},  // no BOM: big-endian
        {{'A', 0}, kCFStringEncodingUTF16LE, false, "A"},
        {{0, 0, 0xFE, 0xFF, 0, 0, 0, 'A'}, kCFStringEncodingUTF32, true, "A"},
        {{0xEF, 0xBB, 0xBF, 'o', 'k'}, kCFStringEncodingUTF8, true, "ok"},
        {{0xC3, 0x28}, kCFStringEncodingUTF8, false, "<null>"},
        {{0xED, 0xA0, 0x80}, kCFStringEncodingUTF8, false, "<null>"},  // a surrogate
        {{'a', 0xE9}, kCFStringEncodingASCII, false, "<null>"},
        {{0x8E}, kCFStringEncodingMacRoman, false, "\xC3\xA9"},
        {{'a'}, kUnknownEncoding, false, "<null>"},
    };
    for (const DecodeCase& c : cases) {
        Owned<CFStringRef> text(CFStringCreateWithBytes(nullptr, c.bytes.data(),
                                                        static_cast<CFIndex>(c.bytes.size()),
                                                        c.encoding, c.isExternal));
        EXPECT_EQ(Utf8(text), c.expected) << "encoding 0x" << std::hex << c.encoding;
    }
}

}  // namespace
