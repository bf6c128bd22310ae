// SPDX-License-Identifier: MIT
// Why a file could not be made into a tag source: missing, unreadable, not an
// image, corrupt, or a malformed tag file. The message says what is wrong
// without the file name; the host puts the name in front. It is always one
// line of readable text, whatever a damaged file made the readers quote.
#ifndef QEL_TAG_SOURCE_ERROR_H
#define QEL_TAG_SOURCE_ERROR_H

#include <cstdio>
#include <stdexcept>
#include <string>

namespace qel {

// The length of the well-formed UTF-8 sequence at text[i]; 0 when the
// bytes there are not one.
inline size_t UTF8SequenceLength(const std::string& text, size_t i)
{
    const auto lead = static_cast<unsigned char>(text[i]);
    const size_t length = lead < 0x80                   ? 1
                          : lead >= 0xC2 && lead < 0xE0 ? 2
                          : lead >= 0xE0 && lead < 0xF0 ? 3
                          : lead >= 0xF0 && lead < 0xF5 ? 4
                                                        : 0;
    if (length == 0 || i + length > text.size())
        return 0;
    // Overlong forms, UTF-16 surrogates and code points beyond U+10FFFF.
    const auto second = static_cast<unsigned char>(text[i + (length > 1 ? 1 : 0)]);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
        return 0;
    for (size_t k = 1; k < length; ++k)
        if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80)
            return 0;
    return length;
}

inline bool IsUTF8(const std::string& text)
{
    for (size_t i = 0, length = 0; i < text.size(); i += length)
        if ((length = UTF8SequenceLength(text, i)) == 0)
            return false;
    return true;
}

// `text` with every control character (C0, DEL and the C1 controls a
// terminal would obey) and every byte that is not part of well-formed UTF-8
// shown as \xNN, so it prints as one readable line.
inline std::string PrintableText(const std::string& text)
{
    auto plain = [](char c) { return c >= 0x20 && c < 0x7F; };
    size_t i = 0;
    while (i < text.size() && plain(text[i]))
        ++i;
    if (i == text.size())
        return text;
    std::string shown(text, 0, i);
    shown.reserve(text.size());
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const size_t length = UTF8SequenceLength(text, i);
        const bool c1Control = length == 2 && lead == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if (length > 0 && lead >= 0x20 && lead != 0x7F && !c1Control) {
            shown.append(text, i, length);
            i += length;
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(lead));
            shown += escaped;
            ++i;
        }
    }
    return shown;
}

class TagSourceError : public std::runtime_error {
public:
    explicit TagSourceError(const std::string& what) : std::runtime_error(PrintableText(what)) {}
};

}  // namespace qel

#endif
