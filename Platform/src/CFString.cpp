// SPDX-License-Identifier: MIT
// CFString: creation, access, comparison, search and editing of UTF-16 text.
#include "CFStringEncodingInternal.h"
#include "CFStringInternal.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <deque>
#include <mutex>
#include <string_view>
#include <unordered_map>

using qelcf::CreateObject;
using qelcf::UnitsOf;

namespace {

__CFString* MutableOf(CFMutableStringRef string)
{
    return static_cast<__CFString*>(string);
}

__CFString* NewString(std::u16string units, bool isMutable)
{
    __CFString* string = CreateObject<__CFString>();
    string->units = std::move(units);
    string->isMutable = isMutable;
    return string;
}

// A range clipped to a text of `length` units, so a bad range never reads
// or writes outside the string.
CFRange ClipRange(CFRange range, size_t length)
{
    const CFIndex size = static_cast<CFIndex>(length);
    CFIndex location = std::clamp<CFIndex>(range.location, 0, size);
    CFIndex count = std::clamp<CFIndex>(range.length, 0, size - location);
    return CFRangeMake(location, count);
}

UniChar FoldCase(UniChar unit)
{
    if (unit < 0x80)
        return (unit >= 'A' && unit <= 'Z') ? static_cast<UniChar>(unit + ('a' - 'A')) : unit;
    if (unit >= 0xD800 && unit <= 0xDFFF)
        return unit;
    UChar32 folded = u_foldCase(unit, U_FOLD_CASE_DEFAULT);
    return folded <= 0xFFFF ? static_cast<UniChar>(folded) : unit;
}

bool UnitsEqual(UniChar a, UniChar b, bool caseInsensitive)
{
    return a == b || (caseInsensitive && FoldCase(a) == FoldCase(b));
}

}  // namespace

namespace qelcf {

const std::u16string& UnitsOf(CFStringRef string)
{
    static const std::u16string empty;
    return string ? string->units : empty;
}

CFStringRef CreateStringFromUnits(std::u16string units)
{
    return NewString(std::move(units), false);
}

}  // namespace qelcf

namespace {

// The interned constant of a text, made on its first request.
__CFString* InternConstant(const char* cStr, const char** internedText)
{
    // Constants are interned by their text and live for the whole process.
    // The table's keys view texts kept in a deque, whose elements never move,
    // so a repeated lookup allocates nothing.
    struct Constants {
        std::mutex lock;
        std::deque<std::string> texts;
        std::unordered_map<std::string_view, __CFString*> strings;
    };
    static qelcf::NoDestructor<Constants> constants;
    std::lock_guard<std::mutex> guard(constants->lock);
    auto found = constants->strings.find(std::string_view(cStr));
    if (found == constants->strings.end()) {
        const std::string& text = constants->texts.emplace_back(cStr);
        __CFString* string = NewString(qelcf::DecodeUTF8Lenient(text.data(), text.size()), false);
        string->immortal = true;
        found = constants->strings.emplace(text, string).first;
    }
    *internedText = found->first.data();
    return found->second;
}

}  // namespace

CFStringRef __CFStringMakeConstantString(const char* cStr)
{
    // Each thread remembers the constants it last asked for by the address
    // of the text it passed, so that the keys the library asks for again and
    // again cost neither a lock nor hashing. The text is compared as well: a
    // caller's buffer may hold another text the next time.
    struct Recent {
        const char* address;
        const char* text;  // the interned copy, NUL-terminated
        __CFString* string;
    };
    constexpr size_t kRecentSlots = 512;
    thread_local Recent recent[kRecentSlots];
    const auto address = reinterpret_cast<uintptr_t>(cStr);
    Recent& slot = recent[(address ^ (address >> 9)) % kRecentSlots];
    if (slot.address == cStr && std::strcmp(slot.text, cStr) == 0)
        return slot.string;
    const char* text = nullptr;
    __CFString* string = InternConstant(cStr, &text);
    slot = {cStr, text, string};
    return string;
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex numBytes,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation)
{
    if (numBytes < 0 || (bytes == nullptr && numBytes > 0))
        return nullptr;
    std::u16string units;
    if (!qelcf::DecodeBytes(bytes, static_cast<size_t>(numBytes), encoding,
                            isExternalRepresentation != 0, units))
        return nullptr;
    return qelcf::CreateStringFromUnits(std::move(units));
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr,
                                      CFStringEncoding encoding)
{
    if (cStr == nullptr)
        return nullptr;
    return CFStringCreateWithBytes(alloc, reinterpret_cast<const UInt8*>(cStr),
                                   static_cast<CFIndex>(std::strlen(cStr)), encoding, false);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* chars, CFIndex numChars)
{
    if (chars == nullptr || numChars <= 0)
        return qelcf::CreateStringFromUnits({});
    return qelcf::CreateStringFromUnits(
        std::u16string(reinterpret_cast<const char16_t*>(chars), static_cast<size_t>(numChars)));
}

