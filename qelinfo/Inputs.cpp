// SPDX-License-Identifier: MIT
#include "Inputs.h"

#include "ExivTagSource.h"
#include "OpenTagSource.h"
#include "TagSourceError.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>

namespace qelinfo {

namespace {

namespace fs = std::filesystem;

// Tag files by name; images by content, as exiv2 recognises them, so a new
// camera's raw format is read as soon as the installed exiv2 knows it.
bool IsImageOrTagFile(const fs::path& path)
{
    return qel::IsTagFileName(path.string()) || qel::ExivTagSource::IsImage(path.string());
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
