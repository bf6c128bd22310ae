// SPDX-License-Identifier: MIT
#include "CQelString.h"

#include "NumberStyle.h"

#include <QelPlatform/TextEncoding.h>

#include <cstring>
#include <unordered_map>
#include <vector>

namespace {

// The encodings of the system and of the application at load time, kept for
// hosts that want to choose one of them; the library itself does not read them.
[[maybe_unused]] const CFStringEncoding sysEncoding = CFStringGetSystemEncoding();
[[maybe_unused]] const TextEncoding appEncoding = GetApplicationTextEncoding();

// Characters an encoding cannot represent come out as '?'.
constexpr UInt8 kLossByte = '?';

// Room for a terminator of up to two bytes (8- and 16-bit encodings).
constexpr UInt32 kTerminatorSlack = 2;

// Zero bytes after the bytes handed out by GetCStringPtr, so that they read
// as a terminated string in every encoding up to 32-bit units.
constexpr size_t kPointerTerminator = 4;

// Strings of texts that ended on this thread, emptied but keeping their
// buffers, for the next texts: a read makes and drops dozens of texts.
struct SpareStrings {
    std::vector<CFMutableStringRef> strings;

    SpareStrings() = default;
    SpareStrings(const SpareStrings&) = delete;
    SpareStrings& operator=(const SpareStrings&) = delete;
    ~SpareStrings();
};

constexpr size_t kMaxSpareStrings = 64;
// False once the thread's spare strings are gone, as the thread ends.
thread_local bool t_spareStringsLive = true;
thread_local SpareStrings t_spareStrings;

SpareStrings::~SpareStrings()
{
    t_spareStringsLive = false;
    for (CFMutableStringRef text : strings)
        CFRelease(text);
}

CFMutableStringRef NewEmpty()
{
    if (t_spareStringsLive && !t_spareStrings.strings.empty()) {
        CFMutableStringRef text = t_spareStrings.strings.back();
        t_spareStrings.strings.pop_back();
        return text;
    }
    return CFStringCreateMutable(kCFAllocatorDefault, 0);
}

// Releases a text's string, keeping it for the next text when nobody else holds it.
void Recycle(CFMutableStringRef text)
{
    if (t_spareStringsLive && t_spareStrings.strings.size() < kMaxSpareStrings &&
        CFGetRetainCount(text) == 1) {
        CFStringDelete(text, CFRangeMake(0, CFStringGetLength(text)));
        t_spareStrings.strings.push_back(text);
        return;
    }
    CFRelease(text);
}

CFMutableStringRef MutableCopyOf(CFStringRef text)
{
    CFMutableStringRef copy = NewEmpty();
    if (text && copy)
        CFStringReplaceAll(copy, text);
    return copy;
}

// The bundle whose tables hold the texts.
CFBundleRef TextBundle()
{
    return CQelString::m_bundle ? CQelString::m_bundle : CFBundleGetMainBundle();
}

// The texts one thread loaded inside text scopes, for one bundle and the
// language it had when the outermost scope opened. The bundle's text of the
// decimal separator key names its table, hence the language: while this
// thread holds it, no other table's text can take its address.
struct ScopedTexts {
    struct Loaded {
        std::string key;  // the key's characters: an address can be reused for another key
        CFStringRef text;
    };

    int depth = 0;
    bool usable = false;
    CFBundleRef bundle = nullptr;
    CFStringRef marker = nullptr;
    UniChar separator = '.';
    std::unordered_map<const char*, Loaded> byKey;

    ScopedTexts() = default;
    ScopedTexts(const ScopedTexts&) = delete;
    ScopedTexts& operator=(const ScopedTexts&) = delete;
    ~ScopedTexts()
    {
        Forget();
        if (marker)
            CFRelease(marker);
    }

    void Forget()
    {
        for (auto& entry : byKey)
            CFRelease(entry.second.text);
        byKey.clear();
    }

