// SPDX-License-Identifier: MIT
// qelview: a small photo viewer whose information panel is filled by
// QelImgInfo, read through the same tag sources as qelinfo.
//
//   qelview [--lang LANGUAGE] [FOLDER | FILE]...
//   qelview --self-test OUTDIR [--lang LANGUAGE[,LANGUAGE]...] [FOLDER | FILE]...
#include "Languages.h"
#include "SelfTest.h"
#include "ViewerWindow.h"

#include <cstdlib>
#include <iostream>
#include <optional>

namespace {

constexpr int kExitUsage = 2;

struct Options {
    std::vector<std::string> languages;
    std::optional<std::string> selfTestFolder;
    std::vector<std::string> paths;
};

std::vector<std::string> Split(const std::string& list, char separator)
{
    std::vector<std::string> parts;
    for (size_t start = 0; start <= list.size();) {
        const size_t end = std::min(list.find(separator, start), list.size());
        parts.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

std::optional<Options> ParseOptions(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--lang" && i + 1 < argc)
            options.languages = Split(argv[++i], ',');
        else if (argument == "--self-test" && i + 1 < argc)
            options.selfTestFolder = argv[++i];
        else if (argument.rfind("--", 0) == 0)
            return std::nullopt;
        else
            options.paths.push_back(argument);
    }
    return options;
}

// The first requested language the library has, else the first of
// LANGUAGE's list it has, else what the library falls back to.
std::string StartLanguage(const qelinfo::BundleLanguages& bundle, std::vector<std::string> wanted)
{
    if (wanted.empty() && std::getenv("LANGUAGE"))
        wanted = Split(std::getenv("LANGUAGE"), ':');
    for (const std::string& language : wanted)
        if (auto served = qelinfo::ServingLanguage(bundle, language))
            return *served;
    return qelinfo::FallbackLanguage(bundle);
}

}  // namespace

int main(int argc, char** argv)
{
    const std::optional<Options> options = ParseOptions(argc, argv);
    if (!options) {
        std::cerr << "usage: qelview [--lang LANGUAGE[,LANGUAGE]...] [--self-test OUTDIR] [FOLDER | FILE]...\n";
        return kExitUsage;
    }
    const qelinfo::BundleLanguages bundle = qelinfo::FindBundleLanguages().value_or(qelinfo::BundleLanguages{{"en"}, "en"});
    const std::string language = StartLanguage(bundle, options->languages);
    // Set before any thread starts: later switches then replace this entry
    // of the environment in place.
    setenv("LANGUAGE", language.c_str(), 1);

    auto app = Gtk::Application::create("org.qelimginfo.qelview", Gio::Application::Flags::NON_UNIQUE);
    std::unique_ptr<qelview::ViewerWindow> window;
    std::unique_ptr<qelview::SelfTest> selfTest;
    int status = 0;
    app->signal_activate().connect([&] {
        window = std::make_unique<qelview::ViewerWindow>(bundle, language);
        app->add_window(*window);
        window->Open(options->paths);
        window->present();
        if (options->selfTestFolder) {
            std::vector<std::string> languages = options->languages;
            if (languages.empty())
                languages.push_back(language);
            selfTest = std::make_unique<qelview::SelfTest>(*window, *options->selfTestFolder, languages);
            selfTest->Start([&](int result) {
                status = result;
                app->quit();
            });
        }
    });
    // The options above are the viewer's own, not GApplication's.
    char* programOnly[] = {argv[0], nullptr};
    const int appStatus = app->run(1, programOnly);
    return status != 0 ? status : appStatus;
}
