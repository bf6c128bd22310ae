// SPDX-License-Identifier: MIT
#include "JsonTagSource.h"

#include "SourceFile.h"
#include "TagSourceError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <limits>
#include <optional>

namespace qel {

namespace {

using json = nlohmann::json;

// A tag file describes one image's tags; anything larger is not one.
constexpr size_t kTagFileLimit = 16 * 1024 * 1024;

enum class Payload { kText, kInts, kU16, kDoubles, kValueStep, kBytes, kHex };

struct PayloadKey {
    const char* key;
    Payload payload;
};

constexpr PayloadKey kPayloadKeys[] = {
    {"text", Payload::kText},
    {"ints", Payload::kInts},
    {"u16", Payload::kU16},
    {"doubles", Payload::kDoubles},
    {"valueStep", Payload::kValueStep},
    {"bytes", Payload::kBytes},
    {"hex", Payload::kHex},
};

// Keys of a tag besides its payload; `name` is only for human readers.
constexpr const char* kTagKeys[] = {"id", "type", "size", "name"};
constexpr const char* kTopKeys[] = {"fileKind", "tags", "description"};

[[noreturn]] void Malformed(const std::string& where, const std::string& what)
{
    throw TagSourceError(where.empty() ? what : where + ": " + what);
}

std::string Hex(UInt32 value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(value));
    return text;
}

std::string Quoted(const std::string& key)
{
    return "\"" + key + "\"";
}

// A whole number within [low, high]; fractions and out-of-range numbers are
// not accepted, so a typo cannot silently wrap around.
std::optional<long long> IntegerIn(const json& value, long long low, long long high)
{
    long long number = 0;
    if (value.is_number_unsigned()) {
        auto u = value.get<unsigned long long>();
        if (u > static_cast<unsigned long long>(std::numeric_limits<long long>::max()))
            return std::nullopt;
        number = static_cast<long long>(u);
    } else if (value.is_number_integer()) {
        number = value.get<long long>();
    } else {
        return std::nullopt;
    }
    if (number < low || number > high)
        return std::nullopt;
    return number;
}

std::optional<unsigned long long> HexNumber(const std::string& text, size_t maxDigits)
{
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X'))
        return std::nullopt;
    std::string digits = text.substr(2);
    auto isHexDigit = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    if (digits.size() > maxDigits || !std::all_of(digits.begin(), digits.end(), isHexDigit))
        return std::nullopt;
    return std::stoull(digits, nullptr, 16);
}

// A tag ID or file kind: a number, or a "0x" hex string.
std::optional<long long> NumberOrHex(const json& value, long long low, long long high)
{
    if (value.is_string()) {
        auto number = HexNumber(value.get<std::string>(), 8);
        if (!number || static_cast<long long>(*number) < low ||
            static_cast<long long>(*number) > high)
            return std::nullopt;
        return static_cast<long long>(*number);
    }
    return IntegerIn(value, low, high);
}

template <class T>
std::vector<UInt8> IntegerArray(const json& array, const std::string& where, const char* key,
                                const char* what)
{
    if (!array.is_array())
        Malformed(where, Quoted(key) + " must be an array of " + what);
    std::vector<T> values;
    for (size_t i = 0; i < array.size(); ++i) {
        auto number = IntegerIn(array[i], std::numeric_limits<T>::min(),
                                std::numeric_limits<T>::max());
        if (!number)
            Malformed(where, Quoted(key) + " element " + std::to_string(i) + " is not " + what);
        values.push_back(static_cast<T>(*number));
    }
    return HostBytes(values);
}

std::vector<UInt8> DoubleArray(const json& array, const std::string& where)
{
    if (!array.is_array())
        Malformed(where, "\"doubles\" must be an array of numbers");
    std::vector<double> values;
    for (size_t i = 0; i < array.size(); ++i) {
        if (!array[i].is_number())
            Malformed(where, "\"doubles\" element " + std::to_string(i) + " is not a number");
        values.push_back(array[i].get<double>());
    }
    return HostBytes(values);
}

std::vector<UInt8> ValueStepRecord(const json& array, const std::string& where)
{
    constexpr const char* kShape = "three signed 16-bit integers (value, step numerator, step denominator)";
    if (!array.is_array() || array.size() != 3)
        Malformed(where, std::string("\"valueStep\" must be ") + kShape);
    SInt16 fields[3];
    for (size_t i = 0; i < 3; ++i) {
        auto number = IntegerIn(array[i], std::numeric_limits<SInt16>::min(),
                                std::numeric_limits<SInt16>::max());
        if (!number)
            Malformed(where, std::string("\"valueStep\" must be ") + kShape);
        fields[i] = static_cast<SInt16>(*number);
    }
    return HostBytes(IVandelTagControl::tagStrValueStep{fields[0], fields[1], fields[2]});
}

std::vector<UInt8> HexBytes(const json& value, const std::string& where)
{
    if (!value.is_string())
        Malformed(where, "\"hex\" must be a string of hex digits");
    std::string digits;
    for (char c : value.get<std::string>()) {
        if (c == ' ')
            continue;
        if (!std::isxdigit(static_cast<unsigned char>(c)))
            Malformed(where, "\"hex\" holds a character that is not a hex digit");
        digits.push_back(c);
    }
    if (digits.size() % 2 != 0)
        Malformed(where, "\"hex\" has an odd number of digits");
    std::vector<UInt8> bytes;
    for (size_t i = 0; i < digits.size(); i += 2)
        bytes.push_back(static_cast<UInt8>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    return bytes;
}

TagTable::Tag PayloadTag(Payload payload, const json& value, const std::string& where)
{
    TagTable::Tag tag;
    switch (payload) {
    case Payload::kText:
        if (!value.is_string())
            Malformed(where, "\"text\" must be a string");
        {
            const std::string& text = value.get_ref<const std::string&>();
            const auto* bytes = reinterpret_cast<const UInt8*>(text.data());
            tag.bytes.assign(bytes, bytes + text.size());
            tag.bytes.push_back(0);
            tag.isText = true;
        }
        break;
    case Payload::kInts:
        tag.bytes = IntegerArray<SInt32>(value, where, "ints", "a signed 32-bit integer");
        break;
    case Payload::kU16:
        tag.bytes = IntegerArray<UInt16>(value, where, "u16", "an unsigned 16-bit integer");
        break;
    case Payload::kDoubles:
        tag.bytes = DoubleArray(value, where);
        break;
    case Payload::kValueStep:
        tag.bytes = ValueStepRecord(value, where);
        break;
    case Payload::kBytes:
        tag.bytes = IntegerArray<UInt8>(value, where, "bytes", "a byte (0 to 255)");
        break;
    case Payload::kHex:
        tag.bytes = HexBytes(value, where);
        break;
    }
    tag.size = static_cast<UInt32>(tag.bytes.size());
    return tag;
}

template <size_t N>
bool IsOneOf(const std::string& key, const char* const (&keys)[N])
{
    return std::any_of(std::begin(keys), std::end(keys), [&](const char* k) { return key == k; });
}

bool IsPayloadKey(const std::string& key)
{
    return std::any_of(std::begin(kPayloadKeys), std::end(kPayloadKeys),
                       [&](const PayloadKey& p) { return key == p.key; });
}

// One entry of "tags": its ID and the tag it delivers.
std::pair<UInt32, TagTable::Tag> ParseTag(const json& entry, size_t position)
{
    std::string where = "tag #" + std::to_string(position + 1);
    if (!entry.is_object())
        Malformed(where, "not an object");
    if (!entry.contains("id"))
        Malformed(where, "\"id\" is missing");
    auto id = NumberOrHex(entry["id"], 0, std::numeric_limits<UInt32>::max());
    if (!id)
        Malformed(where, "\"id\" must be a number or a \"0x\" hex string of 32 bits");
    where = "tag " + Hex(static_cast<UInt32>(*id));

    for (const auto& item : entry.items())
        if (!IsOneOf(item.key(), kTagKeys) && !IsPayloadKey(item.key()))
            Malformed(where, "unknown key " + Quoted(item.key()));
    if (entry.contains("name") && !entry["name"].is_string())
        Malformed(where, "\"name\" must be a string");

    if (!entry.contains("type"))
        Malformed(where, "\"type\" is missing");
    auto type = IntegerIn(entry["type"], 0, std::numeric_limits<UInt32>::max());
    if (!type)
        Malformed(where, "\"type\" must be an unsigned 32-bit number");

    const PayloadKey* found = nullptr;
    for (const PayloadKey& p : kPayloadKeys) {
        if (!entry.contains(p.key))
            continue;
        if (found)
            Malformed(where, std::string("more than one payload (\"") + found->key + "\" and \"" +
                                 p.key + "\")");
        found = &p;
    }
    if (!found)
        Malformed(where, "no payload (text, ints, u16, doubles, valueStep, bytes or hex)");

    TagTable::Tag tag = PayloadTag(found->payload, entry[found->key], where);
    tag.type = static_cast<UInt32>(*type);
    if (entry.contains("size")) {
        auto size = IntegerIn(entry["size"], 0, std::numeric_limits<UInt32>::max());
        if (!size)
            Malformed(where, "\"size\" must be an unsigned 32-bit number");
        tag.size = static_cast<UInt32>(*size);
    }
    return {static_cast<UInt32>(*id), std::move(tag)};
}

// Line and column (both from 1) of the character the parser stopped at.
std::string Position(const std::string& text, size_t charactersRead)
{
    // At the end of the input the parser stands one past the last character.
    size_t offset = charactersRead > 0 ? charactersRead - 1 : 0;
    size_t scanned = std::min(offset, text.size());
    size_t line = 1 + static_cast<size_t>(std::count(text.begin(), text.begin() + scanned, '\n'));
    size_t lineStart = 0;
    if (scanned > 0) {
        size_t newline = text.rfind('\n', scanned - 1);
        lineStart = newline == std::string::npos ? 0 : newline + 1;
    }
    return "line " + std::to_string(line) + ", column " + std::to_string(offset - lineStart + 1);
}

json ParseJson(const std::string& text)
{
    try {
        return json::parse(text);
    } catch (const json::parse_error& error) {
        // The library's message reads "[json.exception...] parse error at ...: <reason>".
        std::string reason = error.what();
        size_t colon = reason.find(": ");
        if (colon != std::string::npos)
            reason = reason.substr(colon + 2);
        Malformed(Position(text, error.byte), "JSON syntax error: " + reason);
    } catch (const json::exception& error) {
        // A number beyond the range of a double is refused by the parser
        // without a position: "[json.exception.out_of_range.406] number
        // overflow parsing '1e400'".
        std::string reason = error.what();
        size_t bracket = reason.find("] ");
        if (bracket != std::string::npos)
            reason = reason.substr(bracket + 2);
        Malformed("", "JSON number out of range: " + reason);
    }
}

}  // namespace

std::unique_ptr<JsonTagSource> JsonTagSource::FromFile(const std::string& path)
{
    return FromText(ReadSmallFile(path, kTagFileLimit));
}

std::unique_ptr<JsonTagSource> JsonTagSource::FromText(const std::string& text)
{
    json document = ParseJson(text);
    if (!document.is_object())
        Malformed("", "a tag file is a JSON object with a \"tags\" array");
    for (const auto& item : document.items())
        if (!IsOneOf(item.key(), kTopKeys))
            Malformed("", "unknown key " + Quoted(item.key()) + " at the top level");
    if (!document.contains("tags") || !document["tags"].is_array())
        Malformed("", "no \"tags\" array");

    auto source = std::make_unique<JsonTagSource>();
    if (document.contains("fileKind") && !document["fileKind"].is_null()) {
        auto kind = NumberOrHex(document["fileKind"], std::numeric_limits<SInt32>::min(),
                                std::numeric_limits<SInt32>::max());
        if (!kind)
            Malformed("", "\"fileKind\" must be a signed 32-bit number, a \"0x\" hex string or null");
        source->SetFileKind(static_cast<SInt32>(*kind));
    }

    const json& tags = document["tags"];
    for (size_t i = 0; i < tags.size(); ++i) {
        auto [id, tag] = ParseTag(tags[i], i);
        if (!source->Add(id, std::move(tag)))
            Malformed("tag " + Hex(id), "given twice");
    }
    return source;
}

std::string JsonTagSource::FileKindUnknownReason() const
{
    return "the tag file gives no fileKind";
}

}  // namespace qel
