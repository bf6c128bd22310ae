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

// `text` with every control character and every byte that is not part of
// well-formed UTF-8 shown as \xNN, so it prints as one readable line.
inline std::string PrintableText(const std::string& text)
{
    std::string shown;
    for (size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const size_t length = lead < 0x80                 ? 1
                              : lead >= 0xC2 && lead < 0xE0 ? 2
                              : lead >= 0xE0 && lead < 0xF0 ? 3
                              : lead >= 0xF0 && lead < 0xF5 ? 4
                                                            : 0;
        bool readable = length > 0 && i + length <= text.size() && lead >= 0x20 && lead != 0x7F;
        for (size_t k = 1; readable && k < length; ++k)
            readable = (static_cast<unsigned char>(text[i + k]) & 0xC0) == 0x80;
        if (readable) {
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
