// SPDX-License-Identifier: MIT
// Localized lookups and C-string conversion, the two things every title and
// value costs; and the proof that a lookup does not grow with the number of
// languages a bundle carries.
#include "CQelString.h"

#include <benchmark/benchmark.h>

#if !defined(__APPLE__)
#include "CFBundleInternal.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#endif

namespace {

// A title every file has, and a key no table holds (it shows as itself).
constexpr const char* kTitleKey = "IDS_QEL_WB";
constexpr const char* kMissingKey = "QEL_KEY_IN_NO_TABLE";

// Lookups after the first: the table is read and the language resolved.
void BM_LoadString(benchmark::State& state, const char* key)
{
    CFStringRef interned = QelKey(key);
    CQelString text;
    text.LoadString(interned);
    for (auto _ : state)
        benchmark::DoNotOptimize(text.LoadString(interned));
}
BENCHMARK_CAPTURE(BM_LoadString, Title, kTitleKey);
BENCHMARK_CAPTURE(BM_LoadString, MissingKey, kMissingKey);

// As the formatters call it: the key as a C literal, interned on each call.
void BM_LoadStringFromLiteral(benchmark::State& state)
{
    CQelString text;
    text.LoadString(kTitleKey);
    for (auto _ : state)
        benchmark::DoNotOptimize(text.LoadString(kTitleKey));
}
BENCHMARK(BM_LoadStringFromLiteral);

// A localized unit format applied to a number, as the altitude item does.
void BM_LoadStringWithFormat(benchmark::State& state)
{
    CQelString text;
    for (auto _ : state)
        benchmark::DoNotOptimize(text.LoadStringWithFormat("IDS_QEL_GPS_METRIC", 4.5));
}
BENCHMARK(BM_LoadStringWithFormat);

// A grid line in ASCII, and one that needs more than one byte per letter.
constexpr const char* kAsciiLine = "White Balance Cloudy -1";
constexpr const char* kAccentedLine = "Weißabgleich Bewölkt −1";

void BM_GetCString(benchmark::State& state, const char* line, CFStringEncoding encoding)
{
    const CQelString text(line, kCFStringEncodingUTF8);
    char buffer[256];
    for (auto _ : state)
        benchmark::DoNotOptimize(text.GetCString(buffer, sizeof buffer, encoding));
}
BENCHMARK_CAPTURE(BM_GetCString, ASCII, kAsciiLine, kCFStringEncodingASCII);
BENCHMARK_CAPTURE(BM_GetCString, UTF8, kAsciiLine, kCFStringEncodingUTF8);
BENCHMARK_CAPTURE(BM_GetCString, UTF16, kAsciiLine, kCFStringEncodingUTF16);
BENCHMARK_CAPTURE(BM_GetCString, AccentedASCII, kAccentedLine, kCFStringEncodingASCII);
BENCHMARK_CAPTURE(BM_GetCString, AccentedUTF8, kAccentedLine, kCFStringEncodingUTF8);
BENCHMARK_CAPTURE(BM_GetCString, AccentedUTF16, kAccentedLine, kCFStringEncodingUTF16);

#if !defined(__APPLE__)

namespace fs = std::filesystem;

// Bundles carrying `count` languages: the framework's English table under
// en.lproj and as many more copies as it takes. Made once per count and
// removed when the program ends.
class LanguageBundles {
public:
    ~LanguageBundles()
    {
        std::error_code ignored;
        if (!m_root.empty())
            fs::remove_all(m_root, ignored);
    }

    std::string DirectoryWith(int count)
    {
        auto found = m_made.find(count);
        if (found != m_made.end())
            return found->second;
        if (m_root.empty()) {
            char pattern[] = "/tmp/qel-bench-XXXXXX";
            m_root = mkdtemp(pattern);
        }
        const fs::path source = fs::path(QEL_FRAMEWORK_DIR) / "Resources";
        const fs::path bundle = m_root / ("Languages" + std::to_string(count) + ".framework");
        const fs::path resources = bundle / "Resources";
        fs::create_directories(resources);
        fs::copy_file(source / "Info.plist", resources / "Info.plist");
        for (int i = 0; i < count; ++i) {
            const fs::path lproj = resources / (i == 0 ? "en.lproj" : "x" + std::to_string(i) + ".lproj");
            fs::create_directories(lproj);
            fs::copy_file(source / "en.lproj" / "Localizable.strings", lproj / "Localizable.strings");
        }
        return m_made[count] = bundle.string();
    }

private:
    fs::path m_root;
    std::map<int, std::string> m_made;
};

LanguageBundles& Bundles()
{
    static LanguageBundles bundles;
    return bundles;
}

// A lookup in a bundle with this many languages, after the first.
void BM_LookupByLanguageCount(benchmark::State& state)
{
    CFBundleRef bundle = qelcf::CreateBundleAtPath(Bundles().DirectoryWith(static_cast<int>(state.range(0))));
    CFStringRef key = QelKey(kTitleKey);
    CFRelease(CFBundleCopyLocalizedString(bundle, key, key, nullptr));
    for (auto _ : state)
        CFRelease(CFBundleCopyLocalizedString(bundle, key, key, nullptr));
    CFRelease(bundle);
}
BENCHMARK(BM_LookupByLanguageCount)->Arg(1)->Arg(16)->Arg(128);

// Opening the bundle and its first lookup, which reads the chosen table.
void BM_FirstLookupByLanguageCount(benchmark::State& state)
{
    const std::string directory = Bundles().DirectoryWith(static_cast<int>(state.range(0)));
    CFStringRef key = QelKey(kTitleKey);
    for (auto _ : state) {
        CFBundleRef bundle = qelcf::CreateBundleAtPath(directory);
        CFRelease(CFBundleCopyLocalizedString(bundle, key, key, nullptr));
        CFRelease(bundle);
    }
}
BENCHMARK(BM_FirstLookupByLanguageCount)->Arg(1)->Arg(16)->Arg(128)->Unit(benchmark::kMicrosecond);

#endif

}  // namespace
