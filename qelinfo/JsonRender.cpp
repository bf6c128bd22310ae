// SPDX-License-Identifier: MIT
#include "JsonRender.h"

#include "TagSourceError.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cstdio>

namespace qelinfo {

namespace {

// Keys in the order a reader expects them, not sorted.
using Json = nlohmann::ordered_json;

// File names need not be UTF-8; anything else must come out as valid JSON.
std::string Dump(const Json& object)
{
    return object.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace);
}

// What a byte means to the JSON form: written as it is, escaped, or part of
// a UTF-8 sequence that must be well formed to be written as it is.
constexpr unsigned char kEscaped = 1;
constexpr unsigned char kBeyondASCII = 2;
constexpr auto kByteKinds = [] {
    std::array<unsigned char, 256> kinds{};
    for (size_t byte = 0; byte < kinds.size(); ++byte)
        kinds[byte] = byte < 0x20 || byte == '"' || byte == '\\' ? kEscaped : byte >= 0x80 ? kBeyondASCII : 0;
    return kinds;
}();

// The line is written straight into the caller's string, in exactly the
// form the JSON library gives (no blanks, keys in order). A text of UTF-8
// without controls, quotes or backslashes goes in as it is; any other text is
// left to the library, which escapes it and replaces what is not UTF-8.
class Line {
public:
    explicit Line(std::string& text) : m_text(text) {}

    // Punctuation and keys, written as they stand: `",\"title\":"`.
    Line& Raw(const char* text)
    {
        m_text += text;
        return *this;
    }
    Line& Raw(const std::string& text)
    {
        m_text += text;
        return *this;
    }
    Line& String(const std::string& text)
    {
        unsigned kinds = 0;
        for (char c : text)
            kinds |= kByteKinds[static_cast<unsigned char>(c)];
        if ((kinds & kEscaped) || ((kinds & kBeyondASCII) && !qel::IsUTF8(text)))
            return Escaped(text);
        m_text += '"';
        m_text += text;
        m_text += '"';
        return *this;
    }
    Line& StringOrNull(const std::optional<std::string>& text)
    {
        return text ? String(*text) : Raw("null");
    }
    template <class Integer>
    Line& Number(Integer number)
    {
        char digits[24];
        const auto written = std::to_chars(digits, digits + sizeof digits, number);
        m_text.append(digits, static_cast<size_t>(written.ptr - digits));
        return *this;
    }

private:
    Line& Escaped(const std::string& text)
    {
        m_text += Dump(Json(text));
        return *this;
    }

    std::string& m_text;
};

// A name that is not UTF-8 cannot be told back from its "file" text, where
// such bytes are replaced: every byte outside printable ASCII, and the
// backslash, is written as \xNN so the name can be rebuilt exactly.
std::optional<std::string> FileBytes(const std::string& file)
{
    if (qel::IsUTF8(file))
        return std::nullopt;
    std::string escaped;
    for (char c : file) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F && c != '\\') {
            escaped += c;
        } else {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned>(byte));
            escaped += hex;
        }
    }
    return escaped;
}

}  // namespace

void JsonWriter::Append(std::string& out, const std::string& file, const FileInfo& info)
{
    Line line(out);
    line.Raw("{\"file\":").String(file);
    if (auto bytes = FileBytes(file))
        line.Raw(",\"file_bytes\":").String(*bytes);
    line.Raw(",\"values\":").Number(info.values);

    line.Raw(",\"items\":[");
    for (size_t i = 0; i < info.items.size(); ++i) {
        const ItemText& item = info.items[i];
        line.Raw(i ? ",{\"id\":" : "{\"id\":").Number(item.id);
        line.Raw(",\"title\":").StringOrNull(item.title);
        line.Raw(",\"value\":").StringOrNull(item.value);
        line.Raw(",\"line\":").StringOrNull(item.line).Raw("}");
    }

    line.Raw("],\"grid\":{\"rows\":").Number(info.rows);
    line.Raw(",\"cols\":").Number(info.cols).Raw(",\"cells\":[");
    for (size_t r = 0; r < info.grid.size(); ++r) {
        line.Raw(r ? ",[" : "[");
        for (size_t c = 0; c < info.grid[r].size(); ++c)
            line.Raw(c ? "," : "").Number(info.grid[r][c].id);
        line.Raw("]");
    }

    line.Raw("]},\"lists\":[");
    m_entries.resize(info.lists.size());
    for (size_t l = 0; l < info.lists.size(); ++l) {
        const ValueList& list = info.lists[l];
        line.Raw(l ? ",{\"id\":" : "{\"id\":").Number(list.id);
        line.Raw(",\"count\":").Number(list.entries.size());
        line.Raw(",\"current\":").Number(list.current);
        line.Raw(Entries(m_entries[l], list));
    }
    line.Raw("]}");
}

const std::string& JsonWriter::Entries(RenderedEntries& rendered, const ValueList& list)
{
    if (rendered.id == list.id && rendered.revision == list.revision && list.revision != 0)
        return rendered.text;
    rendered.id = list.id;
    rendered.revision = list.revision;
    rendered.text.clear();
    Line line(rendered.text);
    line.Raw(",\"entries\":[");
    for (size_t e = 0; e < list.entries.size(); ++e) {
        line.Raw(e ? ",{\"raw\":" : "{\"raw\":").Number(list.entries[e].raw);
        line.Raw(",\"text\":").StringOrNull(list.entries[e].text).Raw("}");
    }
    line.Raw("]}");
    return rendered.text;
}

std::string JsonErrorLine(const std::string& file, const std::string& reason)
{
    Json object{{"file", file}};
    if (auto bytes = FileBytes(file))
        object["file_bytes"] = *bytes;
    object["error"] = reason;
    return Dump(object);
}

}  // namespace qelinfo
