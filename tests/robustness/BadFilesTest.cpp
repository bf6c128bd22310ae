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

std::string Folder(const ScratchFolder& f, const std::string& name)
{
    std::filesystem::create_directory(f.Path() + "/" + name);
    return f.Path() + "/" + name;
}

const BadCase kBadFiles[] = {
    {"Missing", [](const ScratchFolder& f) { return f.Path() + "/gone.jpg"; }, "No such file"},
    {"EmptyImage", [](const ScratchFolder& f) { return f.Write("empty.jpg", ""); }, "empty"},
    // Truncated and corrupt images
    {"ExifCutShort", [](const ScratchFolder& f) { return f.Write("cut.jpg", JpegWithExif(f).substr(0, 40)); }},
    {"SegmentLongerThanFile", [](const ScratchFolder& f) {
         return f.Write("long.jpg", Bytes({0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xF0}) + std::string("Exif\0\0II*\0", 10)); }},
    // No image at all
    {"Noise", [](const ScratchFolder& f) { return f.Write("noise.jpg", std::string(4096, '\x5A')); }},
    {"Text", [](const ScratchFolder& f) { return f.Write("notes.png", "shopping list\n"); }, "not a readable image"},
    // Special files
    {"Fifo",
     [](const ScratchFolder& f) {
         std::string path = f.Path() + "/pipe.jpg";
         return mkfifo(path.c_str(), 0600) == 0 ? path : std::string();
     }},
    {"FolderNamedLikeAnImage", [](const ScratchFolder& f) { return Folder(f, "holiday.jpg"); }, "directory"},
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
    {"TagFileTooLarge",
     [](const ScratchFolder& f) {
         std::string path = f.Write("huge.json", "{}");
         std::filesystem::resize_file(path, 17 * 1024 * 1024);
         return path;
     }},
};

// No control characters and no bytes that are not UTF-8: what a reason may
// hold, whatever bytes the file had.
bool IsPlainText(const std::string& text)
{
    for (unsigned char c : text)
        if (c < 0x20 || c == 0x7F)
            return false;
    nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::strict);  // throws on bad UTF-8
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

// All bad files in one run, a good file after each: one clear line and one
// error object per bad file, every good file read as on its own, and the
// text form shows the good files only.
TEST(BadFiles, EachGetsItsOwnLineInOneRunAndNoGoodFileIsLost)
{
    ScratchFolder folder;
    std::vector<std::string> arguments = {"--format", "json", kGoodImage};
    std::vector<const BadCase*> cases;
    for (const BadCase& item : kBadFiles) {
        std::string path = item.make(folder);
        if (path.empty())
            continue;  // cannot be set up for this user
        cases.push_back(&item);
        arguments.push_back(path);
        arguments.push_back(kGoodTagFile);
    }

    auto run = RunQelinfo(arguments);
    EXPECT_EQ(run.status, 1);
    auto lines = run.ErrLines();
    ASSERT_EQ(lines.size(), cases.size()) << run.err;
    auto objects = run.Objects();
    ASSERT_EQ(objects.size(), 2 * cases.size() + 1);
    EXPECT_TRUE(objects[0].contains("grid"));
    for (size_t i = 0; i < cases.size(); ++i) {
        const std::string& bad = arguments[3 + 2 * i];
        SCOPED_TRACE(cases[i]->name);
        std::string reason;
        ExpectOneClearLine(lines[i], bad, &reason);
        EXPECT_NE(reason.find(cases[i]->mention), std::string::npos) << reason;
        EXPECT_EQ(objects[1 + 2 * i], (nlohmann::json{{"file", bad}, {"error", reason}}));
        EXPECT_EQ(objects[2 + 2 * i], objects[2]) << "the good file after it";
    }

    arguments.erase(arguments.begin(), arguments.begin() + 2);
    auto text = RunQelinfo(arguments);
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(text.err, run.err);
    EXPECT_EQ(text.OutLines().at(0), kGoodImage);
    for (size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(text.out.find(arguments[1 + 2 * i]), std::string::npos) << "a failed file shows nothing";
}

// Readable images that carry no Exif: shown, with no device and no grid.
TEST(ImageWithoutExif, IsShownWithoutAGrid)
{
    ScratchFolder folder;
    const std::string bare = folder.WriteJpeg("plain.jpg", {});
    const std::string jpeg = ReadAll(bare);
    const std::string comment =
        folder.Write("comment.jpg", jpeg.substr(0, 2) + Bytes({0xFF, 0xFE, 0, 7}) + "hello" + jpeg.substr(2));

    auto run = RunQelinfo({"--format", "json", bare, comment});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    auto objects = run.Objects();
    ASSERT_EQ(objects.size(), 2u);
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
