// SPDX-License-Identifier: MIT
#include "ViewerWindow.h"

#include "OpenTagSource.h"

#include <unicode/uloc.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <filesystem>

namespace qelview {

namespace {

namespace fs = std::filesystem;

constexpr int kThumbnailSize = 112;
constexpr int kLargeSize = 1600;
// Room for the longest titles (Czech, German) beside their values.
constexpr int kPanelWidth = 480;

// The language's name in itself ("Deutsch", "日本語"), for the menu.
std::string Autonym(const std::string& language)
{
    UErrorCode status = U_ZERO_ERROR;
    UChar name[128];
    const int32_t length = uloc_getDisplayName(language.c_str(), language.c_str(), name, 128, &status);
    char utf8[512];
    int32_t written = 0;
    if (U_SUCCESS(status))
        u_strToUTF8(utf8, sizeof utf8, &written, name, length, &status);
    if (U_FAILURE(status) || written == 0)
        return language;
    const Glib::ustring autonym(std::string(utf8, static_cast<size_t>(written)));
    // Names start lower case in some languages ("čeština"); a menu entry does not.
    return autonym.substr(0, 1).uppercase() + autonym.substr(1);
}

bool Viewable(const fs::path& path)
{
    if (qel::IsTagFileName(path.string()))
        return true;
    bool uncertain = false;
    return Gio::content_type_guess(path.string(), nullptr, 0, uncertain).rfind("image/", 0) == 0;
}

std::vector<Glib::ustring> FilesIn(const fs::path& folder)
{
    std::vector<Glib::ustring> files;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (name[0] != '.' && entry.is_regular_file(error) && Viewable(entry.path()))
            files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Decoding happens here, on the image worker; textures are made on the main loop.
LoadedImage LoadImage(const ImageJob& job)
{
    // Never larger than the image itself: a small image is not blown up.
    int width = 0, height = 0;
    gdk_pixbuf_get_file_info(job.path.c_str(), &width, &height);
    const int box = std::max(width, height) > 0 ? std::min(job.size, std::max(width, height)) : job.size;
    GdkPixbuf* pixbuf = gdk_pixbuf_new_from_file_at_scale(job.path.c_str(), box, box, TRUE, nullptr);
    if (pixbuf) {
        GdkPixbuf* upright = gdk_pixbuf_apply_embedded_orientation(pixbuf);
        g_object_unref(pixbuf);
        pixbuf = upright;
    }
    return {job, std::shared_ptr<GdkPixbuf>(pixbuf, [](GdkPixbuf* p) { if (p) g_object_unref(p); })};
}

}  // namespace

ViewerWindow::ViewerWindow(const qelinfo::BundleLanguages& languages, const std::string& language)
    : languages_(languages.languages),
      language_(language),
      files_(Gtk::StringList::create({})),
      selection_(Gtk::SingleSelection::create(files_)),
      reader_([this](Reading reading) { OnReading(std::move(reading)); }),
      images_(LoadImage, [this](LoadedImage image) { OnImage(std::move(image)); })
{
    set_title("qelview");
    set_default_size(1180, 760);

    open_.set_icon_name("folder-open-symbolic");
    open_.set_tooltip_text("Open a folder");
    open_.signal_clicked().connect(sigc::mem_fun(*this, &ViewerWindow::ChooseFolder));
    header_.pack_start(open_);
    std::vector<Glib::ustring> names;
    for (const std::string& code : languages_)
        names.push_back(Autonym(code));
    languageMenu_.set_model(Gtk::StringList::create(names));
    SelectLanguage(language_);
    languageMenu_.property_selected().signal_changed().connect(sigc::mem_fun(*this, &ViewerWindow::OnLanguage));
    header_.pack_end(languageMenu_);
    set_titlebar(header_);

    picture_.set_content_fit(Gtk::ContentFit::SCALE_DOWN);
    placeholder_.set_pixel_size(128);
    placeholder_.add_css_class("dim-label");
    stage_.add(picture_, "picture");
    stage_.add(placeholder_, "placeholder");
    stage_.set_hexpand(true);
    stage_.set_margin(12);
    panelScroller_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    panelScroller_.set_child(panel_);
    panelScroller_.set_size_request(kPanelWidth, -1);
    paned_.set_start_child(stage_);
    paned_.set_end_child(panelScroller_);
    paned_.set_resize_end_child(false);
    paned_.set_shrink_end_child(false);
    paned_.set_vexpand(true);

    SetUpStrip();
    selection_->property_selected_item().signal_changed().connect(sigc::mem_fun(*this, &ViewerWindow::OnSelected));

    layout_.append(paned_);
    layout_.append(*Gtk::make_managed<Gtk::Separator>());
    layout_.append(stripScroller_);
    set_child(layout_);
}

// The thumbnail strip: only the items on screen have widgets, and only they
// ask for thumbnails; an item scrolled away withdraws its request.
void ViewerWindow::SetUpStrip()
{
    auto factory = Gtk::SignalListItemFactory::create();
    factory->signal_setup().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        auto& box = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 4);
        auto& image = *Gtk::make_managed<Gtk::Image>();
        image.set_pixel_size(kThumbnailSize);
        image.set_size_request(kThumbnailSize, kThumbnailSize * 3 / 4);
        auto& label = *Gtk::make_managed<Gtk::Label>();
        label.set_ellipsize(Pango::EllipsizeMode::MIDDLE);
        label.set_max_width_chars(18);
        label.set_width_chars(18);
        box.append(image);
        box.append(label);
        box.set_margin(4);
        item->set_child(box);
    });
    factory->signal_bind().connect([this](const Glib::RefPtr<Gtk::ListItem>& item) {
        const std::string path = std::dynamic_pointer_cast<Gtk::StringObject>(item->get_item())->get_string();
        auto* image = dynamic_cast<Gtk::Image*>(item->get_child()->get_first_child());
        dynamic_cast<Gtk::Label*>(image->get_next_sibling())->set_text(fs::path(path).filename().string());
        bound_.emplace(path, image);
        ShowThumbnail(*image, path);
    });
    factory->signal_unbind().connect([this](const Glib::RefPtr<Gtk::ListItem>& item) {
        const std::string path = std::dynamic_pointer_cast<Gtk::StringObject>(item->get_item())->get_string();
        auto* image = item->get_child()->get_first_child();
        auto [first, last] = bound_.equal_range(path);
        for (auto it = first; it != last; ++it)
            if (it->second == image) {
                bound_.erase(it);
                break;
            }
        if (!bound_.count(path))
            images_.Drop([&path](const ImageJob& job) { return job.path == path && job.size == kThumbnailSize; });
    });
    strip_.set_model(selection_);
    strip_.set_factory(factory);
    strip_.set_orientation(Gtk::Orientation::HORIZONTAL);
    stripScroller_.set_policy(Gtk::PolicyType::AUTOMATIC, Gtk::PolicyType::NEVER);
    stripScroller_.set_child(strip_);
}

