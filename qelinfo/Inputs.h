// SPDX-License-Identifier: MIT
// What a FILE argument stands for beyond one named file: standard input
// ("-") and, with --recursive, the images and tag files under a folder.
#ifndef QELINFO_INPUTS_H
#define QELINFO_INPUTS_H

#include <string>
#include <vector>

namespace qelinfo {

constexpr const char* kStandardInput = "-";

bool IsDirectory(const std::string& path);

// Every file under `directory` whose name ends in an image extension or
// ".json" (any case), sorted by path so that a run repeats in the same
// order. Throws qel::TagSourceError when the folder cannot be read.
std::vector<std::string> FilesUnder(const std::string& directory);

// All of standard input; throws qel::TagSourceError on a read error.
std::string ReadStandardInput();

}  // namespace qelinfo

#endif
