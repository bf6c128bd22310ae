// SPDX-License-Identifier: MIT
// printf-style formatting into CFStrings.
//
// A format is parsed once into literal runs and conversions. Conversions
// may name their argument ("%2$.3f", "%1$@", "%*3$d"); a first pass records
// the type each argument number is read with, then the arguments are read
// from the va_list strictly in order, so positional and sequential
// conversions mix freely. Numbers print in the C locale: a decimal point,
// never the user's comma.
#include "CFStringInternal.h"

#include <algorithm>
#include <clocale>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <locale.h>
#include <string>
#include <vector>

namespace {

// How an argument is read from the va_list (after default promotions).
enum class ArgKind { Unknown, Int, Long, LongLong, Size, Double, LongDouble, Pointer };

struct Argument {
    ArgKind kind = ArgKind::Unknown;
    long long integer = 0;
    double real = 0;
    long double longReal = 0;
    const void* pointer = nullptr;
};

struct Conversion {
    std::string flags;
    int width = 0;
    int widthArg = 0;  // 1-based argument number of a '*' width, 0 for none
    bool hasWidth = false;
    int precision = 0;
    int precisionArg = 0;
    bool hasPrecision = false;
    std::string length;  // "", "hh", "h", "l", "ll", "q", "L", "z", "t", "j"
    char conversion = 0;
    int valueArg = 0;
};

struct Piece {
    std::u16string literal;  // printed as is when `isConversion` is false
    bool isConversion = false;
    Conversion directive;
};

// Argument numbers beyond this are not conversions: no caller passes that
// many, and reading them would walk off the argument list.
constexpr int kMaxArguments = 256;

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

bool IsOneOf(char16_t unit, const char* set)
{
    return unit != 0 && unit < 0x80 && std::strchr(set, static_cast<char>(unit)) != nullptr;
}

// Reads a decimal number at `at`; -1 when there is none.
int ReadNumber(const std::u16string& text, size_t& at)
{
    if (at >= text.size() || !IsDigit(text[at]))
        return -1;
    long value = 0;
    while (at < text.size() && IsDigit(text[at])) {
        if (value < 100000000)
            value = value * 10 + (text[at] - u'0');
        ++at;
    }
    return static_cast<int>(value);
}

// Reads "n$" at `at`, leaving `at` unchanged when it is not there.
int ReadPosition(const std::u16string& text, size_t& at)
{
    size_t probe = at;
    const int number = ReadNumber(text, probe);
    if (number > 0 && number <= kMaxArguments && probe < text.size() && text[probe] == u'$') {
        at = probe + 1;
        return number;
    }
    return 0;
}

// A '*' width or precision: its argument is the named one or the next one.
int ReadStarArgument(const std::u16string& text, size_t& at, int& sequential)
{
    ++at;  // the '*'
    const int position = ReadPosition(text, at);
    return position > 0 ? position : ++sequential;
}

constexpr char kKnownConversions[] = "diouxXDOUcCsSpfFeEgGaA@n";

bool ParseConversion(const std::u16string& text, size_t& at, int& sequential, Conversion& directive)
{
    directive.valueArg = ReadPosition(text, at);
    while (at < text.size() && IsOneOf(text[at], "-+ #0'"))
        directive.flags += static_cast<char>(text[at++]);
    if (at < text.size() && text[at] == u'*') {
        directive.widthArg = ReadStarArgument(text, at, sequential);
        directive.hasWidth = true;
    } else if (at < text.size() && IsDigit(text[at])) {
        directive.width = ReadNumber(text, at);
        directive.hasWidth = true;
    }
    if (at < text.size() && text[at] == u'.') {
        ++at;
        directive.hasPrecision = true;
        if (at < text.size() && text[at] == u'*')
            directive.precisionArg = ReadStarArgument(text, at, sequential);
        else
            directive.precision = std::max(ReadNumber(text, at), 0);  // "%.f" means precision 0
    }
    static const char* const kLengths[] = {"hh", "ll", "h", "l", "q", "L", "z", "t", "j"};
    for (const char* length : kLengths) {
        const size_t size = std::strlen(length);
        if (at + size <= text.size() &&
            std::equal(length, length + size, text.begin() + static_cast<long>(at))) {
            directive.length = length;
            at += size;
            break;
        }
    }
    if (at >= text.size() || !IsOneOf(text[at], kKnownConversions))
        return false;
    directive.conversion = static_cast<char>(text[at++]);
    if (directive.valueArg == 0)
        directive.valueArg = ++sequential;
    return true;
}

std::vector<Piece> ParseFormat(const std::u16string& format)
{
    std::vector<Piece> pieces(1);
    int sequential = 0;
    size_t at = 0;
    while (at < format.size()) {
        if (format[at] != u'%') {
            pieces.back().literal += format[at++];
            continue;
        }
        if (at + 1 < format.size() && format[at + 1] == u'%') {
            pieces.back().literal += u'%';
            at += 2;
            continue;
        }
        const size_t start = at++;
        Conversion directive;
        if (!ParseConversion(format, at, sequential, directive)) {
            // Not a conversion this layer knows: the text stays as written.
            pieces.back().literal.append(format, start, at - start);
            continue;
        }
        Piece piece;
        piece.isConversion = true;
        piece.directive = directive;
        pieces.push_back(std::move(piece));
        pieces.emplace_back();
    }
    return pieces;
}

ArgKind IntegerKind(const std::string& length)
{
    if (length == "l")
        return ArgKind::Long;
    if (length == "ll" || length == "q" || length == "j" || length == "L")
        return ArgKind::LongLong;
    if (length == "z" || length == "t")
        return ArgKind::Size;
    return ArgKind::Int;
}

ArgKind ValueKind(const Conversion& directive)
{
    switch (directive.conversion) {
    case 'D': case 'O': case 'U':
        return ArgKind::Long;
    case 'c': case 'C':
        return ArgKind::Int;
    case 'f': case 'F': case 'e': case 'E': case 'g': case 'G': case 'a': case 'A':
        return directive.length == "L" ? ArgKind::LongDouble : ArgKind::Double;
    case 's': case 'S': case 'p': case '@': case 'n':
        return ArgKind::Pointer;
    default:
        return IntegerKind(directive.length);
    }
}

void NoteKind(std::vector<Argument>& arguments, int number, ArgKind kind)
{
    if (number <= 0)
        return;
    if (arguments.size() < static_cast<size_t>(number))
        arguments.resize(static_cast<size_t>(number));
    Argument& argument = arguments[static_cast<size_t>(number - 1)];
    if (argument.kind == ArgKind::Unknown)
        argument.kind = kind;
}

// Reads every argument once, in order. An argument number that no
// conversion uses is read as an int, the most a caller can have passed
// in its place.
std::vector<Argument> ReadArguments(const std::vector<Piece>& pieces, va_list list)
{
    std::vector<Argument> arguments;
    for (const Piece& piece : pieces) {
        if (!piece.isConversion)
            continue;
        NoteKind(arguments, piece.directive.widthArg, ArgKind::Int);
        NoteKind(arguments, piece.directive.precisionArg, ArgKind::Int);
        NoteKind(arguments, piece.directive.valueArg, ValueKind(piece.directive));
    }
    for (Argument& argument : arguments) {
        switch (argument.kind) {
        case ArgKind::Unknown:
        case ArgKind::Int: argument.integer = va_arg(list, int); break;
        case ArgKind::Long: argument.integer = va_arg(list, long); break;
        case ArgKind::LongLong: argument.integer = va_arg(list, long long); break;
        case ArgKind::Size: argument.integer = static_cast<long long>(va_arg(list, size_t)); break;
        case ArgKind::Double: argument.real = va_arg(list, double); break;
        case ArgKind::LongDouble: argument.longReal = va_arg(list, long double); break;
        case ArgKind::Pointer: argument.pointer = va_arg(list, const void*); break;
        }
    }
    return arguments;
}

// Formats with the C library in the C locale.
std::string PrintC(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string PrintC(const char* format, ...)
{
    struct CLocale {
        locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
        ~CLocale()
        {
            if (locale)
                freelocale(locale);
        }
    };
    thread_local CLocale cLocale;
    locale_t previous = cLocale.locale ? uselocale(cLocale.locale) : nullptr;

    char small[128];
    va_list list;
    va_start(list, format);
    const int needed = vsnprintf(small, sizeof small, format, list);
    va_end(list);
    std::string result;
    if (needed >= static_cast<int>(sizeof small)) {
        result.resize(static_cast<size_t>(needed) + 1);
        va_start(list, format);
        vsnprintf(&result[0], result.size(), format, list);
        va_end(list);
        result.resize(static_cast<size_t>(needed));
    } else if (needed > 0) {
        result.assign(small, static_cast<size_t>(needed));
    }
    if (previous)
        uselocale(previous);
    return result;
}

class Formatter {
public:
    Formatter(const Conversion& directive, const std::vector<Argument>& arguments)
        : spec_(directive), arguments_(arguments)
    {
        width_ = directive.widthArg ? static_cast<int>(ArgumentAt(directive.widthArg).integer) : directive.width;
        precision_ = directive.precisionArg ? static_cast<int>(ArgumentAt(directive.precisionArg).integer)
                                       : directive.precision;
        leftAlign_ = directive.flags.find('-') != std::string::npos;
        if (width_ < 0) {  // a negative '*' width means left alignment
            leftAlign_ = true;
            width_ = width_ == INT32_MIN ? 0 : -width_;
        }
        if (!directive.hasWidth)
            width_ = 0;
        // A negative '*' precision counts as none.
        hasPrecision_ = directive.hasPrecision && precision_ >= 0;
    }

    void AppendTo(std::u16string& out) const
    {
        const Argument& value = ArgumentAt(spec_.valueArg);
        switch (spec_.conversion) {
        case 'd': case 'i': case 'D':
            return AppendASCII(out, PrintC(NarrowFormat("lld").c_str(), width_, Precision(),
                                           SignedValue(value.integer)));
        case 'o': case 'u': case 'x': case 'X': case 'O': case 'U': {
            const char conversion = spec_.conversion == 'O' ? 'o'
                                    : spec_.conversion == 'U' ? 'u' : spec_.conversion;
            return AppendASCII(out, PrintC(NarrowFormat(std::string("ll") + conversion).c_str(),
                                           width_, Precision(), UnsignedValue(value.integer)));
        }
        case 'f': case 'F': case 'e': case 'E': case 'g': case 'G': case 'a': case 'A':
            if (spec_.length == "L")
                return AppendASCII(out, PrintC(NarrowFormat(std::string("L") + spec_.conversion).c_str(),
                                               width_, Precision(), value.longReal));
            return AppendASCII(out, PrintC(NarrowFormat(std::string(1, spec_.conversion)).c_str(),
                                           width_, Precision(), value.real));
        case 'c': {
            const char text[2] = {static_cast<char>(static_cast<unsigned char>(value.integer)), 0};
            return AppendPadded(out, qelcf::DecodeUTF8Lenient(text, 1), false);
        }
        case 'C':
            return AppendPadded(out, std::u16string(1, static_cast<char16_t>(value.integer)), false);
        case 's':
            return AppendCString(out, static_cast<const char*>(value.pointer));
        case 'S':
            return AppendPadded(out, UnicharString(static_cast<const UniChar*>(value.pointer)), true);
        case '@':
            return AppendPadded(out, ObjectDescription(value.pointer), true);
        case 'p':
            return AppendASCII(out, PrintC(NarrowFormat("p").c_str(), width_, Precision(), value.pointer));
        default:  // 'n' writes nothing and stores nothing
            return;
        }
    }

private:
    const Argument& ArgumentAt(int number) const { return arguments_[static_cast<size_t>(number - 1)]; }

    int Precision() const { return hasPrecision_ ? precision_ : -1; }

    // "%<flags>*.*<tail>": width and precision are passed as arguments.
    std::string NarrowFormat(const std::string& tail) const
    {
        std::string flags;
        for (char flag : spec_.flags)
            if (flag != '-')
                flags += flag;
        return "%" + flags + (leftAlign_ ? "-" : "") + "*.*" + tail;
    }

    long long SignedValue(long long raw) const
    {
        if (spec_.conversion == 'D')
            return raw;
        if (spec_.length == "hh")
            return static_cast<signed char>(raw);
        if (spec_.length == "h")
            return static_cast<short>(raw);
        if (spec_.length.empty())
            return static_cast<int>(raw);
        return raw;
    }

    unsigned long long UnsignedValue(long long raw) const
    {
        const auto bits = static_cast<unsigned long long>(raw);
        if (spec_.conversion == 'O' || spec_.conversion == 'U')
            return static_cast<unsigned long>(bits);
        if (spec_.length == "hh")
            return static_cast<unsigned char>(bits);
        if (spec_.length == "h")
            return static_cast<unsigned short>(bits);
        if (spec_.length.empty())
            return static_cast<unsigned int>(bits);
        return bits;
    }

    static void AppendASCII(std::u16string& out, const std::string& text)
    {
        out.append(text.begin(), text.end());
    }

    // "%s": the bytes are in the system encoding, UTF-8; width and
    // precision count bytes, as in printf.
    void AppendCString(std::u16string& out, const char* text) const
    {
        const std::string printed =
            PrintC(NarrowFormat("s").c_str(), width_, Precision(), text ? text : "(null)");
        out += qelcf::DecodeUTF8Lenient(printed.data(), printed.size());
    }

    // Width and precision of strings counted in UTF-16 units.
    void AppendPadded(std::u16string& out, std::u16string text, bool truncate) const
    {
        if (truncate && hasPrecision_ && text.size() > static_cast<size_t>(precision_))
            text.resize(static_cast<size_t>(precision_));
        const size_t padding =
            static_cast<size_t>(width_) > text.size() ? static_cast<size_t>(width_) - text.size() : 0;
        if (!leftAlign_)
            out.append(padding, u' ');
        out += text;
        if (leftAlign_)
            out.append(padding, u' ');
    }

    static std::u16string UnicharString(const UniChar* units)
    {
        if (units == nullptr)
            return u"(null)";
        std::u16string text;
        while (*units)
            text += static_cast<char16_t>(*units++);
        return text;
    }

    static std::u16string ObjectDescription(const void* object)
    {
        if (object == nullptr)
            return u"(null)";
        return static_cast<const qelcf::CFObject*>(object)->Description();
    }

    const Conversion& spec_;
    const std::vector<Argument>& arguments_;
    int width_ = 0;
    int precision_ = 0;
    bool leftAlign_ = false;
    bool hasPrecision_ = false;
};

void AppendFormatted(std::u16string& out, CFStringRef format, va_list arguments)
{
    const std::vector<Piece> pieces = ParseFormat(qelcf::UnitsOf(format));
    va_list list;
    va_copy(list, arguments);
    const std::vector<Argument> values = ReadArguments(pieces, list);
    va_end(list);
    for (const Piece& piece : pieces) {
        if (piece.isConversion)
            Formatter(piece.directive, values).AppendTo(out);
        else
            out += piece.literal;
    }
}

}  // namespace

CFStringRef CFStringCreateWithFormatAndArguments(CFAllocatorRef, CFDictionaryRef, CFStringRef format,
                                                 va_list arguments)
{
    if (format == nullptr)
        return nullptr;
    std::u16string text;
    AppendFormatted(text, format, arguments);
    return qelcf::CreateStringFromUnits(std::move(text));
}

CFStringRef CFStringCreateWithFormat(CFAllocatorRef alloc, CFDictionaryRef formatOptions,
                                     CFStringRef format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    CFStringRef result = CFStringCreateWithFormatAndArguments(alloc, formatOptions, format, arguments);
    va_end(arguments);
    return result;
}

void CFStringAppendFormatAndArguments(CFMutableStringRef theString, CFDictionaryRef,
                                      CFStringRef format, va_list arguments)
{
    if (theString == nullptr || format == nullptr)
        return;
    std::u16string text;
    AppendFormatted(text, format, arguments);
    static_cast<__CFString*>(theString)->units += text;
}

void CFStringAppendFormat(CFMutableStringRef theString, CFDictionaryRef formatOptions,
                          CFStringRef format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    CFStringAppendFormatAndArguments(theString, formatOptions, format, arguments);
    va_end(arguments);
}
