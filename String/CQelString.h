// SPDX-License-Identifier: MIT
// CQelString: the one text type of the library, an owning wrapper of one
// mutable CoreFoundation string. Titles and values are built in it by loading
// localized texts by key from the framework's bundle and by formatting
// numbers, then handed out as C strings in any encoding or as CFString copies.
#ifndef QEL_CQELSTRING_H
#define QEL_CQELSTRING_H

#include <CoreFoundation/CoreFoundation.h>

#include "FormatArguments.h"

#include <cstdarg>
#include <string>

class CQelString {
public:
    CQelString();
    CQelString(const CQelString& other);
    // Takes over the other's text without copying it; the other is left
    // without a string and may only be destroyed or assigned to.
    CQelString(CQelString&& other) noexcept;
    CQelString(const char* text, CFStringEncoding encoding);  // the pointer is not tested
    explicit CQelString(CFStringRef text);                    // null gives an empty string
    virtual ~CQelString();
    CQelString& operator=(const CQelString& other);

    // Length in UTF-16 units.
    CFIndex GetLength() const;
    // Bytes to reserve for the text in `encoding`: the encoding's maximum
    // size plus room for a two-byte terminator; GetCString demands exactly
    // this slack.
    UInt32 GetByteLength(CFStringEncoding encoding) const;
    UniChar GetCharacterAt(CFIndex index) const;
    // True when the two texts DIFFER (the raw CFStringCompare result taken
    // as a truth value), as hosts built against this class expect; the
    // library itself never calls it.
    bool operator==(const CQelString& other) const;

    // Whole text into `buffer` or nothing: the buffer is zeroed over `size`
    // bytes and filled only when size > encoded length + 2. Answers the
    // number of bytes placed.
    UInt32 GetCString(char* buffer, UInt32 size, CFStringEncoding encoding) const;
    // The encoded bytes, held by this string until it next changes; null when
    // the text cannot be encoded.
    const char* GetCStringPtr(CFStringEncoding encoding) const;

    // Replaces the text with the localized text of `key`; a key without a
    // translation yields the key itself. The first "&&" becomes "&".
    bool LoadString(CFStringRef key);
    bool LoadString(const char* key);
    bool AppendLoadString(CFStringRef key);
    bool AppendLoadString(const char* key);
    // Loads `key` and uses its text as a printf-style format for the
    // arguments. On a failed lookup the text stays unchanged.
    bool LoadStringWithFormat(CFStringRef key, ...);
    // The same for the library's own keys, with arguments of known types, so
    // a translation can pick any of them by position and never reads one
    // that was not passed (FormatArguments.h).
    template <class... Arguments>
    bool LoadStringWithFormat(const char* key, Arguments... arguments)
    {
        const qel::FormatArgument list[] = {arguments..., qel::FormatArgument(0)};
        return LoadStringWithArguments(key, list, sizeof...(Arguments));
    }
    bool LoadStringWithArguments(const char* key, const qel::FormatArgument* arguments,
                                 size_t count);

    // The library's own number formats: the numbers printed take the decimal
    // separator of the user's language.
    void Format(CFStringRef format, ...);
    void AppendFormat(CFStringRef format, ...);
    // A number the library printed (ASCII), in the style of the user's language.
    void AppendNumber(const char* printed);
    void Append(const CQelString& other);
    void Append(const char* text, CFStringEncoding encoding);
    void Append(CFStringRef text);
    CQelString& operator+=(const CQelString& other);
    // Replaces the text with that of `text` (not null), in this string's own buffer.
    void Assign(CFStringRef text);
    void Clear();

    // The text in UTF-8, for hosts' and tests' convenience.
    std::string ToUTF8() const;
    // The text of `key` kept for the text scope open on this thread (owned
    // by it, valid while it is open), or null outside one.
    static CFStringRef KeptText(const char* key);
    // The wrapped string, still owned by this object.
    CFStringRef GetCFString() const { return m_string; }

    // The bundle in which keys are looked up; null means the main bundle.
    // Set once at load time by MyFrameworkInit.
    static CFBundleRef m_bundle;

private:
    void Invalidate() const;
    // Replaces the text with `format` applied to the arguments.
    void AdoptFormatted(CFStringRef format, const qel::FormatArgument* arguments, size_t count);
    bool LoadStringWithFormatV(CFStringRef key, va_list arguments);
    // Takes ownership of `text` (may be null: an empty string) as m_string.
    void Adopt(CFMutableStringRef text);

    CFMutableStringRef m_string;
    // Bytes behind the last GetCStringPtr, released when the text changes.
    mutable CFDataRef m_cstringCache = nullptr;
    mutable CFStringEncoding m_cstringCacheEncoding = 0;
};

// The interned CFString of a localization key written as a C literal.
CFStringRef QelKey(const char* key);

namespace qel {

// While one lives on a thread, localized texts of C-string keys come from
// copies this thread keeps for the bundle's current language: the language
// is checked once, when the outermost scope opens, and a repeated key costs
// one lookup by its address. Open one around work that loads many texts.
class CTextScope {
public:
    CTextScope();
    ~CTextScope();
    CTextScope(const CTextScope&) = delete;
    CTextScope& operator=(const CTextScope&) = delete;
};

}  // namespace qel

#endif
