// SPDX-License-Identifier: MIT
// qelinfo on files nobody should hand it, all made here: missing, empty,
// truncated and corrupt images, files that are no image at all, special
// files, malformed tag files, names that are hard to print. A bad file gets
// exactly one line on stderr that names it and says why, an error object in
// JSON mode, and the files around it are still shown; the run then ends with
// status 1. Images without Exif, or with their picture data cut off, are not
// bad: they are shown with whatever they carry.
#include "QelinfoTestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using qelinfo_test::ReadAll;
using qelinfo_test::RunQelinfo;
using qelinfo_test::ScratchFolder;
using qelinfo_test::TalvoTagFile;

const std::string kSamples = QELINFO_SAMPLES_DIR;
const std::string kGoodTagFile = kSamples + "/merivax-e7310.json";
const std::string kGoodImage = kSamples + "/talvo-q77-harbour.jpg";

std::string Bytes(std::initializer_list<unsigned char> bytes)
{
    return std::string(reinterpret_cast<const char*>(bytes.begin()), bytes.size());
}

// Pseudo-random but the same on every run.
std::string Noise(size_t size)
{
    std::string noise(size, '\0');
    uint32_t state = 2463534242u;
    for (char& c : noise) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        c = static_cast<char>(state & 0xFF);
    }
    return noise;
}

std::string JpegWithExif(const ScratchFolder& folder)
{
    return ReadAll(folder.WriteJpeg("source.jpg", {{"Exif.Image.Make", "Ascii", "TALVO CORPORATION"},
                                                   {"Exif.Image.Model", "Ascii", "TALVO Q77"},
                                                   {"Exif.Photo.FNumber", "Rational", "8/1"},
                                                   {"Exif.Photo.ExposureTime", "Rational", "1/250"}}));
}

// A file that cannot be shown, and what its reason must mention. `make`
// answers its path, or "" when the case cannot be set up here (a file the
// superuser can still read).
struct BadCase {
    const char* name;
    std::string (*make)(const ScratchFolder&);
    const char* mention = "";
};

void PrintTo(const BadCase& item, std::ostream* out) { *out << item.name; }

std::string Folder(const ScratchFolder& f, const std::string& name)
{
    std::filesystem::create_directory(f.Path() + "/" + name);
    return f.Path() + "/" + name;
}