    void Open()
    {
        usable = false;
        CFBundleRef current = TextBundle();
        CFStringRef text = qel::CopyDecimalSeparatorText(current);
        if (!text)
            return;
        // A table without the key answers a fresh copy each time: nothing
        // then tells its language, and texts are not kept.
        if (!qel::NamesSeparator(text)) {
            CFRelease(text);
            return;
        }
        if (current == bundle && text == marker) {
            CFRelease(text);
        } else {
            Forget();
            if (marker)
                CFRelease(marker);
            bundle = current;
            marker = text;
            separator = qel::SeparatorOf(text);
        }
        usable = true;
    }
};

thread_local ScopedTexts t_scopedTexts;

// The separator numbers take now.
UniChar CurrentSeparator()
{
    const ScopedTexts& scoped = t_scopedTexts;
    return scoped.depth > 0 && scoped.usable ? scoped.separator
                                             : qel::DecimalSeparator(TextBundle());
}

// UTF-16 units that valid UTF-8 bytes stand for: one per byte that starts a
// character, two for a character beyond the basic plane.
CFIndex UTF16Length(const char* bytes, size_t length)
{
    CFIndex units = 0;
    for (size_t i = 0; i < length; ++i) {
        const unsigned char byte = static_cast<unsigned char>(bytes[i]);
        units += (byte & 0xC0) != 0x80;
        units += byte >= 0xF0;
    }
    return units;
}

// The text to compare with when a string has none.
CFStringRef TextOrEmpty(CFStringRef text)
{
    return text ? text : CFSTR("");
}

}  // namespace

CFStringRef QelKey(const char* key)
{
    return key ? __CFStringMakeConstantString(key) : nullptr;
}

namespace qel {

CTextScope::CTextScope()
{
    if (t_scopedTexts.depth++ == 0)
        t_scopedTexts.Open();
}

CTextScope::~CTextScope()
{
    --t_scopedTexts.depth;
}

}  // namespace qel

namespace {

// The text of `key` kept for the open scope, loaded on its first use; null
// outside a scope or when texts are not kept.
CFStringRef ScopedText(const char* key)
{
    ScopedTexts& scoped = t_scopedTexts;
    if (scoped.depth == 0 || !scoped.usable || !key)
        return nullptr;
    auto [found, added] = scoped.byKey.try_emplace(key);
    ScopedTexts::Loaded& loaded = found->second;
    if (!added && std::strcmp(loaded.key.c_str(), key) == 0)
        return loaded.text;
    CQelString text;
    if (!text.LoadString(QelKey(key))) {
        if (added)
            scoped.byKey.erase(found);
        return nullptr;
    }
    CFStringRef copy = CFStringCreateCopy(kCFAllocatorDefault, text.GetCFString());
    if (!added)
        CFRelease(loaded.text);
    loaded.key = key;
    loaded.text = copy;
    return copy;
}

}  // namespace

CQelString::CQelString() : m_string(NewEmpty()) {}

CQelString::CQelString(const CQelString& other) : m_string(MutableCopyOf(other.m_string)) {}

CQelString::CQelString(CQelString&& other) noexcept
    : m_string(other.m_string),
      m_cstringCache(other.m_cstringCache),
      m_cstringCacheEncoding(other.m_cstringCacheEncoding)
{
    other.m_string = nullptr;
    other.m_cstringCache = nullptr;
}

CQelString::CQelString(const char* text, CFStringEncoding encoding) : m_string(NewEmpty())
{
    // Hosts never pass null here, but a null text is simply no text.
    if (text && m_string)
        CFStringAppendCString(m_string, text, encoding);
}

CQelString::CQelString(CFStringRef text) : m_string(MutableCopyOf(text)) {}

CQelString::~CQelString()
{
    Invalidate();
    if (m_string)
        Recycle(m_string);
}

CQelString& CQelString::operator=(const CQelString& other)
{
    if (this != &other)
        Adopt(MutableCopyOf(other.m_string));
    return *this;
}

void CQelString::Adopt(CFMutableStringRef text)
{
    Invalidate();
    if (m_string)
        Recycle(m_string);
    m_string = text ? text : NewEmpty();
}

void CQelString::Invalidate() const
{
    if (m_cstringCache) {
        CFRelease(m_cstringCache);
        m_cstringCache = nullptr;
    }
}

CFIndex CQelString::GetLength() const
{
    return m_string ? CFStringGetLength(m_string) : 0;
}

UInt32 CQelString::GetByteLength(CFStringEncoding encoding) const
{
    if (!m_string)
        return 0;
    return static_cast<UInt32>(CFStringGetMaximumSizeForEncoding(GetLength(), encoding) +
                               kTerminatorSlack);
}

UniChar CQelString::GetCharacterAt(CFIndex index) const
{
    // A position outside the text answers 0 rather than reading past it.
    if (index < 0 || index >= GetLength())
        return 0;
    return CFStringGetCharacterAtIndex(m_string, index);
}

