// SPDX-License-Identifier: MIT
// String entries of an XML Info.plist.
#include "InfoPlist.h"

#include "CFStringInternal.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace qelcf {
namespace {

// Appends a character reference's code point; invalid ones are dropped.
void AppendCodePoint(std::string& out, unsigned long code)
{
    if (code != 0 && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF))
        AppendUTF8(out, static_cast<uint32_t>(code));
}

std::string DecodeEntities(const std::string& text)
{
    static const std::pair<const char*, char> kNamed[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    std::string out;
    size_t at = 0;
    while (at < text.size()) {
        const size_t semicolon = text[at] == '&' ? text.find(';', at) : std::string::npos;
        if (semicolon == std::string::npos) {
            out += text[at++];
            continue;
        }
        const std::string name = text.substr(at + 1, semicolon - at - 1);
        bool known = false;
        if (name.size() > 1 && name[0] == '#') {
            const bool hex = name[1] == 'x' || name[1] == 'X';
            AppendCodePoint(out, std::strtoul(name.c_str() + (hex ? 2 : 1), nullptr, hex ? 16 : 10));
            known = true;
        }
        for (const auto& entity : kNamed) {
            if (name == entity.first) {
                out += entity.second;
                known = true;
            }
        }
        if (!known)
            out += text.substr(at, semicolon - at + 1);
        at = semicolon + 1;
    }
    return out;
}

// The text between <tag> and </tag> starting at `from`, if the element
// begins there after blanks.
bool ReadElement(const std::string& xml, size_t& from, const std::string& tag, std::string& text)
{
    const size_t start = xml.find_first_not_of(" \t\r\n", from);
    const std::string open = "<" + tag + ">";
    if (start == std::string::npos || xml.compare(start, open.size(), open) != 0)
        return false;
    const size_t end = xml.find("</" + tag + ">", start + open.size());
    if (end == std::string::npos)
        return false;
    text = xml.substr(start + open.size(), end - start - open.size());
    from = end + tag.size() + 3;
    return true;
}

}  // namespace

std::map<std::string, std::string> ReadInfoPlistStrings(const std::string& xml)
{
    std::map<std::string, std::string> entries;
    size_t at = 0;
    while ((at = xml.find("<key>", at)) != std::string::npos) {
        std::string key;
        std::string value;
        if (!ReadElement(xml, at, "key", key))
            break;
        if (ReadElement(xml, at, "string", value))
            entries.emplace(DecodeEntities(key), DecodeEntities(value));
    }
    return entries;
}

std::map<std::string, std::string> ReadInfoPlistFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return {};
    std::ostringstream contents;
    contents << file.rdbuf();
    return ReadInfoPlistStrings(contents.str());
}

}  // namespace qelcf