const BadCase kBadFiles[] = {
    {"Missing", [](const ScratchFolder& f) { return f.Path() + "/gone.jpg"; }, "No such file"},
    {"MissingTagFile", [](const ScratchFolder& f) { return f.Path() + "/gone.json"; }, "No such file"},
    {"EmptyImage", [](const ScratchFolder& f) { return f.Write("empty.jpg", ""); }, "empty"},
    {"EmptyTagFile", [](const ScratchFolder& f) { return f.Write("empty.json", ""); }, "empty"},
    // Truncated and corrupt images
    {"ExifCutShort", [](const ScratchFolder& f) { return f.Write("cut.jpg", JpegWithExif(f).substr(0, 40)); }},
    {"MarkerWithoutLength", [](const ScratchFolder& f) { return f.Write("marker.jpg", Bytes({0xFF, 0xD8, 0xFF, 0xE1})); }},
    {"TiffDirectoryCutShort",
     [](const ScratchFolder& f) { return f.Write("cut.tif", Bytes({'I', 'I', 42, 0, 8, 0, 0, 0, 0xFF, 0xFF})); }},
    {"PngSignatureOnly",
     [](const ScratchFolder& f) { return f.Write("cut.png", Bytes({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A})); }},
    {"SegmentLongerThanFile",
     [](const ScratchFolder& f) {
         return f.Write("long.jpg", Bytes({0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xF0}) + std::string("Exif\0\0II*\0", 10));
     }},
    {"PngChunkOfTwoGigabytes",
     [](const ScratchFolder& f) {
         return f.Write("huge.png", Bytes({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A, 0x7F, 0xFF, 0xFF, 0xFF,
                                           'I', 'H', 'D', 'R', 0, 0, 0, 1}));
     }},
    {"ZeroFilled", [](const ScratchFolder& f) { return f.Write("zeros.jpg", std::string(1000, '\0')); }},
    // No image at all
    {"Noise", [](const ScratchFolder& f) { return f.Write("noise.jpg", Noise(4096)); }},
    {"Program", [](const ScratchFolder& f) { return f.Write("program", Bytes({0x7F, 'E', 'L', 'F', 2, 1, 1, 0})); }},
    {"Text", [](const ScratchFolder& f) { return f.Write("notes.png", "shopping list\n"); }, "not a readable image"},
    // Special files
    {"Fifo",
     [](const ScratchFolder& f) {
         std::string path = f.Path() + "/pipe.jpg";
         return mkfifo(path.c_str(), 0600) == 0 ? path : std::string();
     }},
    {"Device", [](const ScratchFolder&) { return std::string("/dev/null"); }},
    {"FolderNamedLikeAnImage", [](const ScratchFolder& f) { return Folder(f, "holiday.jpg"); }, "directory"},
    {"FolderNamedLikeATagFile", [](const ScratchFolder& f) { return Folder(f, "tags.json"); }, "directory"},
    {"Unreadable",
     [](const ScratchFolder& f) {
         std::string path = f.Write("locked.jpg", JpegWithExif(f));
         chmod(path.c_str(), 0);
         return geteuid() == 0 ? std::string() : path;
     }},
    // Malformed tag files
    {"TagFileSyntax", [](const ScratchFolder& f) { return f.Write("syntax.json", "{\"tags\": [\n  {\"id\": 272,,}]}"); },
     "line 2, column 14"},
    {"TagFileDuplicateID",
     [](const ScratchFolder& f) {
         return f.Write("twice.json", TalvoTagFile("TALVO Q77", 1028, R"({"id": 272, "type": 2, "text": "Q"})"));
     },
     "twice"},
    {"TagFileBadPayload",
     [](const ScratchFolder& f) {
         return f.Write("payload.json", TalvoTagFile("TALVO Q77", 1028, R"({"id": "0x80005", "type": 266, "ints": "6"})"));
     },
     "tag 0x80005"},
    {"TagFileCutShort",
     [](const ScratchFolder& f) { return f.Write("cut.json", ReadAll(kSamples + "/talvo-q77.json").substr(0, 700)); }},
    {"TagFileNumberBeyondDoubles",
     [](const ScratchFolder& f) { return f.Write("big.json", R"({"tags": [{"id": 1e400, "type": 2, "text": "a"}]})"); }},
    {"TagFileDeeplyNested",
     [](const ScratchFolder& f) { return f.Write("deep.json", std::string(100000, '[') + std::string(100000, ']')); }},
    {"TagFileInvalidUtf8",
     [](const ScratchFolder& f) { return f.Write("utf8.json", "{\"tags\": [{\"id\": 271, \"type\": 2, \"text\": \"\xFF\xFE\"}]}"); }},
    {"TagFileInUtf16",
     [](const ScratchFolder& f) {
         std::string text;
         for (char c : std::string(R"({"tags": []})"))
             text += std::string(1, c) + '\0';
         return f.Write("wide.json", "\xFF\xFE" + text);
     }},
    {"TagFileWithZeroByte", [](const ScratchFolder& f) { return f.Write("zero.json", std::string("{\"tags\": [\0]}", 13)); }},
    {"TagFileKeyWithLineBreak", [](const ScratchFolder& f) { return f.Write("key.json", R"({"tags": [], "file\nkind": 1})"); }},
    {"ImageNamedLikeATagFile", [](const ScratchFolder& f) { return f.Write("photo.json", ReadAll(kGoodImage)); }},
    {"TagFileTooLarge",
     [](const ScratchFolder& f) {
         std::string path = f.Write("huge.json", "{}");
         std::filesystem::resize_file(path, 17 * 1024 * 1024);
         return path;
     }},
};

