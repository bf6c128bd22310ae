// SPDX-License-Identifier: MIT
#include "SourceFile.h"

#include "TagSourceError.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace qel {

namespace {

std::string SystemReason()
{
    return std::strerror(errno);
}

// The file's size; a stat failure (missing, no permission on a folder on
// the way) is reported with the system's own words.
off_t RegularFileSize(const std::string& path)
{
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0)
        throw TagSourceError(SystemReason());
    if (S_ISDIR(info.st_mode))
        throw TagSourceError("is a directory");
    // Pipes and devices could block the reader forever.
    if (!S_ISREG(info.st_mode))
        throw TagSourceError("not a regular file");
    return info.st_size;
}

}  // namespace

void RequireNonEmptyRegularFile(const std::string& path)
{
    if (RegularFileSize(path) == 0)
        throw TagSourceError("empty file");
}

std::string ReadSmallFile(const std::string& path, size_t limit)
{
    off_t size = RegularFileSize(path);
    if (size == 0)
        throw TagSourceError("empty file");
    if (static_cast<unsigned long long>(size) > limit)
        throw TagSourceError("file too large (" + std::to_string(size) + " bytes)");
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw TagSourceError(errno ? SystemReason() : "cannot be opened");
    std::string content{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad())
        throw TagSourceError("read error");
    return content;
}

}  // namespace qel
