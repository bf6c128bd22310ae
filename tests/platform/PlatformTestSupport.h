// Helpers shared by the portable CoreFoundation tests.
#ifndef QEL_TESTS_PLATFORM_SUPPORT_H
#define QEL_TESTS_PLATFORM_SUPPORT_H

#include <CoreFoundation/CoreFoundation.h>

#include <string>

// Owns one CF reference for the length of a test.
template <class Ref>
class Owned {
public:
    explicit Owned(Ref ref = nullptr) : ref_(ref) {}
    ~Owned()
    {
        if (ref_)
            CFRelease(ref_);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    Ref get() const { return ref_; }
    operator Ref() const { return ref_; }

private:
    Ref ref_;
};

// The string's text as UTF-8, or "<null>".
inline std::string Utf8(CFStringRef string)
{
    if (string == nullptr)
        return "<null>";
    std::string text(static_cast<size_t>(CFStringGetMaximumSizeForEncoding(
                         CFStringGetLength(string), kCFStringEncodingUTF8)) + 1,
                     '\0');
    if (!CFStringGetCString(string, &text[0], static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8))
        return "<unencodable>";
    text.resize(std::char_traits<char>::length(text.c_str()));
    return text;
}

inline CFStringRef MakeString(const char* utf8)
{
    return CFStringCreateWithCString(nullptr, utf8, kCFStringEncodingUTF8);
}

#endif
