// SPDX-License-Identifier: MIT
#include "FormatArguments.h"

#include "NumberStyle.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

namespace qel {
namespace {

// One conversion as written in the format, without its position.
struct Conversion {
    size_t position = 0;     // 1-based argument, 0 when taken in order
    std::string flags;
    std::string width;       // digits, or "*"
    size_t widthPosition = 0;
    std::string precision;   // "" absent, ".", ".5" or ".*"
    size_t precisionPosition = 0;
    std::string length;      // hh h l ll q L z t j
    char conversion = 0;
};

// Widths and precisions beyond four digits are not honoured: no display
// cell holds them, and printing them would only cost memory.
constexpr size_t kMaxDigits = 4;

bool IsDigit(UniChar c) { return c >= '0' && c <= '9'; }

// Reads "123$" at `i`; answers the number and moves past the '$', or 0.
size_t ReadPosition(const std::vector<UniChar>& text, size_t& i)
{
    size_t j = i, value = 0;
    while (j < text.size() && IsDigit(text[j]) && value < 1000)
        value = value * 10 + (text[j++] - '0');
    if (j > i && j < text.size() && text[j] == '$' && value > 0) {
        i = j + 1;
        return value;
    }
    return 0;
}

// Printed numbers and literals: each byte up to the first zero becomes one
// unit (a byte above 0x7F, which no number prints, stands for its Latin-1
// character, as the string layer appends it).
void AppendASCII(CFMutableStringRef out, const std::string& text)
{
    const size_t length = std::char_traits<char>::length(text.c_str());
    UniChar units[64];
    for (size_t done = 0; done < length;) {
        const size_t count = std::min(length - done, sizeof units / sizeof units[0]);
        for (size_t k = 0; k < count; ++k)
            units[k] = static_cast<unsigned char>(text[done + k]);
        CFStringAppendCharacters(out, units, static_cast<CFIndex>(count));
        done += count;
    }
}

// A C string in the system encoding; bytes that are not UTF-8 are taken as
// Latin-1 so the text still shows.
void AppendCString(CFMutableStringRef out, const char* text)
{
    if (!text)
        return;
    CFStringRef converted = CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingUTF8);
    if (!converted)
        converted = CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingISOLatin1);
    if (converted) {
        CFStringAppend(out, converted);
        CFRelease(converted);
    }
}

template <class... Values>
std::string Print(const std::string& directive, Values... values)
{
    // A number fits the small buffer and is printed once; only a longer
    // text is measured first and printed again.
    const CNumericScope cNumbers;
    char small[64];
    int needed = std::snprintf(small, sizeof small, directive.c_str(), values...);
    if (needed <= 0)
        return {};
    if (static_cast<size_t>(needed) < sizeof small)
        return std::string(small, static_cast<size_t>(needed));
    std::string result(static_cast<size_t>(needed) + 1, '\0');
    std::snprintf(&result[0], result.size(), directive.c_str(), values...);
    result.resize(static_cast<size_t>(needed));
    return result;
}

