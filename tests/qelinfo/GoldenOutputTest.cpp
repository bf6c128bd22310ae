// SPDX-License-Identifier: MIT
// qelinfo's whole output, byte for byte, over the samples and a few hundred
// tag files derived from them with varied values, in three languages and both
// formats. The digests were taken from a known-good build: a change that is
// meant to alter the output must say so by updating them.
#include "QelinfoTestSupport.h"

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdint>
#include <cstdio>

namespace {

using nlohmann::json;
using qelinfo_test::ReadAll;
using qelinfo_test::RunQelinfo;
using qelinfo_test::ScratchFolder;

const std::string kSamples = QELINFO_SAMPLES_DIR;
const char* const kTagFiles[] = {"talvo-q77", "merivax-e7310", "talvo-filmscan-f40",
                                 "merivax-3710-movie"};
constexpr int kVariants = 75;

// A variant of a sample: most numbers replaced by small ones (so that mapped
// values run through their known and unknown codes), some scaled, some kept.
json Variant(json sample, int variant)
{
    int position = 0;
    for (json& tag : sample["tags"]) {
        ++position;
        if ((variant + position) % 4 == 0)
            continue;
        if (tag.contains("ints"))
            for (size_t k = 0; k < tag["ints"].size(); ++k) {
                const int64_t original = tag["ints"][k];
                tag["ints"][k] = variant % 5 == 0 ? original * (variant % 3 + 1) + variant
                                                  : (variant * 7 + position * 3 + int64_t(k)) % 20;
            }
        if (tag.contains("doubles"))
            for (json& number : tag["doubles"])
                number = number.get<double>() * 0.25 * ((variant + position) % 9) -
                         (variant % 4 == 1 ? 1.5 : 0.0);
    }
    return sample;
}

uint64_t Digest(const std::string& text)
{
    uint64_t hash = 14695981039346656037ull;  // FNV-1a
    for (unsigned char byte : text)
        hash = (hash ^ byte) * 1099511628211ull;
    return hash;
}

// Drops the scratch folder from file names so that the output is the same in every run.
std::string WithoutFolder(std::string text, const std::string& folder)
{
    for (size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at))
        text.erase(at, folder.size());
    return text;
}

struct Golden {
    const char* language;
    const char* format;
    uint64_t digest;
};

const Golden kGolden[] = {
    {"en", "json", 0x593670faa9df8c51ull}, {"en", "text", 0xbb41c4a247b7b08aull},
    {"de", "json", 0x56fd6a756adcf5dfull}, {"de", "text", 0x8431176b434a4bd8ull},
    {"ja", "json", 0xf65fa85967e11f01ull}, {"ja", "text", 0x2010ef3fb1cc1e3full},
};

TEST(GoldenOutput, IsUnchangedInEveryLanguageAndFormat)
{
    ScratchFolder folder;
    std::vector<std::string> files = {
        folder.Write("harbour.jpg", ReadAll(kSamples + "/talvo-q77-harbour.jpg"))};
    for (const char* name : kTagFiles) {
        const json sample = json::parse(ReadAll(kSamples + "/" + name + ".json"));
        files.push_back(folder.Write(std::string(name) + ".json", sample.dump()));
        for (int variant = 1; variant <= kVariants; ++variant)
            files.push_back(
                folder.Write(std::string(name) + "-" + std::to_string(variant) + ".json",
                             Variant(sample, variant).dump()));
    }
    for (const Golden& golden : kGolden) {
        std::vector<std::string> arguments = {"--all", "--format", golden.format, "--lang",
                                              golden.language};
        arguments.insert(arguments.end(), files.begin(), files.end());
        const auto run = RunQelinfo(arguments);
        EXPECT_EQ(run.status, 0) << run.err;
        const uint64_t digest =
            Digest(WithoutFolder(run.out, folder.Path()) + WithoutFolder(run.err, folder.Path()));
        char shown[32];
        std::snprintf(shown, sizeof shown, "0x%016" PRIx64 "ull", digest);
        EXPECT_EQ(digest, golden.digest)
            << golden.language << " " << golden.format << ": " << shown;
    }
}

}  // namespace
