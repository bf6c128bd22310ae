// SPDX-License-Identifier: MIT
#include "Options.h"

namespace qelinfo {

namespace {

// "--name value" or "--name=value"; false when `argument` is another option.
bool TakeValue(const std::string& name, const std::vector<std::string>& arguments, size_t& i,
               std::optional<std::string>& value)
{
    const std::string& argument = arguments[i];
    if (argument == name) {
        // A missing value reads as empty, which no option accepts.
        value = i + 1 < arguments.size() ? arguments[++i] : std::string();
        return true;
    }
    if (argument.compare(0, name.size() + 1, name + "=") == 0) {
        value = argument.substr(name.size() + 1);
        return true;
    }
    return false;
}

}  // namespace

ParsedOptions ParseOptions(std::vector<std::string> arguments)
{
    ParsedOptions parsed;
    Options& options = parsed.options;
    // A folder's worth of names is held once, not once more per copy.
    options.files.reserve(arguments.size());
    bool onlyFiles = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        std::string& argument = arguments[i];
        std::optional<std::string> value;
        if (onlyFiles || argument.empty() || argument[0] != '-' || argument == "-") {
            options.files.push_back(std::move(argument));
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--help" || argument == "-h") {
            options.showHelp = true;
        } else if (argument == "--version" || argument == "-V") {
            options.showVersion = true;
        } else if (argument == "--all" || argument == "-a") {
            options.allItems = true;
        } else if (argument == "--recursive" || argument == "-r") {
            options.recursive = true;
        } else if (argument == "--each-file-fresh") {
            options.eachFileFresh = true;
        } else if (argument == "--list-languages") {
            options.listLanguages = true;
        } else if (TakeValue("--lang", arguments, i, value)) {
            if (value->empty()) {
                parsed.usageError = "--lang needs a language, e.g. --lang en";
                return parsed;
            }
            options.language = *value;
        } else if (TakeValue("--format", arguments, i, value)) {
            if (*value == "text") {
                options.format = OutputFormat::kText;
            } else if (*value == "json") {
                options.format = OutputFormat::kJson;
            } else {
                parsed.usageError = "--format takes text or json, not '" + *value + "'";
                return parsed;
            }
        } else {
            parsed.usageError = "unknown option '" + argument + "'";
            return parsed;
        }
    }
    if (options.files.empty() && !options.showHelp && !options.showVersion && !options.listLanguages)
        parsed.usageError = "no file given";
    return parsed;
}

std::string UsageText()
{
    return "Usage: qelinfo [OPTIONS] FILE...\n"
           "Shows the shooting information of images and tag files as a photo manager\n"
           "shows it: the display grid of the device that made the file, localized.\n"
           "\n"
           "A FILE ending in .json is a tag file; any other FILE is read as an image\n"
           "(JPEG, TIFF, RAW, PNG, WebP, HEIF) through its Exif, TIFF and GPS tags.\n"
           "A FILE of - reads one image or tag file from standard input.\n"
           "\n"
           "Options:\n"
           "  -a, --all            also list every item that has a title or a value,\n"
           "                       and the value lists\n"
           "  -r, --recursive      read the images and tag files in folders and their\n"
           "                       subfolders, in name order; other files are skipped\n"
           "      --each-file-fresh  read each file with a new library object, so no\n"
           "                       value-list position carries over from the file before\n"
           "      --lang LANG      show texts in LANG (e.g. en, de, ja); by default the\n"
           "                       environment decides (LANGUAGE, LC_ALL, LC_MESSAGES, LANG)\n"
           "      --list-languages list the languages the library has texts in\n"
           "      --format FORMAT  text (default) or json: one JSON object per file and line\n"
           "  -h, --help           show this help\n"
           "  -V, --version        show the version\n"
           "\n"
           "Exit status: 0 when every file was read, 1 when a file could not be read\n"
           "or the output could not be written, 2 for a usage error.\n";
}

}  // namespace qelinfo
