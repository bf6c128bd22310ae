// SPDX-License-Identifier: MIT
// Encodings: external representations, loss bytes, byte-order marks,
// maximum sizes and round trips through the Japanese and Mac encodings.
#include "PlatformTestSupport.h"

#include <QelPlatform/TextEncoding.h>

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
        {"Av", kCFStringEncodingASCII, '?', {'A', 'v'}},
        {"f/2.8 \xC3\xA9", kCFStringEncodingASCII, '?', {'f', '/', '2', '.', '8', ' ', '?'}},
        {"\xC3\xA9", kCFStringEncodingASCII, 0, {0xEE}},
        {"\xE2\x84\xA2\xC3\xA9", kCFStringEncodingISOLatin1, '?', {'?', 0xE9}},
        {"\xE2\x84\xA2\xC3\xA9", kCFStringEncodingWindowsLatin1, '?', {0x99, 0xE9}},
        {"\xE2\x84\xA2\xC3\xA9", kCFStringEncodingMacRoman, '?', {0xAA, 0x8E}},
        {"\xE6\x97\xA5", kCFStringEncodingMacRoman, '_', {'_'}},
        {"\xC2\xB5s", kCFStringEncodingUTF8, 0, {0xC2, 0xB5, 's'}},
        // UTF-16 and UTF-32 without a stated order carry a host-order BOM.
        {"A\xC3\xA9", kCFStringEncodingUnicode, 0, {0xFF, 0xFE, 'A', 0, 0xE9, 0}},
        {"A\xC3\xA9", kCFStringEncodingUTF16BE, 0, {0, 'A', 0, 0xE9}},
        {"A\xC3\xA9", kCFStringEncodingUTF16LE, 0, {'A', 0, 0xE9, 0}},
        {"A", kCFStringEncodingUTF32, 0, {0xFF, 0xFE, 0, 0, 'A', 0, 0, 0}},
        {"\xF0\x9F\x93\xB7", kCFStringEncodingUTF32BE, 0, {0, 0x01, 0xF4, 0xF7}},
        {"\xF0\x9F\x93\xB7", kCFStringEncodingUTF32LE, 0, {0xF7, 0xF4, 0x01, 0}},
        {"\xE6\x97\xA5\xE6\x9C\xAC", kCFStringEncodingShiftJIS, 0, {0x93, 0xFA, 0x96, 0x7B}},
        {"\xE6\x97\xA5\xE6\x9C\xAC", kCFStringEncodingEUC_JP, 0, {0xC6, 0xFC, 0xCB, 0xDC}},
        {"\xEF\xBD\xB1", kCFStringEncodingShiftJIS, 0, {0xB1}},  // half-width katakana A
        {"\xE2\x82\xAC\xE6\x97\xA5", kCFStringEncodingShiftJIS, '?', {'?', 0x93, 0xFA}},
        {"", kCFStringEncodingUTF8, 0, {}},
        {"abc", kUnknownEncoding, '?', {0xEE}},
    };
    for (const ExternalCase& c : cases)
        EXPECT_EQ(External(c.text, c.encoding, c.lossByte), c.expected)
            << c.text << " in 0x" << std::hex << c.encoding;
}

