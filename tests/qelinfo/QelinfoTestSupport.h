// SPDX-License-Identifier: MIT
// Scratch files and program runs for the qelinfo tests: a temporary folder
// per test, an 8 x 8 JPEG to which exiv2 writes the Exif tags a test needs,
// and qelinfo run as a user runs it, with its output and exit status.
#ifndef QELINFO_TEST_SUPPORT_H
#define QELINFO_TEST_SUPPORT_H

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace qelinfo_test {

std::string ReadAll(const std::string& path);

struct ExifEntry {
    std::string key;    // "Exif.Photo.ExposureBiasValue"
    std::string type;   // exiv2 type name: "Ascii", "Short", "Rational", "SRational", ...
    std::string value;  // as exiv2 reads it: "-2/3", "53/1 32/1 402/10", "charset=Ascii ..."
};

class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& Path() const { return m_path; }
    std::string Write(const std::string& name, const std::string& content) const;
    // A small real JPEG carrying exactly `exif`.
    std::string WriteJpeg(const std::string& name, const std::vector<ExifEntry>& exif) const;

private:
    std::string m_path;
};

struct Run {
    int status = -1;
    std::string out;
    std::string err;
    std::vector<std::string> OutLines() const;
    std::vector<std::string> ErrLines() const;
    // stdout of a --format json run, one object per line.
    std::vector<nlohmann::json> Objects() const;
};

// Where a run's standard input comes from and its output goes.
struct Streams {
    std::string in = "/dev/null";
    std::string out;  // empty: captured in Run::out
};

// Runs the built qelinfo with `arguments`; `environment` entries
// ("NAME=value") are set for the run only.
Run RunQelinfo(const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment = {}, const Streams& streams = {});

// A tag file naming the maker's Make and the given model, plus `tags`
// (JSON tag objects, comma-separated) and a file kind.
std::string TalvoTagFile(const std::string& model, int fileKind, const std::string& tags);

}  // namespace qelinfo_test

#endif
