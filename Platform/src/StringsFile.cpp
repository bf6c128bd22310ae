// SPDX-License-Identifier: MIT
// Parser of localized strings tables.
#include "StringsFile.h"

#include "CFStringEncodingInternal.h"
#include "CFStringInternal.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

namespace qelcf {

CFStringRef StringTable::Find(const std::u16string& key) const
{
    auto found = entries_.find(key);
    return found == entries_.end() ? nullptr : found->second.get();
}

void StringTable::Set(std::u16string key, std::u16string value)
{
    // A key given twice keeps its last text.
    entries_.insert_or_assign(std::move(key), StringHolder(CreateStringFromUnits(std::move(value))));
}

namespace {

class Parser {
public:
    explicit Parser(const std::u16string& text) : text_(text) {}

    bool Parse(StringTable& table, StringsFileError& error)
    {
        while (SkipSpaceAndComments()) {
            std::u16string key;
            if (!ReadString(key))
                return Fail(error);
            SkipSpaceAndComments();
            std::u16string value;
            if (Peek() == u'=') {
                ++at_;
                SkipSpaceAndComments();
                if (!ReadString(value))
                    return Fail(error);
                SkipSpaceAndComments();
            } else {
                value = key;  // a lone key stands for itself
            }
            if (Peek() != u';') {
                message_ = "expected ';' after an entry";
                return Fail(error);
            }
            ++at_;
            table.Set(std::move(key), std::move(value));
        }
        if (!message_.empty())
            return Fail(error);
        return true;
    }

private:
    char16_t Peek() const { return at_ < text_.size() ? text_[at_] : 0; }
    char16_t PeekAt(size_t offset) const { return at_ + offset < text_.size() ? text_[at_ + offset] : 0; }

    void Advance()
    {
        if (text_[at_] == u'\n')
            ++line_;
        ++at_;
    }

    bool Fail(StringsFileError& error) const
    {
        error.line = line_;
        error.message = message_;
        return false;
    }

    // Skips blanks and comments; false at the end of the text or on an
    // unterminated comment (which sets the message).
    bool SkipSpaceAndComments()
    {
        while (at_ < text_.size()) {
            const char16_t unit = text_[at_];
            if (unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r' || unit == u'\f' ||
                unit == u'\v' || unit == u'\uFEFF') {
                Advance();
            } else if (unit == u'/' && PeekAt(1) == u'/') {
                while (at_ < text_.size() && text_[at_] != u'\n')
                    Advance();
            } else if (unit == u'/' && PeekAt(1) == u'*') {
                const int start = line_;
                at_ += 2;
                while (at_ < text_.size() && !(text_[at_] == u'*' && PeekAt(1) == u'/'))
                    Advance();
                if (at_ >= text_.size()) {
                    line_ = start;
                    message_ = "unterminated comment";
                    return false;
                }
                at_ += 2;
            } else {
                return true;
            }
        }
        return false;
    }

    static bool IsBareChar(char16_t unit)
    {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
               (unit >= u'0' && unit <= u'9') || unit == u'_' || unit == u'$' || unit == u'+' ||
               unit == u'/' || unit == u':' || unit == u'.' || unit == u'-';
    }

    bool ReadString(std::u16string& out)
    {
        if (Peek() == u'"')
            return ReadQuoted(out);
        if (at_ < text_.size() && IsBareChar(Peek())) {
            while (at_ < text_.size() && IsBareChar(Peek()))
                out += text_[at_++];
            return true;
        }
        message_ = at_ < text_.size() ? "expected a quoted string" : "unexpected end of file";
        return false;
    }

    static int HexValue(char16_t unit)
    {
        if (unit >= u'0' && unit <= u'9')
            return unit - u'0';
        if (unit >= u'a' && unit <= u'f')
            return unit - u'a' + 10;
        if (unit >= u'A' && unit <= u'F')
            return unit - u'A' + 10;
        return -1;
    }

    bool ReadQuoted(std::u16string& out)
    {
        const int start = line_;
        ++at_;  // opening quote
        while (at_ < text_.size() && text_[at_] != u'"') {
            if (text_[at_] != u'\\') {
                out += text_[at_];
                Advance();
                continue;
            }
            ++at_;
            if (at_ >= text_.size())
                break;
            ReadEscape(out);
        }
        if (at_ >= text_.size()) {
            line_ = start;
            message_ = "unterminated string";
            return false;
        }
        ++at_;  // closing quote
        return true;
    }

