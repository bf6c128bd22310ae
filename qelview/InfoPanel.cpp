// SPDX-License-Identifier: MIT
#include "InfoPanel.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace qelview {

namespace {

constexpr int kColumnSpacing = 12;
constexpr int kRowSpacing = 3;
constexpr int kSectionSpacing = 10;

const qelinfo::ItemText* FindItem(const qelinfo::FileInfo& info, UInt32 id)
{
    auto it = std::lower_bound(info.items.begin(), info.items.end(), id,
                               [](const qelinfo::ItemText& item, UInt32 wanted) { return item.id < wanted; });
    return it != info.items.end() && it->id == id ? &*it : nullptr;
}

struct Cell {
    std::string title;
    std::string value;
};

// A grid line is "title value" when the item has both; a title without a
// value (a setting the camera did not record) and a value-only line (the
// model, the shutter line) stand alone.
Cell SplitLine(const qelinfo::ItemText* item, const std::string& line)
{
    const bool hasValue = item && item->value && !item->value->empty();
    if (item && item->title && hasValue && line == *item->title + " " + *item->value)
        return {*item->title, *item->value};
    if (item && item->title && !hasValue && line == *item->title)
        return {line, std::string()};
    return {std::string(), line};
}

Gtk::Label& MakeLabel(const std::string& text, bool title)
{
    auto& label = *Gtk::make_managed<Gtk::Label>(text);
    label.set_xalign(0);
    label.set_valign(Gtk::Align::START);
    if (title) {
        label.add_css_class("dim-label");
    } else {
        label.set_wrap(true);
        label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
        label.set_hexpand(true);
    }
    return label;
}

Gtk::Grid& MakeGrid()
{
    auto& grid = *Gtk::make_managed<Gtk::Grid>();
    grid.set_column_spacing(kColumnSpacing);
    grid.set_row_spacing(kRowSpacing);
    return grid;
}

// A line that is not title and value spans both columns.
std::pair<Gtk::Label*, Gtk::Label*> AttachCell(Gtk::Grid& grid, int row, const Cell& cell)
{
    if (cell.value.empty() || cell.title.empty()) {
        const bool title = cell.value.empty();
        Gtk::Label& label = MakeLabel(title ? cell.title : cell.value, title);
        grid.attach(label, 0, row, 2);
        using Labels = std::pair<Gtk::Label*, Gtk::Label*>;
        return title ? Labels{&label, nullptr} : Labels{nullptr, &label};
    }
    Gtk::Label& title = MakeLabel(cell.title, true);
    Gtk::Label& value = MakeLabel(cell.value, false);
    grid.attach(title, 0, row);
    grid.attach(value, 1, row);
    return {&title, &value};
}

std::string Hex(UInt32 id)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(id));
    return text;
}

Gtk::Widget& ValueLists(const qelinfo::FileInfo& info)
{
    auto& box = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, kRowSpacing);
    for (const qelinfo::ValueList& list : info.lists) {
        const qelinfo::ItemText* item = FindItem(info, list.id);
        auto& heading = *Gtk::make_managed<Gtk::Label>();
        heading.set_markup("<b>" + Glib::Markup::escape_text(item && item->title ? *item->title : Hex(list.id)) + "</b>");
        heading.set_xalign(0);
        heading.set_margin_top(kSectionSpacing / 2);
        box.append(heading);
        auto& entries = *Gtk::make_managed<Gtk::ListBox>();
        entries.set_selection_mode(Gtk::SelectionMode::NONE);
        for (size_t i = 0; i < list.entries.size(); ++i) {
            const bool current = list.current >= 0 && static_cast<size_t>(list.current) == i;
            auto& row = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, kColumnSpacing / 2);
            auto& mark = *Gtk::make_managed<Gtk::Image>();
            mark.set_from_icon_name("object-select-symbolic");
            mark.set_opacity(current ? 1 : 0);
            auto& text = *Gtk::make_managed<Gtk::Label>();
            const Glib::ustring escaped = Glib::Markup::escape_text(list.entries[i].text.value_or(""));
            text.set_markup(current ? "<b>" + escaped + "</b>" : escaped);
            text.set_xalign(0);
            row.append(mark);
            row.append(text);
            entries.append(row);
        }
        box.append(entries);
    }
    return box;
}

}  // namespace

InfoPanel::InfoPanel() : Gtk::Box(Gtk::Orientation::VERTICAL, kSectionSpacing)
{
    set_margin(kSectionSpacing + 2);
    name_.set_xalign(0);
    name_.set_ellipsize(Pango::EllipsizeMode::MIDDLE);
    name_.add_css_class("title-4");
    append(name_);
}

Gtk::Box& InfoPanel::Replace(const std::string& name)
{
    name_.set_text(name);
    if (content_)
        remove(*content_);
    content_ = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, kSectionSpacing);
    append(*content_);
    cells_.clear();
    return *content_;
}

Gtk::Expander& InfoPanel::AddExpander(Gtk::Box& content, const char* label, bool& expanded,
                                      Gtk::Widget& child)
{
    auto& expander = *Gtk::make_managed<Gtk::Expander>(label);
    expander.set_expanded(expanded);
    expander.property_expanded().signal_changed().connect(
        [&expander, &expanded] { expanded = expander.get_expanded(); });
    child.set_margin_top(kRowSpacing * 2);
    child.set_margin_start(kSectionSpacing);
    expander.set_child(child);
    content.append(expander);
    return expander;
}

void InfoPanel::ShowFile(const std::string& name, const qelinfo::FileInfo& info)
{
    Gtk::Box& content = Replace(name);
    std::set<UInt32> shown;
    if (info.cols == 0) {
        content.append(MakeLabel("The device that made this file is not known.", false));
    } else {
        Gtk::Grid& grid = MakeGrid();
        int row = 0;
        for (UInt32 col = 0; col < info.cols; ++col) {
            bool started = false;
            for (UInt32 r = 0; r < info.rows; ++r) {
                const qelinfo::GridCell& cell = info.grid[r][col];
                if (cell.id == 0 || !cell.line || cell.line->empty())
                    continue;
                if (!started && row > 0) {
                    auto& gap = *Gtk::make_managed<Gtk::Separator>();
                    gap.set_margin_top(kSectionSpacing / 2);
                    gap.set_margin_bottom(kSectionSpacing / 2);
                    grid.attach(gap, 0, row++, 2);
                    cells_.push_back({nullptr, nullptr});
                }
                started = true;
                shown.insert(cell.id);
                cells_.push_back(AttachCell(grid, row++, SplitLine(FindItem(info, cell.id), *cell.line)));
            }
        }
        content.append(grid);
    }

    Gtk::Grid& others = MakeGrid();
    int row = 0;
    for (const qelinfo::ItemText& item : info.items)
        if (!shown.count(item.id))
            AttachCell(others, row++, {item.title.value_or(""), item.value.value_or("")});
    if (row > 0)
        AddExpander(content, "Other items", othersExpanded_, others);
    AddExpander(content, "Value lists", listsExpanded_, ValueLists(info));
}

void InfoPanel::ShowError(const std::string& name, const std::string& reason)
{
    Gtk::Box& content = Replace(name);
    content.append(MakeLabel("This file cannot be read (" + reason + ").", false));
}

std::string InfoPanel::CellTexts() const
{
    std::string text;
    for (const auto& [title, value] : cells_) {
        if (title)
            text += title->get_text() + " ";
        if (value)
            text += value->get_text();
        text += '\n';
    }
    return text;
}

}  // namespace qelview
