// SPDX-License-Identifier: MIT
// The tag source for one file, as a host browsing a folder makes it: a name
// ending in ".json" (any case) is a tag file, anything else an image.
#ifndef QEL_OPEN_TAG_SOURCE_H
#define QEL_OPEN_TAG_SOURCE_H

#include "IVandelTagControl.h"

#include <memory>
#include <string>

namespace qel {

bool IsTagFileName(const std::string& path);

// Throws TagSourceError naming what is wrong with the file.
std::unique_ptr<IVandelTagControl> OpenTagSource(const std::string& path);

// The same for a file's content without a name (read from a pipe): a tag
// file when it begins, after blanks, with '{'; an image otherwise.
std::unique_ptr<IVandelTagControl> OpenTagSourceFromContent(const std::string& content);

}  // namespace qel

#endif
