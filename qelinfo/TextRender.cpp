// SPDX-License-Identifier: MIT
#include "TextRender.h"

#include "TagSourceError.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <locale.h>
#include <wchar.h>

namespace qelinfo {

namespace {

constexpr const char* kIndent = "  ";
constexpr size_t kMaxTitleWidth = 32;

// wcwidth answers by the LC_CTYPE locale, and a C locale knows no wide
// characters: the widths of a UTF-8 locale are used whatever the environment
// sets. Made once; null when the system has none.
locale_t WidthLocale()
{
    static const locale_t locale = [] {
        for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"})
            if (locale_t made = newlocale(LC_CTYPE_MASK, name, static_cast<locale_t>(nullptr)))
                return made;
        return static_cast<locale_t>(nullptr);
    }();
    return locale;
}

// Columns on the terminal: a CJK character takes two, a combining mark none.
size_t DisplayWidth(const std::string& text)
{
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return text.size();
    const locale_t utf8 = WidthLocale();
    const locale_t previous = utf8 ? uselocale(utf8) : nullptr;
    size_t width = 0;
    for (size_t i = 0; i < text.size();) {
        const size_t length = std::max<size_t>(qel::UTF8SequenceLength(text, i), 1);
        auto c = static_cast<wchar_t>(static_cast<unsigned char>(text[i]) & (0xFF >> (length == 1 ? 0 : length + 1)));
        for (size_t k = 1; k < length; ++k)
            c = static_cast<wchar_t>((c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F));
        const int columns = wcwidth(c);
        width += columns < 0 ? 1 : static_cast<size_t>(columns);
        i += length;
    }
    if (utf8)
        uselocale(previous);
    return width;
}

// Texts from a file (a comment, a model name) may hold control characters
// that a terminal would obey; they are shown, not obeyed.
std::string Shown(const std::string& text)
{
    return qel::PrintableText(text);
}

std::string Padded(const std::string& text, size_t width)
{
    size_t shown = DisplayWidth(text);
    return shown >= width ? text + " " : text + std::string(width - shown, ' ');
}

std::string HexID(UInt32 id)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(id));
    return text;
}

const ItemText* FindItem(const FileInfo& info, UInt32 id)
{
    auto it = std::lower_bound(info.items.begin(), info.items.end(), id,
                               [](const ItemText& item, UInt32 wanted) { return item.id < wanted; });
    return it != info.items.end() && it->id == id ? &*it : nullptr;
}

// A grid line split for alignment: the title in the first column and the
// value in the second when the line is exactly "title value"; otherwise
// (value-only items such as the model, a title without a value) the line
// stands alone in the first column.
struct Row {
    std::string left;
    std::string right;
};

Row SplitLine(const ItemText* item, const std::string& line)
{
    if (item && item->title && item->value && !item->value->empty() &&
        line == *item->title + " " + *item->value)
        return {Shown(*item->title), Shown(*item->value)};
    return {Shown(line), std::string()};
}

// Blank values (a flash that did not fire shows " ") leave no trailing blanks.
std::string TrimmedRight(std::string line)
{
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

void WriteRows(std::ostream& out, const std::vector<Row>& rows, const char* indent)
{
    size_t width = 0;
    for (const Row& row : rows)
        if (!row.right.empty())
            width = std::max(width, std::min(DisplayWidth(row.left), kMaxTitleWidth));
    for (const Row& row : rows) {
        if (row.left.empty() && row.right.empty())
            out << '\n';
        else if (row.right.empty())
            out << TrimmedRight(indent + row.left) << '\n';
        else
            out << TrimmedRight(indent + Padded(row.left, width + 2) + row.right) << '\n';
    }
}

void WriteGrid(std::ostream& out, const FileInfo& info)
{
    if (info.cols == 0) {
        out << kIndent << "(no display grid: the device that made this file is not known)\n";
        return;
    }
    std::vector<Row> rows;
    for (UInt32 col = 0; col < info.cols; ++col) {
        bool columnStarted = false;
        for (UInt32 row = 0; row < info.rows; ++row) {
            const GridCell& cell = info.grid[row][col];
            if (cell.id == 0 || !cell.line || cell.line->empty())
                continue;
            if (!columnStarted && !rows.empty())
                rows.push_back({});  // blank line between grid columns
            columnStarted = true;
            rows.push_back(SplitLine(FindItem(info, cell.id), *cell.line));
        }
    }
    WriteRows(out, rows, kIndent);
}

void WriteAllItems(std::ostream& out, const FileInfo& info)
{
    out << '\n' << kIndent << "All items:\n";
    std::vector<Row> rows;
    for (const ItemText& item : info.items)
        rows.push_back({Padded(HexID(item.id), 9) + Shown(item.title.value_or("")),
                        Shown(item.value.value_or(""))});
    WriteRows(out, rows, "    ");

    out << '\n' << kIndent << "Value lists (current in brackets):\n";
    for (const ValueList& list : info.lists) {
        const ItemText* item = FindItem(info, list.id);
        std::string name = item && item->title ? Shown(*item->title) : HexID(list.id);
        out << "    " << name << ":";
        for (size_t i = 0; i < list.entries.size(); ++i) {
            std::string text = Shown(list.entries[i].text.value_or(""));
            bool current = list.current >= 0 && static_cast<size_t>(list.current) == i;
            // Entries may hold commas themselves ("Black and White, Red Filter").
            out << (i == 0 ? " " : " | ") << (current ? "[" + text + "]" : text);
        }
        out << '\n';
    }
}

}  // namespace

void WriteText(std::ostream& out, const std::string& file, const FileInfo& info, bool allItems)
{
    out << Shown(file) << '\n';
    WriteGrid(out, info);
    if (allItems)
        WriteAllItems(out, info);
}

}  // namespace qelinfo
