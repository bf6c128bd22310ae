// Every JSON line qelinfo prints is exactly what the JSON library itself
// would print for that object: no blanks, keys in the reader's order, texts
// escaped and bytes that are not UTF-8 replaced as the library does, in
// every language and for file names with quotes, controls and foreign bytes.
#include "QelinfoTestSupport.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

using qelinfo_test::RunQelinfo;
using qelinfo_test::ScratchFolder;

std::string Sample(const char* name)
{
    return std::string(QELINFO_SAMPLES_DIR) + "/" + name;
}

std::string ReadAll(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST(JsonLineForm, IsTheLibrarysOwnRendering)
{
    ScratchFolder folder;
    const std::string slr = ReadAll(Sample("talvo-q77.json"));
    const std::vector<std::string> files = {
        Sample("talvo-q77.json"), Sample("merivax-e5400.json"), Sample("talvo-filmscan-f40.json"),
        Sample("talvo-q77-harbour.jpg"),
        folder.Write("quote\"back\\slash.json", slr),
        folder.Write("control\x01\x1f tab\tname.json", slr),
        folder.Write("bytes \xff\xfe and \xc3(.json", slr),
        folder.Write("\xc3\x9cnic\xc3\xb8" "de \xc3\x97.json", slr),
        folder.Path() + "/missing \"file\".jpg",
    };
    std::vector<std::string> arguments = {"--format", "json"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    for (const char* language : {"en", "de", "ja"}) {
        const auto run = RunQelinfo(arguments, {std::string("LANGUAGE=") + language});
        const auto lines = run.OutLines();
        ASSERT_EQ(lines.size(), files.size()) << language;
        for (const std::string& line : lines) {
            const auto object = nlohmann::ordered_json::parse(line, nullptr, false);
            ASSERT_FALSE(object.is_discarded()) << line;
            EXPECT_EQ(object.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace), line)
                << language;
        }
    }
}

}  // namespace
