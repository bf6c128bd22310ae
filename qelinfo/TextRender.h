// SPDX-License-Identifier: MIT
// The terminal rendering: the file name, then the cells of the device's
// display grid column by column as a photo manager shows them (title and
// value aligned, empty cells skipped, a blank line between columns).
#ifndef QELINFO_TEXT_RENDER_H
#define QELINFO_TEXT_RENDER_H

#include "FileInfo.h"

#include <ostream>
#include <string>

namespace qelinfo {

// `allItems` adds every item with a title or value, and the value lists.
void WriteText(std::ostream& out, const std::string& file, const FileInfo& info, bool allItems);

}  // namespace qelinfo

#endif
