// SPDX-License-Identifier: MIT
// Helpers shared by the portable CoreFoundation tests: owned references,
// UTF-8 views and a temporary directory tree removed at the end of a test.
#ifndef QEL_TESTS_PLATFORM_SUPPORT_H
#define QEL_TESTS_PLATFORM_SUPPORT_H

#include "Utf8.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <memory>
#include <type_traits>

// Owns one CF reference for the length of a test.
template <class Ref>
struct Owned : std::unique_ptr<std::remove_pointer_t<Ref>, void (*)(CFTypeRef)> {
    explicit Owned(Ref ref = nullptr)
        : std::unique_ptr<std::remove_pointer_t<Ref>, void (*)(CFTypeRef)>(
              ref, [](CFTypeRef r) { CFRelease(r); })
    {
    }
    operator Ref() const { return this->get(); }
};

inline CFStringRef MakeString(const char* utf8)
{
    return CFStringCreateWithCString(nullptr, utf8, kCFStringEncodingUTF8);
}

// Writes files below a fresh temporary directory.
class TempTree {
public:
    TempTree()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "qelcf-XXXXXX").string();
        root_ = mkdtemp(&pattern[0]) ? pattern : std::string();
    }
    ~TempTree() { std::filesystem::remove_all(root_); }
    const std::string& Root() const { return root_; }

    // Writes `bytes` to root/relative, creating the folders on the way.
    std::string Write(const std::string& relative, const std::string& bytes) const
    {
        const std::filesystem::path path = std::filesystem::path(root_) / relative;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }

private:
    std::string root_;
};

// An Info.plist naming the bundle and its development region.
inline std::string InfoPlist(const std::string& identifier, const std::string& region)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n"
           "\t<key>CFBundleDevelopmentRegion</key>\n\t<string>" + region + "</string>\n"
           "\t<key>CFBundleIdentifier</key>\n\t<string>" + identifier + "</string>\n"
           "\t<key>CFBundleVersion</key>\n\t<integer>1</integer>\n</dict>\n</plist>\n";
}

// UTF-16LE bytes with a BOM (BMP characters only).
inline std::string Utf16LEWithBOM(const std::u16string& text)
{
    std::string bytes = "\xFF\xFE";
    for (char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

#endif
