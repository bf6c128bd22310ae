// SPDX-License-Identifier: MIT
// qelinfo run as a user runs it: the JSON contract and its line form on the
// shipped samples, value lists carried from file to file, the command line,
// control characters in the text form and images written by exiv2.
#include "QelinfoTestSupport.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <set>

namespace {

using nlohmann::json;
using qelinfo_test::RunQelinfo;
using qelinfo_test::ScratchFolder;
using qelinfo_test::TalvoTagFile;

const std::string kSamples = QELINFO_SAMPLES_DIR;
// The six list items in the order of the JSON contract.
constexpr std::array<uint32_t, 6> kListItems = {0x80005, 0x80006, 0x80080, 0x80081, 0x8008D, 0x800AA};

bool HasRawKey(const json& text)
{
    return text.is_string() && text.get<std::string>().find("IDS_QEL_") != std::string::npos;
}

void ExpectTextOrNull(const json& text, const std::string& where)
{
    EXPECT_TRUE(text.is_null() || text.is_string()) << where;
    EXPECT_FALSE(HasRawKey(text)) << where << ": " << text;
}

// Everything the contract promises about one file's object.
void ExpectContract(const json& object, uint32_t rows, uint32_t cols)
{
    std::set<std::string> keys;
    for (const auto& item : object.items())
        keys.insert(item.key());
    EXPECT_EQ(keys, (std::set<std::string>{"file", "values", "items", "grid", "lists"}));

    uint32_t previous = 0;
    size_t withValue = 0;
    for (const json& item : object["items"]) {
        EXPECT_EQ(item.size(), 4u) << item;
        uint32_t id = item["id"];
        EXPECT_GT(id, previous) << "items ascend";
        previous = id;
        EXPECT_TRUE(!item["title"].is_null() || !item["value"].is_null()) << item;
        for (const char* key : {"title", "value", "line"})
            ExpectTextOrNull(item[key], std::to_string(id) + " " + key);
        withValue += item["value"].is_null() ? 0 : 1;
    }
    // Every stored value is found by asking the shared list of item IDs.
    EXPECT_EQ(object["values"].get<size_t>(), withValue);

    const json& grid = object["grid"];
    EXPECT_EQ(grid["rows"], rows);
    EXPECT_EQ(grid["cols"], cols);
    ASSERT_EQ(grid["cells"].size(), rows);
    for (const json& row : grid["cells"])
        EXPECT_EQ(row.size(), cols);

    ASSERT_EQ(object["lists"].size(), kListItems.size());
    for (size_t i = 0; i < kListItems.size(); ++i) {
        const json& list = object["lists"][i];
        EXPECT_EQ(list["id"], kListItems[i]);
        EXPECT_EQ(list["count"], list["entries"].size());
        EXPECT_GE(list["current"].get<int>(), -1);
        EXPECT_LT(list["current"].get<int>(), list["count"].get<int>());
        for (const json& entry : list["entries"]) {
            EXPECT_TRUE(entry["raw"].is_number_unsigned());
            ExpectTextOrNull(entry["text"], "list entry");
        }
    }
}

std::vector<int> CurrentIndexes(const json& object)
{
    std::vector<int> indexes;
    for (const json& list : object["lists"])
        indexes.push_back(list["current"]);
    return indexes;
}

// The settings of one file and the list positions after reading it, in the
// order white balance, sharpening, brightness/contrast, tone, colour mode,
// saturation.
struct ListStep {
    std::string tagFile;
    std::vector<int> current;
    int sharpeningCount;
};

TEST(ValueLists, PositionsCarryOverFromFileToFileInOneRun)
{
    const std::vector<ListStep> steps = {
        {TalvoTagFile("TALVO Q77", 1028, R"(
            {"id": "0x80005", "type": 266, "ints": [6, 0]}, {"id": "0x80006", "type": 3, "ints": [2]},
            {"id": "0x80081", "type": 3, "ints": [0]}, {"id": "0x8008D", "type": 3, "ints": [1]},
            {"id": "0x800AA", "type": 3, "ints": [2]})"),
         {5, 3, -1, 2, 0, 1}, 6},
        // Auto white balance and automatic tone have no list entry: the SLR's survive.
        {TalvoTagFile("MERIVAX E7310", 515, R"(
            {"id": "0x80004", "type": 3, "ints": [2]},
            {"id": "0x80005", "type": 266, "ints": [0, 0]}, {"id": "0x80006", "type": 3, "ints": [1]},
            {"id": "0x80081", "type": 3, "ints": [4]})"),
         {5, 1, -1, 2, 0, 1}, 4},
        {TalvoTagFile("TALVO Q77", 1028, R"(
            {"id": "0x80005", "type": 266, "ints": [3, 0]}, {"id": "0x80006", "type": 3, "ints": [9]},
            {"id": "0x80081", "type": 3, "ints": [16]}, {"id": "0x8008D", "type": 3, "ints": [6]},
            {"id": "0x800B3", "type": 3, "ints": [4]}, {"id": "0x800AA", "type": 3, "ints": [4]})"),
         {2, 1, -1, 5, 8, 1}, 6},
    };
    ScratchFolder folder;
    std::vector<std::string> arguments = {"--format", "json"};
    for (size_t i = 0; i < steps.size(); ++i)
        arguments.push_back(folder.Write("file" + std::to_string(i) + ".json", steps[i].tagFile));

    auto run = RunQelinfo(arguments);
    ASSERT_EQ(run.status, 0) << run.err;
    auto objects = run.Objects();
    ASSERT_EQ(objects.size(), steps.size());
    for (size_t i = 0; i < steps.size(); ++i) {
        EXPECT_EQ(CurrentIndexes(objects[i]), steps[i].current) << "after file " << i;
        EXPECT_EQ(objects[i]["lists"][1]["count"], steps[i].sharpeningCount) << "file " << i;
    }

    // Read alone, or with a fresh object per file, the last file keeps
    // nothing from the others.
    const std::vector<int> alone = {2, -1, -1, 5, 8, -1};
    EXPECT_EQ(CurrentIndexes(RunQelinfo({"--format", "json", arguments.back()}).Objects().at(0)), alone);
    arguments.insert(arguments.begin(), "--each-file-fresh");
    EXPECT_EQ(CurrentIndexes(RunQelinfo(arguments).Objects().at(2)), alone);
}

struct CommandCase {
    const char* name;
    std::vector<std::string> arguments;
    int status;
    const char* stdoutMention;            // nullptr: stdout stays empty
    const char* stderrMention = nullptr;  // nullptr: not looked at; "": stays empty
    qelinfo_test::Streams streams = {};
};

class CommandLine : public ::testing::TestWithParam<CommandCase> {};

TEST_P(CommandLine, AnswersWithItsExitStatus)
{
    const CommandCase& c = GetParam();
    auto run = RunQelinfo(c.arguments, {}, c.streams);
    EXPECT_EQ(run.status, c.status) << run.err;
    if (c.stdoutMention) {
        EXPECT_NE(run.out.find(c.stdoutMention), std::string::npos) << run.out;
    } else {
        EXPECT_EQ(run.out, "");
    }
    if (c.status == 2) {
        EXPECT_FALSE(run.err.empty());
    }
    if (c.stderrMention && *c.stderrMention) {
        EXPECT_NE(run.err.find(c.stderrMention), std::string::npos) << run.err;
    } else if (c.stderrMention) {
        EXPECT_EQ(run.err, "");
    }
}

const std::string kCompact = kSamples + "/merivax-e7310.json";
const qelinfo_test::Streams kFullDisk{"/dev/null", "/dev/full"};

INSTANTIATE_TEST_SUITE_P(
    Arguments, CommandLine,
    ::testing::Values(CommandCase{"NoFile", {}, 2, nullptr},
                      CommandCase{"UnknownOption", {"--bogus", kCompact}, 2, nullptr},
                      CommandCase{"UnknownFormat", {"--format", "xml", kCompact}, 2, nullptr},
                      CommandCase{"FormatWithoutValue", {kCompact, "--format"}, 2, nullptr},
                      CommandCase{"Help", {"--help"}, 0, "Usage"},
                      CommandCase{"Version", {"--version"}, 0, "qelinfo "},
                      CommandCase{"AllShowsItemNumbers", {"--all", kCompact}, 0, "0x110 "},
                      CommandCase{"LangAndFormatJoined", {"--lang=en", "--format=json", kCompact}, 0, "\"lists\""},
                      CommandCase{"DashesEndOptions", {"--", "--all"}, 1, nullptr},
                      CommandCase{"FullDiskIsAnError", {kCompact}, 1, nullptr, "cannot write", kFullDisk},
                      CommandCase{"UnknownLanguageNamesTheOneShown", {"--lang", "xx", kCompact}, 0, "Merivax", "showing 'en'"},
                      CommandCase{"RegionOfAKnownLanguage", {"--lang", "de_AT.UTF-8", kCompact}, 0, "Merivax", ""},
                      CommandCase{"ListLanguages", {"--list-languages"}, 0, "\nja\n", ""},
                      CommandCase{"FolderWithoutRecursive", {kSamples}, 1, nullptr, "is a directory"}),
    [](const auto& info) { return std::string(info.param.name); });

// An item's value; "<absent>" for an item the file does not have.
json ItemValue(const json& object, uint32_t id)
{
    for (const json& item : object["items"])
        if (item["id"] == id)
            return item["value"];
    return "<absent>";
}

// Images written by exiv2: where each Exif tag ends up once the library has
// read it.
TEST(Images, StandardTagsAndGPSReachTheSLRGrid)
{
    ScratchFolder folder;
    std::string path = folder.WriteJpeg(
        "dawn.jpg", {{"Exif.Image.Make", "Ascii", "TALVO CORPORATION"},
                     {"Exif.Image.Model", "Ascii", "TALVO Q77"},
                     {"Exif.Photo.DateTimeOriginal", "Ascii", "2006:05:20 05:41:12"},
                     {"Exif.Photo.ExposureTime", "Rational", "1/125"},
                     {"Exif.Photo.FNumber", "Rational", "56/10"},
                     {"Exif.Photo.ExposureBiasValue", "SRational", "-2/3"},
                     {"Exif.Photo.ISOSpeedRatings", "Short", "400"},
                     {"Exif.Photo.WhiteBalance", "Short", "1"},
                     {"Exif.Photo.LightSource", "Short", "10"},
                     {"Exif.Photo.UserComment", "Comment", "charset=Ascii Harbour at dawn"},
                     {"Exif.GPSInfo.GPSLatitudeRef", "Ascii", "N"},
                     {"Exif.GPSInfo.GPSLatitude", "Rational", "53/1 32/1 402/10"},
                     {"Exif.GPSInfo.GPSLongitudeRef", "Ascii", "W"},
                     {"Exif.GPSInfo.GPSLongitude", "Rational", "9/1 59/1 24/10"},
                     {"Exif.GPSInfo.GPSAltitude", "Rational", "12/1"},
                     {"Exif.GPSInfo.GPSTimeStamp", "Rational", "3/1 41/1 12/1"},
                     {"Exif.GPSInfo.GPSImgDirectionRef", "Ascii", "T"},
                     {"Exif.GPSInfo.GPSImgDirection", "Rational", "2705/10"}});
    auto run = RunQelinfo({"--format", "json", path});
    ASSERT_EQ(run.status, 0) << run.err;
    json object = run.Objects().at(0);
    ExpectContract(object, 10, 8);

    auto value = [&](uint32_t id) {
        const json text = ItemValue(object, id);
        return text.is_string() ? text.get<std::string>() : text.dump();
    };
    const std::pair<uint32_t, const char*> shown[] = {{0x30002, "53"}, {0x30004, "9"}, {0x30006, "12"},
                                                      {0x30007, "41"}, {0x30011, "270"}, {0x80002, "400"},
                                                      {0x9204, "0.7"}, {0x829A, "125"}};
    for (const auto& [id, part] : shown)
        EXPECT_NE(value(id).find(part), std::string::npos) << std::hex << id << ": " << value(id);
    EXPECT_EQ(value(0x9286), "Harbour at dawn");
    EXPECT_EQ(object["lists"][0]["current"], 5) << "cloudy is the sixth white-balance entry";
}

// Every JSON line is exactly what the JSON library itself would print for
// that object: no blanks, keys in the reader's order, texts escaped and bytes
// that are not UTF-8 replaced as the library does, in every language and for
// file names with quotes, controls, line breaks and foreign bytes; each
// missing file gets one line on stderr.
TEST(JsonLineForm, IsTheLibrarysOwnRendering)
{
    ScratchFolder folder;
    const std::string slr = qelinfo_test::ReadAll(kSamples + "/talvo-q77.json");
    std::vector<std::string> arguments = {
        "--format", "json", kSamples + "/talvo-q77.json", kSamples + "/merivax-e7310.json",
        kSamples + "/talvo-filmscan-f40.json", kSamples + "/talvo-q77-harbour.jpg",
        folder.Write("quote\"back\\slash.json", slr), folder.Write("control\x01\x1f tab\tname.json", slr),
        folder.Write("bytes \xff\xfe and \xc3(.json", slr), folder.Write("\xc3\x9cnic\xc3\xb8" "de \xc3\x97.json", slr),
        folder.Path() + "/missing \"file\".jpg", folder.Path() + "/two\nlines \xFF.jpg"};
    for (const char* language : {"en", "de", "ja"}) {
        const auto run = RunQelinfo(arguments, {std::string("LANGUAGE=") + language});
        EXPECT_EQ(run.ErrLines().size(), 2u) << run.err;
        const auto lines = run.OutLines();
        ASSERT_EQ(lines.size(), arguments.size() - 2) << language;
        for (const std::string& line : lines) {
            const auto object = nlohmann::ordered_json::parse(line, nullptr, false);
            ASSERT_FALSE(object.is_discarded()) << line;
            EXPECT_EQ(object.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace), line) << language;
        }
    }
}

