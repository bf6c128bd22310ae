// SPDX-License-Identifier: MIT
// ASCII and UTF-8, the encodings of every number the library prints and of
// most hosts' buffers, are converted without ICU; the answers must still be
// ICU's converters', character for character, with and without a loss byte.
#include "PlatformTestSupport.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <optional>
#include <string>
#include <vector>

namespace {

// Writes the loss byte for every character the converter reports, as
// the layer asks ICU to (ICU's own substitution would skip soft hyphens
// and other invisible characters).
void WriteLossByte(const void* context, UConverterFromUnicodeArgs* args, const UChar*, int32_t,
                   UChar32, UConverterCallbackReason reason, UErrorCode* status)
{
    if (reason > UCNV_IRREGULAR)
        return;
    *status = U_ZERO_ERROR;
    ucnv_cbFromUWriteBytes(args, static_cast<const char*>(context), 1, 0, status);
}

struct Encoding {
    CFStringEncoding number;
    const char* converterName;
};
const Encoding kDirectEncodings[] = {{kCFStringEncodingASCII, "US-ASCII"},
                                     {kCFStringEncodingUTF8, "UTF-8"}};

// ICU's own answer: the loss byte in place of each character the encoding
// lacks, or no answer when there is no loss byte.
std::optional<std::string> IcuBytes(const Encoding& encoding, const std::u16string& text, char lossByte)
{
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(encoding.converterName, &status);
    if (lossByte != 0)
        ucnv_setFromUCallBack(converter, WriteLossByte, &lossByte, nullptr, nullptr, &status);
    else
        ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    std::string bytes(4 * text.size() + 4, '\0');
    const int32_t length = ucnv_fromUChars(converter, &bytes[0], static_cast<int32_t>(bytes.size()),
                                           text.data(), static_cast<int32_t>(text.size()), &status);
    ucnv_close(converter);
    if (U_FAILURE(status))
        return std::nullopt;
    bytes.resize(static_cast<size_t>(length));
    return bytes;
}

std::optional<std::string> LayerBytes(const Encoding& encoding, const std::u16string& text, UInt8 lossByte)
{
    Owned<CFStringRef> string(CFStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(text.data()), static_cast<CFIndex>(text.size())));
    Owned<CFDataRef> data(CFStringCreateExternalRepresentation(nullptr, string, encoding.number, lossByte));
    if (!data)
        return std::nullopt;
    return std::string(reinterpret_cast<const char*>(CFDataGetBytePtr(data)),
                       static_cast<size_t>(CFDataGetLength(data)));
}

TEST(DirectConversion, EncodesEveryCharacterAsICUDoes)
{
    std::u16string texts[] = {
        u"", u"White Balance -1", u"Wei\u00DF", u"\U0001F600x", u"a\xD800", u"a\xD800" u"b",
        u"\xDC00z", u"\xD800\xD800\xDC00", u"\xDBFF\xDFFF", std::u16string(u"\0a", 2),
        u"soft\u00ADhyphen", u"a\u200Bb\U000E0001", u"\u30DB\u30EF\u30A4\u30C8 \u2212" u"1",
    };
    for (const Encoding& encoding : kDirectEncodings) {
        SCOPED_TRACE(encoding.converterName);
        for (char lossByte : {'?', '\0'})
            for (const std::u16string& text : texts)
                EXPECT_EQ(LayerBytes(encoding, text, static_cast<UInt8>(lossByte)),
                          IcuBytes(encoding, text, lossByte))
                    << text.size() << " units, loss byte " << int(lossByte);
        // Every UTF-16 unit behind an ASCII letter, and every surrogate pair's
        // high half and every low half, with and without a loss byte.
        std::vector<std::u16string> all;
        for (char32_t unit = 0; unit <= 0xFFFF; ++unit)
            all.push_back(u"x" + std::u16string(1, static_cast<char16_t>(unit)));
        for (char16_t half = 0; half < 0x400; ++half)
            all.insert(all.end(), {{char16_t(0xD800 + half), 0xDC00}, {0xDB40, char16_t(0xDC00 + half)}});
        for (const std::u16string& text : all)
            for (char lossByte : {'?', '\0'})
                ASSERT_EQ(LayerBytes(encoding, text, static_cast<UInt8>(lossByte)),
                          IcuBytes(encoding, text, lossByte)) << std::hex << text[1];
    }
}

TEST(DirectConversion, ASCIIDecodesOnlySevenBitBytes)
{
    for (int byte = 0; byte < 256; ++byte) {
        const UInt8 bytes[2] = {'a', static_cast<UInt8>(byte)};
        Owned<CFStringRef> text(CFStringCreateWithBytes(nullptr, bytes, 2, kCFStringEncodingASCII, false));
        if (byte > 0x7F) {
            EXPECT_EQ(text.get(), nullptr) << byte;
            continue;
        }
        ASSERT_NE(text.get(), nullptr) << byte;
        ASSERT_EQ(CFStringGetLength(text), 2) << byte;
        EXPECT_EQ(CFStringGetCharacterAtIndex(text, 1), byte);
    }
}

}  // namespace
