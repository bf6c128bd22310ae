// SPDX-License-Identifier: MIT
// What the library shows for one file, gathered through its public
// interface right after ReadFileTags, so the renderers need no library calls.
#ifndef QELINFO_FILE_INFO_H
#define QELINFO_FILE_INFO_H

#include "IQelImgInfo.h"

#include <optional>
#include <string>
#include <vector>

namespace qelinfo {

struct ItemText {
    UInt32 id = 0;
    std::optional<std::string> title;  // CopyInfoTitleCFString
    std::optional<std::string> value;  // CopyInfoValueCFString
    std::optional<std::string> line;   // CopyInfoCFString: title and value joined
};

struct GridCell {
    UInt32 id = 0;                     // 0: an empty cell
    std::optional<std::string> line;   // CopyLayoutCFString
};

struct ListEntry {
    UInt32 raw = 0;
    std::optional<std::string> text;
};

struct ValueList {
    UInt32 id = 0;
    SInt32 current = -1;
    std::vector<ListEntry> entries;
    UInt32 revision = 0;  // new each time the entries are read again
};

struct FileInfo {
    UInt32 values = 0;                        // what ReadFileTags answered
    std::vector<ItemText> items;              // every item with a title or value, ascending
    UInt32 rows = 0;
    UInt32 cols = 0;
    std::vector<std::vector<GridCell>> grid;  // rows x cols
    std::vector<ValueList> lists;             // the six list items, in host order
};

// Gathers what the library shows into storage kept from file to file, so a
// folder is read without a heap allocation per text. The value lists are
// kept too: the language must stay the same for the reader's life.
class FileReader {
public:
    // Reads the file's tags into `info` and gathers everything it shows; the
    // grid's cell lines only with `cellLines` (the JSON form shows none).
    const FileInfo& Read(IQelImgInfo& info, IVandelTagControl& tags, bool cellLines);

private:
    void ReadItems(IQelImgInfo& info);
    void ReadGrid(IQelImgInfo& info, bool cellLines);
    void ReadLists(IQelImgInfo& info);

    FileInfo m_file;
    UInt32 m_listRevision = 0;
};

// One file, grid lines included, with nothing kept from an earlier file (for
// hosts that may change the language between files).
FileInfo ReadFileInfo(IQelImgInfo& info, IVandelTagControl& tags);

}  // namespace qelinfo

#endif