// Writes the digits of `magnitude` backwards so that they end at `end`;
// answers where they start.
char* PutDigits(char* end, unsigned long long magnitude)
{
    do {
        *--end = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    return end;
}

// The magnitude of a value, negated in unsigned arithmetic so that the most
// negative value stays defined.
unsigned long long Magnitude(long long value)
{
    const unsigned long long bits = static_cast<unsigned long long>(value);
    return value < 0 ? 0ull - bits : bits;
}

// An integer as "%lld" or "%llu" prints it, without printf.
void AppendDecimal(CFMutableStringRef out, unsigned long long magnitude, bool negative)
{
    char digits[24];
    char* first = PutDigits(std::end(digits), magnitude);
    if (negative)
        *--first = '-';
    AppendASCII(out, std::string(first, std::end(digits)));
}

// The argument in its own plain form.
void AppendPlain(CFMutableStringRef out, const FormatArgument& argument)
{
    switch (argument.kind) {
    case FormatArgument::Kind::Signed:
        AppendDecimal(out, Magnitude(argument.integer), argument.integer < 0);
        break;
    case FormatArgument::Kind::Unsigned:
        AppendDecimal(out, static_cast<unsigned long long>(argument.integer), false);
        break;
    case FormatArgument::Kind::Double:
        AppendASCII(out, Print("%f", argument.real));
        break;
    case FormatArgument::Kind::CString:
        AppendCString(out, argument.text);
        break;
    case FormatArgument::Kind::CFString:
        if (argument.string)
            CFStringAppend(out, argument.string);
        break;
    }
}

bool IsInteger(const FormatArgument& a)
{
    return a.kind == FormatArgument::Kind::Signed || a.kind == FormatArgument::Kind::Unsigned;
}

// An integer argument narrowed as the length modifier says, the way a C
// variable argument of that size would be read.
long long Narrowed(const FormatArgument& a, const std::string& length, bool isSigned)
{
    unsigned long long bits = static_cast<unsigned long long>(a.integer);
    if (length == "hh")
        return isSigned ? static_cast<long long>(static_cast<signed char>(bits))
                        : static_cast<long long>(static_cast<unsigned char>(bits));
    if (length == "h")
        return isSigned ? static_cast<long long>(static_cast<short>(bits))
                        : static_cast<long long>(static_cast<unsigned short>(bits));
    if (length.empty())
        return isSigned ? static_cast<long long>(static_cast<int>(bits))
                        : static_cast<long long>(static_cast<unsigned>(bits));
    return static_cast<long long>(bits);  // l, ll, q, z, t, j: the full 64 bits
}

class Formatter {
public:
    Formatter(CFMutableStringRef out, const FormatArgument* arguments, size_t count,
              UniChar decimalSeparator)
        : m_out(out), m_arguments(arguments), m_count(count), m_separator(decimalSeparator)
    {
    }

    void Run(const std::vector<UniChar>& text)
    {
        size_t literal = 0, i = 0;
        while (i < text.size()) {
            if (text[i] != '%') {
                ++i;
                continue;
            }
            FlushLiteral(text, literal, i);
            ++i;
            if (i < text.size() && text[i] == '%') {
                AppendASCII(m_out, "%");
                literal = ++i;
                continue;
            }
            Conversion c;
            if (!Parse(text, i, c)) {
                literal = i;  // a malformed conversion prints nothing
                continue;
            }
            Emit(c);
            literal = i;
        }
        FlushLiteral(text, literal, text.size());
    }

private:
    void FlushLiteral(const std::vector<UniChar>& text, size_t from, size_t to)
    {
        if (to > from)
            CFStringAppendCharacters(m_out, text.data() + from, static_cast<CFIndex>(to - from));
    }

    static bool Parse(const std::vector<UniChar>& text, size_t& i, Conversion& c)
    {
        c.position = ReadPosition(text, i);
        while (i < text.size() && (text[i] == '-' || text[i] == '+' || text[i] == ' ' ||
                                   text[i] == '#' || text[i] == '0' || text[i] == '\''))
            c.flags += static_cast<char>(text[i++]);
        if (i < text.size() && text[i] == '*') {
            ++i;
            c.width = "*";
            c.widthPosition = ReadPosition(text, i);
        } else {
            while (i < text.size() && IsDigit(text[i]))
                c.width += static_cast<char>(text[i++]);
            if (c.width.size() > kMaxDigits)
                c.width.clear();
        }
        if (i < text.size() && text[i] == '.') {
            ++i;
            c.precision = ".";
            if (i < text.size() && text[i] == '*') {
                ++i;
                c.precision = ".*";
                c.precisionPosition = ReadPosition(text, i);
            } else {
                while (i < text.size() && IsDigit(text[i]))
                    c.precision += static_cast<char>(text[i++]);
                if (c.precision.size() > kMaxDigits + 1)
                    c.precision.clear();
            }
        }
        while (i < text.size() && (text[i] == 'h' || text[i] == 'l' || text[i] == 'q' ||
                                   text[i] == 'L' || text[i] == 'z' || text[i] == 't' ||
                                   text[i] == 'j') && c.length.size() < 2)
            c.length += static_cast<char>(text[i++]);
        if (i >= text.size() || text[i] > 0x7F)
            return false;
        c.conversion = static_cast<char>(text[i++]);
        return true;
    }

    const FormatArgument* Take(size_t position)
    {
        size_t index = position ? position : ++m_next;
        return index >= 1 && index <= m_count ? &m_arguments[index - 1] : nullptr;
    }

    // A '*' width or precision: an integer argument, else none.
    std::string Star(size_t position)
    {
        const FormatArgument* a = Take(position);
        if (!a || !IsInteger(*a))
            return "";
        long long value = Narrowed(*a, "", true);
        if (value < -9999 || value > 9999)
            return "";  // a width no cell can hold is not honoured
        return std::to_string(value);
    }

    void Emit(const Conversion& c)
    {
        std::string width = c.width == "*" ? Star(c.widthPosition) : c.width;
        std::string precision = c.precision == ".*" ? "." + Star(c.precisionPosition) : c.precision;
        if (precision == ".-" || (precision.size() > 1 && precision[1] == '-'))
            precision.clear();  // a negative precision counts as none
        const FormatArgument* a = Take(c.position);
        if (!a)
            return;
        const CFIndex start = CFStringGetLength(m_out);
        if (!AppendDirect(c, width, precision, a))
            Convert(c.conversion, c.length, "%" + c.flags + width + precision, a);
        // Doubles and C strings (numbers the library printed) take the language's separator.
        if (a->kind == FormatArgument::Kind::Double || a->kind == FormatArgument::Kind::CString)
            StyleDecimalPoints(m_out, start, m_separator);
    }

    // Decimal integers without a precision and "%.Nf" with N of at most four,
    // with any of the flags "+-0 " and a width, written without printf; false
    // for every other conversion.
    bool AppendDirect(const Conversion& c, const std::string& width, const std::string& precision,
                      const FormatArgument* a)
    {
        if (c.flags.find_first_not_of("+-0 ") != std::string::npos ||
            width.find_first_not_of("0123456789") != std::string::npos)
            return false;
        char digits[32];
        char* end = std::end(digits);
        char* first = end;
        bool negative = false;
        const bool isSigned = c.conversion == 'd' || c.conversion == 'i';
        if ((isSigned || c.conversion == 'u') && IsInteger(*a) && precision.empty()) {
            const long long value = Narrowed(*a, c.length, isSigned);
            negative = isSigned && value < 0;
            first = PutDigits(end, isSigned ? Magnitude(value)
                                            : static_cast<unsigned long long>(value));
        } else if (c.conversion == 'f' && a->kind == FormatArgument::Kind::Double &&
                   precision.size() == 2 && IsDigit(precision[1]) && precision[1] <= '4' &&
                   std::fabs(a->real) < 1e14) {
            negative = std::signbit(a->real);
            const int length =
                PrintFixed(digits, sizeof digits, std::fabs(a->real), precision[1] - '0');
            if (length <= 0)
                return false;
            end = digits + length;
            first = digits;
        } else {
            return false;
        }
        const auto has = [&](char flag) { return c.flags.find(flag) != std::string::npos; };
        char sign = 0;
        if (negative)
            sign = '-';
        else if (isSigned || c.conversion == 'f')
            sign = has('+') ? '+' : has(' ') ? ' ' : 0;
        const size_t length = static_cast<size_t>(end - first) + (sign ? 1 : 0);
        const size_t wanted = width.empty() ? 0 : static_cast<size_t>(std::stoi(width));
        const size_t padding = wanted > length ? wanted - length : 0;
        UniChar units[64];
        if (padding + length > sizeof units / sizeof units[0])
            return false;
        size_t at = 0;
        const bool left = has('-'), zeros = has('0') && !left;
        if (!left && !zeros)
            for (size_t k = 0; k < padding; ++k)
                units[at++] = ' ';
        if (sign)
            units[at++] = static_cast<UniChar>(sign);
        if (zeros)
            for (size_t k = 0; k < padding; ++k)
                units[at++] = '0';
        for (const char* digit = first; digit != end; ++digit)
            units[at++] = static_cast<UniChar>(*digit);
        if (left)
            for (size_t k = 0; k < padding; ++k)
                units[at++] = ' ';
        CFStringAppendCharacters(m_out, units, static_cast<CFIndex>(at));
        return true;
    }

    void Convert(char conversion, const std::string& length, const std::string& directive,
                 const FormatArgument* a)
    {
        switch (conversion) {
        case 'd': case 'i':
            if (IsInteger(*a))
                return AppendASCII(m_out, Print(directive + "lld", Narrowed(*a, length, true)));
            break;
        case 'u': case 'x': case 'X': case 'o':
            if (IsInteger(*a))
                return AppendASCII(m_out, Print(directive + "ll" + conversion,
                                                static_cast<unsigned long long>(
                                                    Narrowed(*a, length, false))));
            break;
        case 'c':
            if (IsInteger(*a)) {
                UniChar character = static_cast<UniChar>(Narrowed(*a, length, false));
                return CFStringAppendCharacters(m_out, &character, 1);
            }
            break;
        case 'f': case 'F': case 'e': case 'E': case 'g': case 'G': case 'a': case 'A':
            if (a->kind == FormatArgument::Kind::Double)
                return AppendASCII(m_out, Print(directive + conversion, a->real));
            break;
        case 's':
            if (a->kind == FormatArgument::Kind::CString) {
                if (!a->text)
                    return AppendASCII(m_out, "(null)");
                if (directive.size() == 1)
                    return AppendCString(m_out, a->text);
                return AppendCString(m_out, Print(directive + "s", a->text).c_str());
            }
            break;
        case '@':
            break;  // any argument in its plain form
        default:
            return;  // %n, %p and unknown conversions print nothing
        }
        AppendPlain(m_out, *a);
    }

    CFMutableStringRef m_out;
    const FormatArgument* m_arguments;
    size_t m_count;
    UniChar m_separator;
    size_t m_next = 0;
};

}  // namespace

void AppendFormatted(CFMutableStringRef out, CFStringRef format,
                     const FormatArgument* arguments, size_t count, UniChar decimalSeparator)
{
    if (!out || !format)
        return;
    // The format's units, in a buffer each thread keeps for the next format.
    thread_local std::vector<UniChar> text;
    text.resize(static_cast<size_t>(CFStringGetLength(format)));
    if (!text.empty())
        CFStringGetCharacters(format, CFRangeMake(0, static_cast<CFIndex>(text.size())), text.data());
    Formatter(out, arguments, count, decimalSeparator).Run(text);
}

}  // namespace qel