bool CQelString::operator==(const CQelString& other) const
{
    // The comparison result as a truth value, so equal texts answer false:
    // the sense hosts built against this class rely on.
    return CFStringCompare(TextOrEmpty(m_string), TextOrEmpty(other.m_string), 0) !=
           kCFCompareEqualTo;
}

UInt32 CQelString::GetCString(char* buffer, UInt32 size, CFStringEncoding encoding) const
{
    // A null buffer has nowhere to receive the text: nothing is placed.
    if (!buffer)
        return 0;
    std::memset(buffer, 0, size);
    if (!m_string)
        return 0;
    // UTF-8 has no loss to report, so the text is written straight in, with
    // room left for the terminator slack, unless it holds a NUL character.
    if (encoding == kCFStringEncodingUTF8 && size > kTerminatorSlack &&
        CFStringGetCString(m_string, buffer, static_cast<CFIndex>(size - kTerminatorSlack),
                           encoding)) {
        const size_t length = std::strlen(buffer);
        if (UTF16Length(buffer, length) == GetLength())
            return static_cast<UInt32>(length);
        std::memset(buffer, 0, size);
    }
    CFDataRef data = CFStringCreateExternalRepresentation(kCFAllocatorDefault, m_string,
                                                          encoding, kLossByte);
    if (!data)
        return 0;
    UInt32 placed = 0;
    const UInt8* bytes = CFDataGetBytePtr(data);
    const CFIndex length = CFDataGetLength(data);
    // Whole or nothing: the buffer must exceed the text by the terminator
    // slack; a text that would only just fit is not delivered.
    if (bytes && static_cast<UInt64>(size) > static_cast<UInt64>(length) + kTerminatorSlack) {
        std::memcpy(buffer, bytes, static_cast<size_t>(length));
        placed = static_cast<UInt32>(length);
    }
    CFRelease(data);
    return placed;
}

const char* CQelString::GetCStringPtr(CFStringEncoding encoding) const
{
    if (m_cstringCache && m_cstringCacheEncoding == encoding)
        return reinterpret_cast<const char*>(CFDataGetBytePtr(m_cstringCache));
    Invalidate();
    if (!m_string)
        return nullptr;
    CFDataRef data = CFStringCreateExternalRepresentation(kCFAllocatorDefault, m_string,
                                                          encoding, kLossByte);
    if (!data)
        return nullptr;
    const UInt8* bytes = CFDataGetBytePtr(data);
    const CFIndex length = CFDataGetLength(data);
    if (!bytes && length > 0) {
        CFRelease(data);
        return nullptr;
    }
    std::vector<UInt8> terminated(static_cast<size_t>(length) + kPointerTerminator, 0);
    if (length > 0)
        std::memcpy(terminated.data(), bytes, static_cast<size_t>(length));
    CFRelease(data);
    m_cstringCache = CFDataCreate(kCFAllocatorDefault, terminated.data(),
                                  static_cast<CFIndex>(terminated.size()));
    m_cstringCacheEncoding = encoding;
    return m_cstringCache ? reinterpret_cast<const char*>(CFDataGetBytePtr(m_cstringCache))
                          : nullptr;
}

bool CQelString::LoadString(CFStringRef key)
{
    if (!key)
        return false;
    CFBundleRef bundle = TextBundle();
    // Without any bundle the key stands for itself, as it does for a key
    // that has no translation.
    CFStringRef text = bundle ? CFBundleCopyLocalizedString(bundle, key, key, nullptr)
                              : CFStringCreateCopy(kCFAllocatorDefault, key);
    if (!text)
        return false;
    Invalidate();
    CFStringReplaceAll(m_string, text);
    CFRelease(text);

    // Texts write a literal ampersand as "&&". Only the first pair is
    // unescaped; a second pair in the same text stays doubled.
    CFRange found;
    if (CFStringFindWithOptions(m_string, CFSTR("&&"), CFRangeMake(0, GetLength()),
                                kCFCompareCaseInsensitive, &found))
        CFStringReplace(m_string, found, CFSTR("&"));
    return true;
}

CFStringRef CQelString::KeptText(const char* key)
{
    return ScopedText(key);
}

bool CQelString::LoadString(const char* key)
{
    if (CFStringRef text = ScopedText(key)) {
        Assign(text);
        return true;
    }
    return LoadString(QelKey(key));
}

void CQelString::Assign(CFStringRef text)
{
    if (!text || !m_string || text == m_string)
        return;
    Invalidate();
    CFStringReplaceAll(m_string, text);
}

