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

std::vector<ItemText> Items(IQelImgInfo& info)
{
    std::vector<ItemText> items;
    items.reserve(std::size(kQelAllItemIDs));
    for (UInt32 id : kQelAllItemIDs) {
        ItemText item;
        item.id = id;
        item.title = AdoptCFString(info.CopyInfoTitleCFString(id));
        item.value = AdoptCFString(info.CopyInfoValueCFString(id));
        if (!item.title && !item.value)
            continue;
        item.line = AdoptCFString(info.CopyInfoCFString(id));
        items.push_back(std::move(item));
    }
    return items;
}

std::vector<ValueList> Lists(IQelImgInfo& info)
{
    std::vector<ValueList> lists;
    for (UInt32 id : kQelValueListItemIDs) {
        ValueList list;
        list.id = id;
        list.current = info.GetInfoValueListCurrentIndex(id);
        UInt32 count = info.GetInfoValueListCount(id);
        list.entries.reserve(count);
        for (UInt32 index = 0; index < count; ++index) {
            ListEntry entry;
            entry.text = AdoptCFString(info.CopyInfoValueListItemCFString(id, index, &entry.raw));
            list.entries.push_back(std::move(entry));
        }
        lists.push_back(std::move(list));
    }
    return lists;
}

}  // namespace

FileInfo ReadFileInfo(IQelImgInfo& info, IVandelTagControl& tags)
{
    FileInfo file;
    file.values = info.ReadFileTags(&tags);
    file.items = Items(info);
    file.rows = info.GetLayoutRows();
    file.cols = info.GetLayoutCols();
    file.grid.reserve(file.rows);
    for (UInt32 row = 0; row < file.rows; ++row) {
        std::vector<GridCell> cells;
        cells.reserve(file.cols);
        for (UInt32 col = 0; col < file.cols; ++col)
            cells.push_back({info.GetLayoutItem(row, col),
                             AdoptCFString(info.CopyLayoutCFString(row, col))});
        file.grid.push_back(std::move(cells));
    }
    file.lists = Lists(info);
    return file;
}

}  // namespace qelinfo