TEST(Encoding, RoundTripsThroughEightBitAndJapaneseEncodings)
{
    struct RoundTrip {
        const char* text;
        CFStringEncoding encoding;
    };
    const RoundTrip cases[] = {
        {"Qelkor \xC3\x86 \xC3\xA9\xC3\xBC \xE2\x84\xA2 \xE2\x80\xA0", kCFStringEncodingMacRoman},
        {"caf\xC3\xA9 \xC2\xB1\xC2\xB0", kCFStringEncodingISOLatin1},
        {"\xE2\x82\xAC \xE2\x80\x9Cquote\xE2\x80\x9D", kCFStringEncodingWindowsLatin1},
        {"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E \xE3\x82\xAB\xE3\x83\xA1\xE3\x83\xA9 ABC", kCFStringEncodingShiftJIS},
        {"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E \xE3\x82\xAB\xE3\x83\xA1\xE3\x83\xA9 ABC", kCFStringEncodingEUC_JP},
        {"\xE3\x81\x82 \xE5\x86\x99\xE7\x9C\x9F", kCFStringEncodingISO_2022_JP},
        {"\xF0\x9F\x93\xB7 \xC3\xA9", kCFStringEncodingUTF16BE},
        {"\xF0\x9F\x93\xB7 \xC3\xA9", kCFStringEncodingUTF32},
    };
    for (const RoundTrip& c : cases) {
        Owned<CFStringRef> text(MakeString(c.text));
        Owned<CFDataRef> data(CFStringCreateExternalRepresentation(nullptr, text, c.encoding, 0));
        ASSERT_NE(data.get(), nullptr) << c.text;
        Owned<CFStringRef> back(CFStringCreateWithBytes(nullptr, CFDataGetBytePtr(data),
                                                        CFDataGetLength(data), c.encoding, true));
        EXPECT_EQ(Utf8(back), c.text) << "encoding 0x" << std::hex << c.encoding;
    }
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
        {{0xFF, 0xFE, 'A', 0}, kCFStringEncodingUnicode, true, "A"},
        {{0, 'A', 0, 'B'}, kCFStringEncodingUnicode, true, "AB"},  // no BOM: big-endian
        {{'A', 0}, kCFStringEncodingUTF16LE, false, "A"},
        {{'A', 0, 0}, kCFStringEncodingUTF16LE, false, "<null>"},
        {{0, 0, 0xFE, 0xFF, 0, 0, 0, 'A'}, kCFStringEncodingUTF32, true, "A"},
        {{0, 0x11, 0, 0}, kCFStringEncodingUTF32BE, false, "<null>"},
        {{0xEF, 0xBB, 0xBF, 'o', 'k'}, kCFStringEncodingUTF8, true, "ok"},
        {{0xC3, 0x28}, kCFStringEncodingUTF8, false, "<null>"},
        {{0xC0, 0xAF}, kCFStringEncodingUTF8, false, "<null>"},  // overlong '/'
        {{0xED, 0xA0, 0x80}, kCFStringEncodingUTF8, false, "<null>"},  // a surrogate
        {{'a', 0xE9}, kCFStringEncodingASCII, false, "<null>"},
        {{0x8E}, kCFStringEncodingMacRoman, false, "\xC3\xA9"},
        {{0x93, 0xFA}, kCFStringEncodingShiftJIS, false, "\xE6\x97\xA5"},
        {{0x93}, kCFStringEncodingShiftJIS, false, "<null>"},
        {{'a'}, kUnknownEncoding, false, "<null>"},
    };
    for (const DecodeCase& c : cases) {
        Owned<CFStringRef> text(CFStringCreateWithBytes(nullptr, c.bytes.data(),
                                                        static_cast<CFIndex>(c.bytes.size()),
                                                        c.encoding, c.isExternal));
        EXPECT_EQ(Utf8(text), c.expected) << "encoding 0x" << std::hex << c.encoding;
    }
}

TEST(Encoding, MaximumSizesMatchTheMac)
{
    struct SizeCase {
        CFStringEncoding encoding;
        CFIndex perUnit;
    };
    const SizeCase cases[] = {
        {kCFStringEncodingUTF8, 3}, {kCFStringEncodingUnicode, 2}, {kCFStringEncodingUTF16LE, 2},
        {kCFStringEncodingUTF32, 4}, {kCFStringEncodingUTF32BE, 4}, {kCFStringEncodingNonLossyASCII, 6},
        {kCFStringEncodingASCII, 1}, {kCFStringEncodingMacRoman, 1}, {kCFStringEncodingWindowsLatin1, 1},
        // The Mac also answers one byte per unit for the multibyte encodings.
        {kCFStringEncodingShiftJIS, 1}, {kCFStringEncodingEUC_JP, 1},
    };
    for (const SizeCase& c : cases) {
        EXPECT_EQ(CFStringGetMaximumSizeForEncoding(10, c.encoding), 10 * c.perUnit)
            << "encoding 0x" << std::hex << c.encoding;
        EXPECT_EQ(CFStringGetMaximumSizeForEncoding(0, c.encoding), 0);
    }
}

TEST(Encoding, SystemAndApplicationEncodingsAreUTF8)
{
    EXPECT_EQ(CFStringGetSystemEncoding(), kCFStringEncodingUTF8);
    EXPECT_EQ(GetApplicationTextEncoding(), kCFStringEncodingUTF8);
    EXPECT_TRUE(CFStringIsEncodingAvailable(kCFStringEncodingShiftJIS));
    EXPECT_FALSE(CFStringIsEncodingAvailable(kUnknownEncoding));
    Owned<CFStringRef> text(CFStringCreateWithCString(nullptr, "x", kUnknownEncoding));
    EXPECT_EQ(text.get(), nullptr);
}

}  // namespace
