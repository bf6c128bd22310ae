// SPDX-License-Identifier: MIT
#include "SelfTest.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <unordered_set>

namespace qelview {

namespace {

constexpr unsigned kTickMilliseconds = 50;
constexpr int kMaxTicksPerFile = 20 * 60;  // a minute
// Layout and drawing follow a shown result by a frame or two.
constexpr int kSettledTicks = 4;

size_t DistinctColours(const std::string& png)
{
    GdkTexture* texture = gdk_texture_new_from_filename(png.c_str(), nullptr);
    if (!texture)
        return 0;
    const int width = gdk_texture_get_width(texture);
    const int height = gdk_texture_get_height(texture);
    std::vector<guint32> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
    gdk_texture_download(texture, reinterpret_cast<guchar*>(pixels.data()),
                         static_cast<gsize>(width) * sizeof(guint32));
    g_object_unref(texture);
    return std::unordered_set<guint32>(pixels.begin(), pixels.end()).size();
}

}  // namespace

size_t SaveSnapshot(Gtk::Widget& widget, const std::string& png)
{
    auto paintable = Gtk::WidgetPaintable::create(widget);
    auto snapshot = Gtk::Snapshot::create();
    paintable->snapshot(snapshot, widget.get_width(), widget.get_height());
    GskRenderNode* node = gtk_snapshot_to_node(snapshot->gobj());
    GskRenderer* renderer = gtk_native_get_renderer(widget.get_native()->gobj());
    if (!node || !renderer)
        return 0;
    GdkTexture* texture = gsk_renderer_render_texture(renderer, node, nullptr);
    gsk_render_node_unref(node);
    const bool saved = gdk_texture_save_to_png(texture, png.c_str());
    g_object_unref(texture);
    return saved ? DistinctColours(png) : 0;
}

void SelfTest::Start(std::function<void(int)> finished)
{
    finished_ = std::move(finished);
    window_.SelectLanguage(languages_.at(0));
    Glib::signal_timeout().connect(sigc::mem_fun(*this, &SelfTest::Tick), kTickMilliseconds);
}

bool SelfTest::Tick()
{
    // How long the main loop kept the timer waiting: the window's worst stall.
    const gint64 now = g_get_monotonic_time();
    if (lastTick_ != 0)
        longestStall_ = std::max(longestStall_, now - lastTick_ - gint64{kTickMilliseconds} * 1000);
    lastTick_ = now;
    if (++waited_ > kMaxTicksPerFile) {
        std::cerr << "qelview: " << window_.SelectedPath() << " was never shown\n";
        finished_(1);
        return false;
    }
    settledTicks_ = window_.Settled() ? settledTicks_ + 1 : 0;
    if (settledTicks_ < kSettledTicks)
        return true;
    if (!Capture())
        status_ = 1;
    lastTick_ = g_get_monotonic_time();  // the capture's own time is no stall
    if (++index_ >= window_.FileCount()) {
        index_ = 0;
        if (++language_ >= languages_.size()) {
            finished_(status_);
            return false;
        }
        window_.SelectLanguage(languages_[language_]);
    }
    window_.Select(index_);
    waited_ = settledTicks_ = 0;
    return true;
}

bool SelfTest::Capture()
{
    const std::string folder = folder_ + "/" + languages_[language_];
    std::filesystem::create_directories(folder);
    const std::string base = folder + "/" + std::filesystem::path(window_.SelectedPath()).filename().string();
    std::ofstream(base + ".txt") << window_.Panel().CellTexts();
    const size_t colours = SaveSnapshot(window_, base + ".png");
    std::cout << base << ".png: " << colours << " colours; main loop stalled at most "
              << longestStall_ / 1000 << " ms so far" << std::endl;
    return colours > 0;
}

}  // namespace qelview