    void ReadEscape(std::u16string& out)
    {
        const char16_t unit = text_[at_];
        switch (unit) {
        case u'n': out += u'\n'; ++at_; return;
        case u't': out += u'\t'; ++at_; return;
        case u'r': out += u'\r'; ++at_; return;
        case u'a': out += u'\a'; ++at_; return;
        case u'b': out += u'\b'; ++at_; return;
        case u'f': out += u'\f'; ++at_; return;
        case u'v': out += u'\v'; ++at_; return;
        case u'U':
        case u'u': {
            ++at_;
            unsigned value = 0;
            for (int digits = 0; digits < 4 && HexValue(Peek()) >= 0; ++digits, ++at_)
                value = value * 16 + static_cast<unsigned>(HexValue(Peek()));
            out += static_cast<char16_t>(value);
            return;
        }
        default:
            break;
        }
        if (unit >= u'0' && unit <= u'7') {
            unsigned value = 0;
            for (int digits = 0; digits < 3 && Peek() >= u'0' && Peek() <= u'7'; ++digits, ++at_)
                value = value * 8 + static_cast<unsigned>(Peek() - u'0');
            out += static_cast<char16_t>(value);
            return;
        }
        // \" \\ \' and any other character stand for themselves.
        out += unit;
        Advance();
    }

    const std::u16string& text_;
    size_t at_ = 0;
    int line_ = 1;
    std::string message_;
};

// The line of the first byte that is not valid UTF-8.
int FirstBadUTF8Line(const std::string& bytes)
{
    int line = 1;
    size_t start = 0;
    while (start <= bytes.size()) {
        size_t end = bytes.find('\n', start);
        if (end == std::string::npos)
            end = bytes.size();
        std::u16string ignored;
        if (!DecodeBytes(reinterpret_cast<const UInt8*>(bytes.data() + start), end - start,
                         kCFStringEncodingUTF8, false, ignored))
            return line;
        ++line;
        start = end + 1;
    }
    return 1;
}

bool DecodeStringsText(const std::string& bytes, std::u16string& text, StringsFileError& error)
{
    const auto* data = reinterpret_cast<const UInt8*>(bytes.data());
    const size_t size = bytes.size();
    CFStringEncoding encoding = kCFStringEncodingUTF8;
    // UTF-16 announces itself with a BOM; a file without one whose first
    // character has a zero byte is UTF-16 too.
    if (size >= 2 && ((data[0] == 0xFF && data[1] == 0xFE) || (data[0] == 0xFE && data[1] == 0xFF)))
        encoding = kCFStringEncodingUTF16;
    else if (size >= 2 && data[0] == 0 && data[1] != 0)
        encoding = kCFStringEncodingUTF16BE;
    else if (size >= 2 && data[0] != 0 && data[1] == 0)
        encoding = kCFStringEncodingUTF16LE;
    if (DecodeBytes(data, size, encoding, true, text))
        return true;
    if (encoding == kCFStringEncodingUTF8) {
        error.line = FirstBadUTF8Line(bytes);
        error.message = "text is not valid UTF-8";
    } else {
        error.line = 1;
        error.message = "UTF-16 text with an odd number of bytes";
    }
    return false;
}

}  // namespace

bool ParseStringsFile(const std::string& bytes, StringTable& table, StringsFileError& error)
{
    std::u16string text;
    if (!DecodeStringsText(bytes, text, error))
        return false;
    if (Parser(text).Parse(table, error))
        return true;
    table.Clear();
    return false;
}

std::unique_ptr<StringTable> LoadStringsFile(const std::string& path)
{
    auto table = std::make_unique<StringTable>();
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return table;
    std::ostringstream contents;
    contents << file.rdbuf();
    StringsFileError error;
    if (!ParseStringsFile(contents.str(), *table, error))
        std::fprintf(stderr, "%s:%d: %s; the table is ignored\n", path.c_str(), error.line,
                     error.message.c_str());
    return table;
}

}  // namespace qelcf