CFStringRef CFStringCreateCopy(CFAllocatorRef, CFStringRef theString)
{
    if (theString == nullptr)
        return nullptr;
    // An immutable string never changes, so the copy may be the string itself.
    if (!theString->isMutable)
        return static_cast<CFStringRef>(CFRetain(theString));
    return qelcf::CreateStringFromUnits(theString->units);
}

CFMutableStringRef CFStringCreateMutable(CFAllocatorRef, CFIndex)
{
    return NewString({}, true);
}

CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex, CFStringRef theString)
{
    return NewString(UnitsOf(theString), true);
}

CFIndex CFStringGetLength(CFStringRef theString)
{
    return static_cast<CFIndex>(UnitsOf(theString).size());
}

UniChar CFStringGetCharacterAtIndex(CFStringRef theString, CFIndex idx)
{
    const std::u16string& units = UnitsOf(theString);
    if (idx < 0 || static_cast<size_t>(idx) >= units.size())
        return 0;
    return units[static_cast<size_t>(idx)];
}

void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer)
{
    const std::u16string& units = UnitsOf(theString);
    CFRange clipped = ClipRange(range, units.size());
    if (buffer != nullptr && clipped.length > 0)
        std::memcpy(buffer, units.data() + clipped.location,
                    static_cast<size_t>(clipped.length) * sizeof(UniChar));
}

Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding)
{
    if (theString == nullptr || buffer == nullptr || bufferSize <= 0)
        return false;
    // ASCII text, most of what is shown, is its own UTF-8: copied straight in.
    const std::u16string& units = theString->units;
    if (encoding == kCFStringEncodingUTF8 && units.size() < static_cast<size_t>(bufferSize) &&
        std::all_of(units.begin(), units.end(), [](char16_t unit) { return unit < 0x80; })) {
        std::copy(units.begin(), units.end(), buffer);
        buffer[units.size()] = '\0';
        return true;
    }
    // Encoded into a buffer each thread keeps, so that a conversion does not
    // allocate once the thread has converted a text as long.
    thread_local std::string bytes;
    if (!qelcf::EncodeUnits(theString->units, encoding, 0, false, bytes) ||
        bytes.size() + 1 > static_cast<size_t>(bufferSize))
        return false;
    std::memcpy(buffer, bytes.data(), bytes.size());
    buffer[bytes.size()] = '\0';
    return true;
}

CFComparisonResult CFStringCompare(CFStringRef theString1, CFStringRef theString2,
                                   CFStringCompareFlags compareOptions)
{
    const std::u16string& a = UnitsOf(theString1);
    const std::u16string& b = UnitsOf(theString2);
    const bool caseInsensitive = (compareOptions & kCFCompareCaseInsensitive) != 0;
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        UniChar x = caseInsensitive ? FoldCase(a[i]) : a[i];
        UniChar y = caseInsensitive ? FoldCase(b[i]) : b[i];
        if (x != y)
            return x < y ? kCFCompareLessThan : kCFCompareGreaterThan;
    }
    if (a.size() == b.size())
        return kCFCompareEqualTo;
    return a.size() < b.size() ? kCFCompareLessThan : kCFCompareGreaterThan;
}