bool CQelString::AppendLoadString(CFStringRef key)
{
    CQelString loaded;
    if (!loaded.LoadString(key))
        return false;
    Append(loaded);
    return true;
}

bool CQelString::AppendLoadString(const char* key)
{
    if (CFStringRef text = ScopedText(key)) {
        Append(text);
        return true;
    }
    return AppendLoadString(QelKey(key));
}

bool CQelString::LoadStringWithFormatV(CFStringRef key, va_list arguments)
{
    CQelString format;
    if (!format.LoadString(key))
        return false;
    CFStringRef result = CFStringCreateWithFormatAndArguments(kCFAllocatorDefault, nullptr,
                                                              format.m_string, arguments);
    Adopt(MutableCopyOf(result));
    if (result)
        CFRelease(result);
    return true;
}

bool CQelString::LoadStringWithFormat(CFStringRef key, ...)
{
    va_list arguments;
    va_start(arguments, key);
    const bool loaded = LoadStringWithFormatV(key, arguments);
    va_end(arguments);
    return loaded;
}

bool CQelString::LoadStringWithArguments(const char* key, const qel::FormatArgument* arguments,
                                         size_t count)
{
    if (CFStringRef format = ScopedText(key)) {
        AdoptFormatted(format, arguments, count);
        return true;
    }
    CQelString format;
    if (!format.LoadString(QelKey(key)))
        return false;
    AdoptFormatted(format.m_string, arguments, count);
    return true;
}

void CQelString::AdoptFormatted(CFStringRef format, const qel::FormatArgument* arguments,
                                size_t count)
{
    CFMutableStringRef result = NewEmpty();
    qel::AppendFormatted(result, format, arguments, count, CurrentSeparator());
    Adopt(result);
}

void CQelString::Format(CFStringRef format, ...)
{
    CFStringRef result = nullptr;
    if (format) {
        va_list arguments;
        va_start(arguments, format);
        result = CFStringCreateWithFormatAndArguments(kCFAllocatorDefault, nullptr, format,
                                                      arguments);
        va_end(arguments);
    }
    Adopt(MutableCopyOf(result));
    if (result)
        CFRelease(result);
    qel::StyleDecimalPoints(m_string, 0, CurrentSeparator());
}

void CQelString::AppendFormat(CFStringRef format, ...)
{
    if (!format || !m_string)
        return;
    Invalidate();
    const CFIndex start = GetLength();
    va_list arguments;
    va_start(arguments, format);
    CFStringAppendFormatAndArguments(m_string, nullptr, format, arguments);
    va_end(arguments);
    qel::StyleDecimalPoints(m_string, start, CurrentSeparator());
}

void CQelString::AppendNumber(const char* printed)
{
    const CFIndex start = GetLength();
    Append(printed, kCFStringEncodingASCII);
    qel::StyleDecimalPoints(m_string, start, CurrentSeparator());
}

void CQelString::Append(const CQelString& other)
{
    Append(static_cast<CFStringRef>(other.m_string));
}

void CQelString::Append(const char* text, CFStringEncoding encoding)
{
    if (!text || !m_string)
        return;
    Invalidate();
    CFStringAppendCString(m_string, text, encoding);
}

void CQelString::Append(CFStringRef text)
{
    if (!text || !m_string)
        return;
    Invalidate();
    if (text == m_string) {  // appending a string to itself: append a snapshot
        CFStringRef snapshot = CFStringCreateCopy(kCFAllocatorDefault, text);
        CFStringAppend(m_string, snapshot);
        CFRelease(snapshot);
        return;
    }
    CFStringAppend(m_string, text);
}

CQelString& CQelString::operator+=(const CQelString& other)
{
    Append(other);
    return *this;
}

void CQelString::Clear()
{
    if (!m_string)
        return;
    Invalidate();
    CFStringDelete(m_string, CFRangeMake(0, GetLength()));
}

std::string CQelString::ToUTF8() const
{
    if (!m_string)
        return std::string();
    const CFIndex capacity = CFStringGetMaximumSizeForEncoding(GetLength(), kCFStringEncodingUTF8) + 1;
    std::vector<char> bytes(static_cast<size_t>(capacity > 0 ? capacity : 1), '\0');
    if (!CFStringGetCString(m_string, bytes.data(), static_cast<CFIndex>(bytes.size()),
                            kCFStringEncodingUTF8))
        return std::string();
    return std::string(bytes.data());
}
