// SPDX-License-Identifier: MIT
// The information panel: the cells of the device's display grid (title and
// value, column after column, empty cells skipped), then every other item
// and the six value lists, each behind an expander.
#ifndef QELVIEW_INFO_PANEL_H
#define QELVIEW_INFO_PANEL_H

#include "FileInfo.h"

#include <gtkmm.h>

#include <string>
#include <vector>

namespace qelview {

class InfoPanel : public Gtk::Box {
public:
    InfoPanel();

    void ShowFile(const std::string& name, const qelinfo::FileInfo& info);
    void ShowError(const std::string& name, const std::string& reason);

    // The grid cells as shown, one "title value" line each, a blank line
    // between grid columns.
    std::string CellTexts() const;

private:
    Gtk::Box& Replace(const std::string& name);
    Gtk::Expander& AddExpander(Gtk::Box& content, const char* label, bool& expanded,
                               Gtk::Widget& child);

    Gtk::Label name_;
    Gtk::Box* content_ = nullptr;
    // Title and value labels of each shown cell; a null pair between columns.
    std::vector<std::pair<Gtk::Label*, Gtk::Label*>> cells_;
    // Kept across files and languages so re-rendering does not fold them.
    bool othersExpanded_ = false;
    bool listsExpanded_ = false;
};

}  // namespace qelview

#endif
