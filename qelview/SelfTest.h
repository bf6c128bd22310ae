// SPDX-License-Identifier: MIT
// The self-test: in each language in turn, chosen from the language menu,
// selects each file and, once everything it asked for is shown, writes the
// panel's cell texts and a PNG snapshot of the window into
// <folder>/<language>/, for a test to compare with qelinfo.
#ifndef QELVIEW_SELF_TEST_H
#define QELVIEW_SELF_TEST_H

#include "ViewerWindow.h"

#include <string>
#include <vector>

namespace qelview {

class SelfTest {
public:
    SelfTest(ViewerWindow& window, std::string folder, std::vector<std::string> languages)
        : window_(window), folder_(std::move(folder)), languages_(std::move(languages))
    {
    }

    // Runs on the main loop; `finished` gets the exit status.
    void Start(std::function<void(int)> finished);

private:
    bool Tick();
    bool Capture();

    ViewerWindow& window_;
    std::string folder_;
    std::vector<std::string> languages_;
    size_t language_ = 0;
    std::function<void(int)> finished_;
    guint index_ = 0;
    int waited_ = 0;
    int settledTicks_ = 0;
    int status_ = 0;
    gint64 lastTick_ = 0;
    gint64 longestStall_ = 0;  // microseconds
};

// The widget as its window's renderer draws it, saved as PNG; answers the
// number of distinct colours in the file written (0 when it failed).
size_t SaveSnapshot(Gtk::Widget& widget, const std::string& png);

}  // namespace qelview

#endif