void ViewerWindow::Open(const std::vector<std::string>& paths)
{
    std::vector<Glib::ustring> files;
    for (const std::string& path : paths) {
        std::error_code error;
        if (fs::is_directory(path, error)) {
            std::vector<Glib::ustring> inside = FilesIn(path);
            files.insert(files.end(), inside.begin(), inside.end());
        } else {
            files.push_back(path);
        }
    }
    files_->splice(0, files_->get_n_items(), files);
}

void ViewerWindow::ChooseFolder()
{
    chooser_ = Gtk::FileChooserNative::create("Open a folder", *this, Gtk::FileChooser::Action::SELECT_FOLDER);
    chooser_->signal_response().connect([this](int response) {
        if (response == Gtk::ResponseType::ACCEPT)
            Open({chooser_->get_file()->get_path()});
        chooser_.reset();
    });
    chooser_->show();
}

std::string ViewerWindow::SelectedPath() const
{
    auto item = std::dynamic_pointer_cast<Gtk::StringObject>(selection_->get_selected_item());
    return item ? std::string(item->get_string()) : std::string();
}

void ViewerWindow::OnSelected()
{
    const std::string path = SelectedPath();
    if (path.empty())
        return;
    reader_.Read({path, language_});
    if (qel::IsTagFileName(path)) {
        placeholder_.set_from_icon_name("text-x-generic");
        stage_.set_visible_child(placeholder_);
    } else {
        images_.Post({path, kLargeSize});
    }
}

void ViewerWindow::SelectLanguage(const std::string& language)
{
    auto found = std::find(languages_.begin(), languages_.end(), language);
    if (found != languages_.end())
        languageMenu_.set_selected(static_cast<guint>(found - languages_.begin()));
}

void ViewerWindow::OnLanguage()
{
    const guint index = languageMenu_.get_selected();
    if (index >= languages_.size())
        return;
    language_ = languages_[index];
    const std::string path = SelectedPath();
    if (!path.empty())
        reader_.Read({path, language_});
}

void ViewerWindow::OnReading(Reading reading)
{
    // A file or language chosen since then supersedes it.
    if (reading.job.path != SelectedPath() || reading.job.language != language_)
        return;
    const std::string name = fs::path(reading.job.path).filename().string();
    if (reading.info)
        panel_.ShowFile(name, *reading.info);
    else
        panel_.ShowError(name, reading.error);
    shownPath_ = reading.job.path;
    shownLanguage_ = reading.job.language;
}

void ViewerWindow::OnImage(LoadedImage image)
{
    Glib::RefPtr<Gdk::Texture> texture;
    if (image.pixbuf)
        texture = Glib::wrap(gdk_texture_new_for_pixbuf(image.pixbuf.get()));
    if (image.job.size == kThumbnailSize) {
        thumbnails_[image.job.path] = texture;
        auto [first, last] = bound_.equal_range(image.job.path);
        for (auto it = first; it != last; ++it)
            ShowThumbnail(*it->second, image.job.path);
    } else if (image.job.path == SelectedPath()) {
        if (texture) {
            picture_.set_paintable(texture);
            stage_.set_visible_child(picture_);
        } else {
            placeholder_.set_from_icon_name("image-missing");
            stage_.set_visible_child(placeholder_);
        }
    }
}

void ViewerWindow::ShowThumbnail(Gtk::Image& image, const std::string& path)
{
    if (qel::IsTagFileName(path)) {
        image.set_from_icon_name("text-x-generic");
        return;
    }
    auto cached = thumbnails_.find(path);
    if (cached == thumbnails_.end()) {
        image.set_from_icon_name("image-x-generic");
        images_.Post({path, kThumbnailSize});
    } else if (cached->second) {
        image.set(cached->second);
    } else {
        image.set_from_icon_name("image-missing");
    }
}

bool ViewerWindow::Settled()
{
    return shownPath_ == SelectedPath() && shownLanguage_ == language_ && reader_.Idle() && images_.Idle();
}

}  // namespace qelview
