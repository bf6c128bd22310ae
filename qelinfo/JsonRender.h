// SPDX-License-Identifier: MIT
// The JSON rendering: one object per file, on one line, UTF-8.
//
//   {"file": "<path as given>", "values": <ReadFileTags result>,
//    "items": [{"id": 272, "title": "...", "value": "...", "line": "..."}, ...],
//    "grid": {"rows": 10, "cols": 8, "cells": [[272, 36867, ...], ...]},
//    "lists": [{"id": 524293, "count": 6, "current": 5,
//               "entries": [{"raw": 1, "text": "..."}, ...]}, ...]}
//
// A file that could not be read: {"file": "<path>", "error": "<reason>"}.
// A path that is not UTF-8 also gets "file_bytes" after "file": the path
// with each byte outside printable ASCII, and the backslash, as \xNN.
#ifndef QELINFO_JSON_RENDER_H
#define QELINFO_JSON_RENDER_H

#include "FileInfo.h"

#include <string>
#include <vector>

namespace qelinfo {

// Writes the lines of a run; a value list's entries, the same from file to
// file, are rendered once.
class JsonWriter {
public:
    // Appends the line to `out`, without the line break.
    void Append(std::string& out, const std::string& file, const FileInfo& info);

private:
    struct RenderedEntries {
        UInt32 id = 0;
        UInt32 revision = 0;
        std::string text;
    };
    const std::string& Entries(RenderedEntries& rendered, const ValueList& list);

    std::vector<RenderedEntries> m_entries;
};
std::string JsonErrorLine(const std::string& file, const std::string& reason);

}  // namespace qelinfo

#endif