// Well-formed UTF-8 without control characters: what a reason may hold,
// whatever bytes the file had.
bool IsPlainText(const std::string& text)
{
    for (size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const size_t length = lead < 0x80 ? 1 : lead >= 0xC2 && lead < 0xE0 ? 2
                            : lead >= 0xE0 && lead < 0xF0 ? 3 : lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
        if (length == 0 || i + length > text.size() || lead < 0x20 || lead == 0x7F)
            return false;
        for (size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80)
                return false;
        i += length;
    }
    return true;
}

// The one stderr line of a failed file: "qelinfo: <file>: <reason>". A
// reason that names the file again, or echoes the file's raw bytes, is not
// clear.
void ExpectOneClearLine(const std::string& line, const std::string& file, std::string* reason)
{
    const std::string prefix = "qelinfo: " + file + ": ";
    ASSERT_EQ(line.compare(0, prefix.size(), prefix), 0) << line;
    *reason = line.substr(prefix.size());
    ASSERT_TRUE(IsPlainText(*reason)) << line;
    EXPECT_FALSE(reason->empty()) << line;
    const std::string name = std::filesystem::path(file).filename().string();
    EXPECT_EQ(reason->find(name), std::string::npos) << "the file is named twice: " << line;
}

class BadFile : public ::testing::TestWithParam<BadCase> {};

TEST_P(BadFile, GetsOneLineAndTheFilesAroundItAreShown)
{
    ScratchFolder folder;
    const std::string bad = GetParam().make(folder);
    if (bad.empty())
        GTEST_SKIP() << "cannot be set up for this user";

    auto json = RunQelinfo({"--format", "json", kGoodTagFile, bad, kGoodImage});
    EXPECT_EQ(json.status, 1);
    ASSERT_EQ(json.ErrLines().size(), 1u) << json.err;
    std::string reason;
    ExpectOneClearLine(json.ErrLines()[0], bad, &reason);
    EXPECT_NE(reason.find(GetParam().mention), std::string::npos) << reason;
    auto objects = json.Objects();
    ASSERT_EQ(objects.size(), 3u) << json.out;
    EXPECT_EQ(objects[0]["file"], kGoodTagFile);
    EXPECT_TRUE(objects[0].contains("grid"));
    EXPECT_EQ(objects[1], (nlohmann::json{{"file", bad}, {"error", reason}}));
    EXPECT_EQ(objects[2]["file"], kGoodImage);
    EXPECT_TRUE(objects[2].contains("grid"));

    auto text = RunQelinfo({kGoodImage, bad, kGoodTagFile});
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(text.err, json.err);
    EXPECT_EQ(text.OutLines().at(0), kGoodImage);
    EXPECT_NE(text.out.find("\n" + kGoodTagFile + "\n"), std::string::npos) << text.out;
    EXPECT_EQ(text.out.find(bad), std::string::npos) << "a failed file shows nothing on stdout";
}

