// The self-test: selects each file in turn and, once everything it asked
// for is shown, writes the panel's cell texts and a PNG snapshot of the
// window into a folder, for a test to compare with qelinfo.
#ifndef QELVIEW_SELF_TEST_H
#define QELVIEW_SELF_TEST_H

#include "ViewerWindow.h"

#include <string>

namespace qelview {

class SelfTest {
public:
    SelfTest(ViewerWindow& window, std::string folder) : window_(window), folder_(std::move(folder)) {}

    // Runs on the main loop; `finished` gets the exit status.
    void Start(std::function<void(int)> finished);

private:
    bool Tick();
    bool Capture();

    ViewerWindow& window_;
    std::string folder_;
    std::function<void(int)> finished_;
    guint index_ = 0;
    int waited_ = 0;
    int settledTicks_ = 0;
    int status_ = 0;
};

// The widget as its window's renderer draws it, saved as PNG; answers the
// number of distinct colours in the file written (0 when it failed).
size_t SaveSnapshot(Gtk::Widget& widget, const std::string& png);

}  // namespace qelview

#endif
