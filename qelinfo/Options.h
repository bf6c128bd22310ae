// SPDX-License-Identifier: MIT
// The command line of qelinfo.
#ifndef QELINFO_OPTIONS_H
#define QELINFO_OPTIONS_H

#include <optional>
#include <string>
#include <vector>

namespace qelinfo {

enum class OutputFormat { kText, kJson };

struct Options {
    bool showHelp = false;
    bool showVersion = false;
    bool allItems = false;                 // --all
    bool recursive = false;                // --recursive: folders too
    bool eachFileFresh = false;            // --each-file-fresh: one library object per file
    bool listLanguages = false;            // --list-languages
    OutputFormat format = OutputFormat::kText;
    std::optional<std::string> language;   // --lang
    std::vector<std::string> files;
};

struct ParsedOptions {
    Options options;
    std::string usageError;  // empty when the command line was understood
};

ParsedOptions ParseOptions(std::vector<std::string> arguments);

// The --help text.
std::string UsageText();

}  // namespace qelinfo

#endif