INSTANTIATE_TEST_SUITE_P(Files, BadFile, ::testing::ValuesIn(kBadFiles),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(BadFiles, EachGetsItsOwnLineInOneRunAndNoGoodFileIsLost)
{
    ScratchFolder folder;
    std::vector<std::string> arguments = {"--format", "json"};
    std::vector<std::string> bad;
    for (const BadCase& item : kBadFiles) {
        std::string path = item.make(folder);
        if (path.empty())
            continue;
        bad.push_back(path);
        arguments.push_back(path);
        arguments.push_back(kGoodTagFile);
    }

    auto run = RunQelinfo(arguments);
    EXPECT_EQ(run.status, 1);
    auto lines = run.ErrLines();
    ASSERT_EQ(lines.size(), bad.size()) << run.err;
    auto objects = run.Objects();
    ASSERT_EQ(objects.size(), 2 * bad.size());
    for (size_t i = 0; i < bad.size(); ++i) {
        std::string reason;
        ExpectOneClearLine(lines[i], bad[i], &reason);
        EXPECT_EQ(objects[2 * i], (nlohmann::json{{"file", bad[i]}, {"error", reason}}));
        // Every good file in between reads the same as on its own.
        EXPECT_EQ(objects[2 * i + 1], objects[1]) << "after " << bad[i];
    }
}

// Names that would break a line or a JSON text if printed as they are.
TEST(BadFiles, HardToPrintNamesStillMakeOneLineEach)
{
    ScratchFolder folder;
    std::vector<std::string> arguments = {"--format", "json"};
    for (const char* name : {"/two\nlines.jpg", "/carriage\rreturn.json", "/not-utf8-\xFF\xFE.jpg"})
        arguments.push_back(folder.Path() + name);

    auto run = RunQelinfo(arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.ErrLines().size(), 3u) << run.err;
    auto objects = run.Objects();  // each parses as JSON
    ASSERT_EQ(objects.size(), 3u);
    for (const auto& object : objects)
        EXPECT_TRUE(object.contains("error")) << object;
}

// Readable images that carry no Exif: shown, with no device and no grid.
TEST(ImageWithoutExif, IsShownWithoutAGrid)
{
    ScratchFolder folder;
    const std::string bare = folder.WriteJpeg("plain.jpg", {});
    const std::string png = folder.Write(
        "plain.png", Bytes({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A, 0, 0, 0, 0x0D, 'I', 'H', 'D', 'R', 0, 0, 0, 1,
                            0, 0, 0, 1, 8, 0, 0, 0, 0, 0x3A, 0x7E, 0x9B, 0x55, 0, 0, 0, 0x0A, 'I', 'D', 'A', 'T', 0x78,
                            0x9C, 0x63, 0x60, 0, 0, 0, 2, 0, 1, 0xE2, 0x21, 0xBC, 0x33, 0, 0, 0, 0, 'I', 'E', 'N', 'D',
                            0xAE, 0x42, 0x60, 0x82}));
    const std::string jpeg = ReadAll(bare);
    const std::string comment =
        folder.Write("comment.jpg", jpeg.substr(0, 2) + Bytes({0xFF, 0xFE, 0, 7}) + "hello" + jpeg.substr(2));

    auto run = RunQelinfo({"--format", "json", bare, png, comment});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    auto objects = run.Objects();
    ASSERT_EQ(objects.size(), 3u);
    for (const auto& object : objects) {
        EXPECT_FALSE(object.contains("error")) << object["file"];
        EXPECT_EQ(object["grid"]["rows"], 0) << object["file"];
        EXPECT_EQ(object["grid"]["cols"], 0) << object["file"];
    }
}

// A photo whose picture data broke off still shows its shooting information.
TEST(TruncatedImage, CutInThePictureDataShowsAllItsInformation)
{
    ScratchFolder folder;
    const std::string whole = JpegWithExif(folder);
    const size_t scan = whole.find("\xFF\xDA");  // where the picture data starts
    ASSERT_NE(scan, std::string::npos);
    const std::string full = folder.Write("full.jpg", whole);
    std::vector<std::string> arguments = {"--format", "json", full};
    for (size_t keep : {scan + 2, scan + 12, whole.size() - 2})
        arguments.push_back(folder.Write("cut-" + std::to_string(keep) + ".jpg", whole.substr(0, keep)));

    auto run = RunQelinfo(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    auto objects = run.Objects();
    ASSERT_EQ(objects.size(), arguments.size() - 2);
    EXPECT_EQ(objects[0]["grid"]["rows"], 10) << "the whole photo is an SLR's";
    for (size_t i = 1; i < objects.size(); ++i) {
        objects[i]["file"] = full;
        EXPECT_EQ(objects[i], objects[0]) << arguments[i + 2];
    }
}

}  // namespace
