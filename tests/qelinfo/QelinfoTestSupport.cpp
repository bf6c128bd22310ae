// SPDX-License-Identifier: MIT
#include "QelinfoTestSupport.h"

#include <exiv2/exiv2.hpp>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>

namespace qelinfo_test {

namespace {

// An 8 x 8 grey baseline JPEG without any metadata.
constexpr unsigned char kTinyJpeg[] = {
    0xff, 0xd8, 0xff, 0xdb, 0x00, 0x43, 0x00, 0x1b, 0x12, 0x14, 0x17, 0x14, 0x11, 0x1b, 0x17,
    0x16, 0x17, 0x1e, 0x1c, 0x1b, 0x20, 0x28, 0x42, 0x2b, 0x28, 0x25, 0x25, 0x28, 0x51, 0x3a,
    0x3d, 0x30, 0x42, 0x60, 0x55, 0x65, 0x64, 0x5f, 0x55, 0x5d, 0x5b, 0x6a, 0x78, 0x99, 0x81,
    0x6a, 0x71, 0x90, 0x73, 0x5b, 0x5d, 0x85, 0xb5, 0x86, 0x90, 0x9e, 0xa3, 0xab, 0xad, 0xab,
    0x67, 0x80, 0xbc, 0xc9, 0xba, 0xa6, 0xc7, 0x99, 0xa8, 0xab, 0xa4, 0xff, 0xc0, 0x00, 0x0b,
    0x08, 0x00, 0x08, 0x00, 0x08, 0x01, 0x01, 0x11, 0x00, 0xff, 0xc4, 0x00, 0x14, 0x00, 0x01,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x01, 0xff, 0xc4, 0x00, 0x19, 0x10, 0x00, 0x01, 0x05, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x05, 0x53,
    0xa2, 0xe1, 0xff, 0xda, 0x00, 0x08, 0x01, 0x01, 0x00, 0x00, 0x3f, 0x00, 0x43, 0x98, 0x86,
    0xd8, 0xbf, 0xff, 0xd9};

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::string ShellQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

}  // namespace

std::string ReadAll(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

ScratchFolder::ScratchFolder()
{
    std::string pattern = std::filesystem::temp_directory_path().string() + "/qelinfo-test-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    if (!mkdtemp(name.data()))
        throw std::runtime_error("cannot make a scratch folder");
    m_path = name.data();
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string ScratchFolder::Write(const std::string& name, const std::string& content) const
{
    std::string path = m_path + "/" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string ScratchFolder::WriteJpeg(const std::string& name,
                                     const std::vector<ExifEntry>& exif) const
{
    std::string path = Write(name, std::string(std::begin(kTinyJpeg), std::end(kTinyJpeg)));
    auto image = Exiv2::ImageFactory::open(path);
    Exiv2::ExifData data;
    for (const ExifEntry& entry : exif) {
        auto value = Exiv2::Value::create(Exiv2::TypeInfo::typeId(entry.type));
        if (value->read(entry.value) != 0)
            throw std::runtime_error("exiv2 cannot read " + entry.key + " = " + entry.value);
        data.add(Exiv2::ExifKey(entry.key), value.get());
    }
    image->setExifData(data);
    image->writeMetadata();
    return path;
}

std::vector<std::string> Run::OutLines() const { return Lines(out); }
std::vector<std::string> Run::ErrLines() const { return Lines(err); }

std::vector<nlohmann::json> Run::Objects() const
{
    std::vector<nlohmann::json> objects;
    for (const std::string& line : OutLines())
        objects.push_back(nlohmann::json::parse(line));
    return objects;
}

Run RunQelinfo(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
               const Streams& streams)
{
    ScratchFolder outputs;
    std::string command = "env";
    for (const std::string& setting : environment)
        command += " " + ShellQuoted(setting);
    command += " " + ShellQuoted(QELINFO_PATH);
    for (const std::string& argument : arguments)
        command += " " + ShellQuoted(argument);
    command += " >" + ShellQuoted(streams.out.empty() ? outputs.Path() + "/out" : streams.out) + " 2>" +
               outputs.Path() + "/err <" + ShellQuoted(streams.in);

    Run run;
    int result = std::system(command.c_str());
    run.status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
    run.out = ReadAll(outputs.Path() + "/out");
    run.err = ReadAll(outputs.Path() + "/err");
    return run;
}

std::string TalvoTagFile(const std::string& model, int fileKind, const std::string& tags)
{
    return R"({"fileKind": )" + std::to_string(fileKind) + R"(, "tags": [
      {"id": "0x10F", "type": 2, "text": "TALVO CORPORATION"},
      {"id": "0x110", "type": 2, "text": ")" + model + R"("})" +
           (tags.empty() ? "" : ",\n      " + tags) + "]}";
}

}  // namespace qelinfo_test
