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
    std::optional<std::string> text;
    AdoptCFString(string, text);
    return text;
}

void AdoptCFString(CFStringRef string, std::optional<std::string>& text)
{
    if (!string) {
        text.reset();
        return;
    }
    CFHolder<CFStringRef> owned(string);
    CFIndex maximum = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string),
                                                        kCFStringEncodingUTF8);
    if (maximum < 0) {
        text = LossyUTF8(string);
        return;
    }
    // Converted straight into the kept buffer, then cut at the end of the text.
    std::string& bytes = text ? *text : text.emplace();
    bytes.resize(static_cast<size_t>(maximum));
    if (CFStringGetCString(string, &bytes[0], maximum + 1, kCFStringEncodingUTF8))
        bytes.resize(std::char_traits<char>::length(bytes.c_str()));
    else
        bytes = LossyUTF8(string);
}

}  // namespace qelinfo
