// SPDX-License-Identifier: MIT
// The viewer's window: a strip of thumbnails, the selected image large and
// the information panel beside it, a folder button and a language menu.
#ifndef QELVIEW_VIEWER_WINDOW_H
#define QELVIEW_VIEWER_WINDOW_H

#include "InfoPanel.h"
#include "InfoReader.h"
#include "Languages.h"
#include "Worker.h"

#include <gtkmm.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace qelview {

struct ImageJob {
    std::string path;
    int size = 0;  // longest side wanted, in pixels
};

struct LoadedImage {
    ImageJob job;
    std::shared_ptr<GdkPixbuf> pixbuf;  // null: not an image gdk-pixbuf reads
};

class ViewerWindow : public Gtk::ApplicationWindow {
public:
    ViewerWindow(const qelinfo::BundleLanguages& languages, const std::string& language);

    // Folders stand for the images and tag files in them.
    void Open(const std::vector<std::string>& paths);

    // For the self-test: choose a file and tell when all it asked for is shown.
    guint FileCount() const { return files_->get_n_items(); }
    void Select(guint index) { selection_->set_selected(index); }
    void SelectLanguage(const std::string& language);
    bool Settled();
    std::string SelectedPath() const;
    const InfoPanel& Panel() const { return panel_; }

private:
    void SetUpStrip();
    void ChooseFolder();
    void OnSelected();
    void OnLanguage();
    void OnReading(Reading reading);
    void OnImage(LoadedImage image);
    void ShowThumbnail(Gtk::Image& image, const std::string& path);

    std::vector<std::string> languages_;
    std::string language_;
    std::string shownPath_, shownLanguage_;

    Glib::RefPtr<Gtk::StringList> files_;
    Glib::RefPtr<Gtk::SingleSelection> selection_;
    Gtk::HeaderBar header_;
    Gtk::Button open_;
    Gtk::DropDown languageMenu_;
    Gtk::Box layout_{Gtk::Orientation::VERTICAL};
    Gtk::Paned paned_{Gtk::Orientation::HORIZONTAL};
    Gtk::Stack stage_;
    Gtk::Picture picture_;
    Gtk::Image placeholder_;
    Gtk::ScrolledWindow panelScroller_;
    InfoPanel panel_;
    Gtk::ScrolledWindow stripScroller_;
    Gtk::ListView strip_;
    Glib::RefPtr<Gtk::FileChooserNative> chooser_;

    // Thumbnails by path, and the strip's images now showing each path.
    std::unordered_map<std::string, Glib::RefPtr<Gdk::Texture>> thumbnails_;
    std::unordered_multimap<std::string, Gtk::Image*> bound_;

    InfoReader reader_;
    Worker<ImageJob, LoadedImage> images_;
};

}  // namespace qelview

#endif
