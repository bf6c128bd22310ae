// SPDX-License-Identifier: MIT
#include "Inputs.h"

#include "OpenTagSource.h"
#include "TagSourceError.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <sys/stat.h>

namespace qelinfo {

namespace {

namespace fs = std::filesystem;

// Extensions of the image formats libexiv2 reads Exif from.
constexpr const char* kImageExtensions[] = {
    "jpg", "jpeg", "jpe", "tif", "tiff", "png",  "webp", "heic", "heif", "avif", "jp2",
    "dng", "cr2",  "cr3", "crw", "nef",  "nrw",  "arw",  "sr2",  "srf",  "orf",  "rw2",
    "raf", "pef",  "mrw", "srw", "3fr",  "erf",  "kdc",  "dcr",  "mos",  "x3f",  "exv",
};

std::string LowerExtension(const fs::path& path)
{
    std::string extension = path.extension().string();
    if (!extension.empty())
        extension.erase(0, 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

bool IsImageOrTagFile(const fs::path& path)
{
    if (qel::IsTagFileName(path.string()))
        return true;
    const std::string extension = LowerExtension(path);
    return std::any_of(std::begin(kImageExtensions), std::end(kImageExtensions),
                       [&](const char* known) { return extension == known; });
}

}  // namespace

bool IsDirectory(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::vector<std::string> FilesUnder(const std::string& directory)
{
    std::vector<std::string> files;
    std::error_code error;
    fs::recursive_directory_iterator walk(directory, fs::directory_options::none, error);
    for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error)) {
        std::error_code typeError;
        if (walk->is_regular_file(typeError) && IsImageOrTagFile(walk->path()))
            files.push_back(walk->path().string());
    }
    if (error)
        throw qel::TagSourceError(error.message());
    std::sort(files.begin(), files.end());
    return files;
}

std::string ReadStandardInput()
{
    std::string content;
    char block[65536];
    while (size_t got = std::fread(block, 1, sizeof block, stdin))
        content.append(block, got);
    if (std::ferror(stdin))
        throw qel::TagSourceError(std::string("read error: ") + std::strerror(errno));
    return content;
}

}  // namespace qelinfo
