// SPDX-License-Identifier: MIT
// Checks shared by the tag sources before they read a file, so every source
// turns a missing file, a directory, a device or an empty file into the same
// plain reason instead of blocking on it or reporting a parse error.
#ifndef QEL_SOURCE_FILE_H
#define QEL_SOURCE_FILE_H

#include <cstddef>
#include <string>

namespace qel {

// Throws TagSourceError unless `path` names a non-empty regular file.
void RequireNonEmptyRegularFile(const std::string& path);

// The whole content of a regular file of at most `limit` bytes; throws
// TagSourceError otherwise.
std::string ReadSmallFile(const std::string& path, size_t limit);

}  // namespace qel

#endif