TEST(TextRendering, ControlCharactersFromAFileAreShownNotObeyed)
{
    ScratchFolder folder;
    const std::string path = folder.WriteJpeg(
        "c1\xc2\x9b.jpg", {{"Exif.Image.Make", "Ascii", "TALVO CORPORATION"},
                          {"Exif.Image.Model", "Ascii", "TALVO Q77"},
                          {"Exif.Photo.UserComment", "Comment", "charset=Ascii a\x1b[31mb\x1b]0;t\x07\nc\x7f"}});
    auto run = RunQelinfo({path});
    ASSERT_EQ(run.status, 0) << run.err;
    for (char c : run.out)
        EXPECT_TRUE((static_cast<unsigned char>(c) >= 0x20 && c != 0x7F) || c == '\n') << int(c);
    EXPECT_EQ(run.out.find("\xc2\x9b"), std::string::npos);
    EXPECT_NE(run.out.find("c1\\xC2\\x9B.jpg\n"), std::string::npos);
    EXPECT_NE(run.out.find("a\\x1B[31mb\\x1B]0;t\\x07\\x0Ac\\x7F\n"), std::string::npos) << run.out;
}

TEST(Inputs, StandardInputReadsAsTheNamedFile)
{
    for (const char* sample : {"talvo-q77-harbour.jpg", "talvo-q77.json"}) {
        const std::string path = kSamples + "/" + sample;
        json named = RunQelinfo({"--format", "json", path}).Objects().at(0);
        auto piped = RunQelinfo({"--format", "json", "-"}, {}, {path, ""});
        ASSERT_EQ(piped.status, 0) << piped.err;
        named["file"] = "-";
        EXPECT_EQ(piped.Objects().at(0), named) << sample;
    }
}

TEST(Inputs, FoldersAreWalkedInNameOrderKeepingImagesAndTagFiles)
{
    ScratchFolder folder;
    const std::string tagFile = qelinfo_test::ReadAll(kSamples + "/merivax-e7310.json");
    std::filesystem::create_directories(folder.Path() + "/b/c");
    folder.Write("b/c/z.JSON", tagFile);
    folder.WriteJpeg("b/a.jpg", {});
    folder.Write("b/notes.txt", "not an image");
    folder.Write("a.json", tagFile);
    const std::string odd = folder.Write("name \xff\\.json", tagFile);

    auto run = RunQelinfo({"--format", "json", "-r", folder.Path(), odd});
    ASSERT_EQ(run.status, 0) << run.err;
    std::vector<std::string> files;
    for (const json& object : run.Objects())
        files.push_back(object.contains("file_bytes") ? object["file_bytes"].get<std::string>()
                                                      : object["file"].get<std::string>());
    const std::string root = folder.Path() + "/";
    EXPECT_EQ(files, (std::vector<std::string>{root + "a.json", root + "b/a.jpg", root + "b/c/z.JSON",
                                               root + "name \\xFF\\x5C.json", root + "name \\xFF\\x5C.json"}));
}

}  // namespace
