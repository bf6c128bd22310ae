// SPDX-License-Identifier: MIT
#include "FileInfo.h"

#include "CFText.h"
#include "QelItemIDs.h"

#include <iterator>

namespace qelinfo {

namespace {

// The interface cannot enumerate items, so every ID the library can store is
// asked for, in the order of the shared list.
constexpr bool IsAscending(const UInt32* first, const UInt32* last)
{
    for (const UInt32* id = first; id + 1 < last; ++id)
        if (id[0] >= id[1])
            return false;
    return true;
}
static_assert(IsAscending(std::begin(kQelAllItemIDs), std::end(kQelAllItemIDs)),
              "items are listed by ascending ID");

}  // namespace

void FileReader::ReadItems(IQelImgInfo& info)
{
    std::vector<ItemText>& items = m_file.items;
    size_t count = 0;
    for (UInt32 id : kQelAllItemIDs) {
        if (count == items.size())
            items.emplace_back();
        ItemText& item = items[count];
        AdoptCFString(info.CopyInfoTitleCFString(id), item.title);
        AdoptCFString(info.CopyInfoValueCFString(id), item.value);
        if (!item.title && !item.value)
            continue;
        item.id = id;
        AdoptCFString(info.CopyInfoCFString(id), item.line);
        ++count;
    }
    items.resize(count);
}

void FileReader::ReadGrid(IQelImgInfo& info, bool cellLines)
{
    m_file.rows = info.GetLayoutRows();
    m_file.cols = info.GetLayoutCols();
    m_file.grid.resize(m_file.rows);
    for (UInt32 row = 0; row < m_file.rows; ++row) {
        std::vector<GridCell>& cells = m_file.grid[row];
        cells.resize(m_file.cols);
        for (UInt32 col = 0; col < m_file.cols; ++col) {
            cells[col].id = info.GetLayoutItem(row, col);
            if (cellLines)
                AdoptCFString(info.CopyLayoutCFString(row, col), cells[col].line);
        }
    }
}

void FileReader::ReadLists(IQelImgInfo& info)
{
    // A list's texts are the language's, fixed for the run; between kinds of
    // camera a list differs in length only, so one of the same length is kept.
    m_file.lists.resize(std::size(kQelValueListItemIDs));
    for (size_t l = 0; l < std::size(kQelValueListItemIDs); ++l) {
        ValueList& list = m_file.lists[l];
        const UInt32 id = kQelValueListItemIDs[l];
        const UInt32 count = info.GetInfoValueListCount(id);
        list.current = info.GetInfoValueListCurrentIndex(id);
        if (list.id == id && list.entries.size() == count)
            continue;
        list.id = id;
        list.revision = ++m_listRevision;
        list.entries.resize(count);
        for (UInt32 index = 0; index < count; ++index) {
            ListEntry& entry = list.entries[index];
            AdoptCFString(info.CopyInfoValueListItemCFString(id, index, &entry.raw), entry.text);
        }
    }
}

const FileInfo& FileReader::Read(IQelImgInfo& info, IVandelTagControl& tags, bool cellLines)
{
    m_file.values = info.ReadFileTags(&tags);
    ReadItems(info);
    ReadGrid(info, cellLines);
    ReadLists(info);
    return m_file;
}

FileInfo ReadFileInfo(IQelImgInfo& info, IVandelTagControl& tags)
{
    FileReader reader;
    return reader.Read(info, tags, true);
}

}  // namespace qelinfo
