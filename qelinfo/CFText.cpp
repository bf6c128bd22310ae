// SPDX-License-Identifier: MIT
#include "CFText.h"

#include <memory>
#include <string>
#include <type_traits>

namespace qelinfo {

namespace {

struct CFReleaser {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};
template <class Ref>
using CFHolder = std::unique_ptr<std::remove_pointer_t<Ref>, CFReleaser>;

// Characters UTF-8 cannot carry (a lone surrogate half) become '?'.
std::string LossyUTF8(CFStringRef string)
{
    constexpr UInt8 kLossByte = '?';
    CFHolder<CFDataRef> data(
        CFStringCreateExternalRepresentation(nullptr, string, kCFStringEncodingUTF8, kLossByte));
    if (!data)
        return std::string();
    const auto* bytes = reinterpret_cast<const char*>(CFDataGetBytePtr(data.get()));
    std::string text(bytes, bytes + CFDataGetLength(data.get()));
    static const std::string kByteOrderMark = "\xEF\xBB\xBF";
    if (text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0)
        text.erase(0, kByteOrderMark.size());
    return text;
}

}  // namespace

std::optional<std::string> AdoptCFString(CFStringRef string)
{
    if (!string)
        return std::nullopt;
    CFHolder<CFStringRef> owned(string);
    CFIndex maximum = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string),
                                                        kCFStringEncodingUTF8);
    if (maximum < 0)
        return LossyUTF8(string);
    // Converted straight into the string handed back, then cut at the end
    // of the text.
    std::string text(static_cast<size_t>(maximum), '\0');
    if (CFStringGetCString(string, &text[0], maximum + 1, kCFStringEncodingUTF8)) {
        text.resize(std::char_traits<char>::length(text.c_str()));
        return text;
    }
    return LossyUTF8(string);
}

}  // namespace qelinfo