Boolean CFStringFindWithOptions(CFStringRef theString, CFStringRef stringToFind,
                                CFRange rangeToSearch, CFStringCompareFlags searchOptions,
                                CFRange* result)
{
    const std::u16string& text = UnitsOf(theString);
    const std::u16string& needle = UnitsOf(stringToFind);
    const CFRange range = ClipRange(rangeToSearch, text.size());
    const CFIndex needleLength = static_cast<CFIndex>(needle.size());
    if (needleLength == 0 || needleLength > range.length)
        return false;

    const bool caseInsensitive = (searchOptions & kCFCompareCaseInsensitive) != 0;
    const bool backwards = (searchOptions & kCFCompareBackwards) != 0;
    const bool anchored = (searchOptions & kCFCompareAnchored) != 0;
    const CFIndex first = range.location;
    const CFIndex last = range.location + range.length - needleLength;

    auto matchesAt = [&](CFIndex at) {
        for (CFIndex i = 0; i < needleLength; ++i)
            if (!UnitsEqual(text[static_cast<size_t>(at + i)], needle[static_cast<size_t>(i)],
                            caseInsensitive))
                return false;
        return true;
    };
    // Anchored searches only try the end the search starts from.
    const CFIndex step = backwards ? -1 : 1;
    const CFIndex start = backwards ? last : first;
    const CFIndex stop = anchored ? start + step : (backwards ? first - 1 : last + 1);
    // A position is compared in full only where its first unit matches,
    // with the needle's first unit folded once rather than at every position.
    // Case folding maps nothing else onto an ASCII character that is not a
    // letter (the long s and the Kelvin sign, the only others that fold into
    // ASCII, become letters), so such a first unit matches only itself.
    const UniChar lead = needle[0];
    const UniChar foldedLead = caseInsensitive ? FoldCase(lead) : lead;
    const bool leadIsASCIILetter = (lead >= 'a' && lead <= 'z') || (lead >= 'A' && lead <= 'Z');
    const bool leadHasCase = caseInsensitive && (lead >= 0x80 || leadIsASCIILetter);
    auto leadMatchesAt = [&](CFIndex at) {
        const UniChar unit = text[static_cast<size_t>(at)];
        return unit == lead || (leadHasCase && FoldCase(unit) == foldedLead);
    };
    for (CFIndex at = start; at != stop; at += step) {
        if (leadMatchesAt(at) && matchesAt(at)) {
            if (result != nullptr)
                *result = CFRangeMake(at, needleLength);
            return true;
        }
    }
    return false;
}

CFRange CFStringFind(CFStringRef theString, CFStringRef stringToFind,
                     CFStringCompareFlags compareOptions)
{
    CFRange found = CFRangeMake(-1, 0);  // kCFNotFound
    CFStringFindWithOptions(theString, stringToFind, CFRangeMake(0, CFStringGetLength(theString)),
                            compareOptions, &found);
    return found;
}

Boolean CFStringHasPrefix(CFStringRef theString, CFStringRef prefix)
{
    const std::u16string& text = UnitsOf(theString);
    const std::u16string& start = UnitsOf(prefix);
    return text.compare(0, start.size(), start) == 0;
}

void CFStringAppend(CFMutableStringRef theString, CFStringRef appendedString)
{
    if (theString == nullptr || appendedString == nullptr)
        return;
    // Appending a string to itself is well defined for std::u16string too.
    MutableOf(theString)->units += appendedString->units;
}

void CFStringAppendCharacters(CFMutableStringRef theString, const UniChar* chars, CFIndex numChars)
{
    if (theString == nullptr || chars == nullptr || numChars <= 0)
        return;
    MutableOf(theString)->units.append(reinterpret_cast<const char16_t*>(chars),
                                       static_cast<size_t>(numChars));
}

void CFStringAppendCString(CFMutableStringRef theString, const char* cStr,
                           CFStringEncoding encoding)
{
    if (theString == nullptr || cStr == nullptr)
        return;
    const size_t length = std::strlen(cStr);
    std::u16string units;
    if (qelcf::DecodeBytes(reinterpret_cast<const UInt8*>(cStr), length, encoding, false, units)) {
        MutableOf(theString)->units += units;
    } else if (encoding == kCFStringEncodingASCII) {
        // Text printed by the library itself is appended as ASCII; a stray
        // 8-bit byte from a camera's text tag is kept as its Latin-1
        // character rather than dropping the whole text.
        for (size_t i = 0; i < length; ++i)
            MutableOf(theString)->units += static_cast<char16_t>(static_cast<unsigned char>(cStr[i]));
    }
}

void CFStringReplaceAll(CFMutableStringRef theString, CFStringRef replacement)
{
    if (theString == nullptr)
        return;
    // Into the string's own buffer, which usually has room already.
    MutableOf(theString)->units.assign(UnitsOf(replacement));
}

void CFStringReplace(CFMutableStringRef theString, CFRange range, CFStringRef replacement)
{
    if (theString == nullptr)
        return;
    std::u16string units = UnitsOf(replacement);
    std::u16string& text = MutableOf(theString)->units;
    CFRange clipped = ClipRange(range, text.size());
    text.replace(static_cast<size_t>(clipped.location), static_cast<size_t>(clipped.length), units);
}

void CFStringDelete(CFMutableStringRef theString, CFRange range)
{
    if (theString == nullptr)
        return;
    std::u16string& text = MutableOf(theString)->units;
    CFRange clipped = ClipRange(range, text.size());
    text.erase(static_cast<size_t>(clipped.location), static_cast<size_t>(clipped.length));
}
