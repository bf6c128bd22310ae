// SPDX-License-Identifier: MIT
// qelinfo: the command-line host of QelImgInfo. For each file it makes a tag
// source, reads it with one image-information object (as a photo manager
// browsing a folder does, so value-list positions carry over from file to
// file) and shows what the library makes of it.
#include "FileInfo.h"
#include "JsonRender.h"
#include "Options.h"
#include "TextRender.h"

#include "IQelImgInfo.h"
#include "OpenTagSource.h"
#include "TagSourceError.h"

#include <cstdlib>
#include <iostream>
#include <memory>

#ifndef QELINFO_VERSION
#define QELINFO_VERSION "unknown"
#endif

namespace {

constexpr int kExitOK = 0;
constexpr int kExitFileFailed = 1;
constexpr int kExitUsage = 2;

struct ImgInfoDestroyer {
    void operator()(IQelImgInfo* info) const { info->Destroy(); }
};

void ReportFailure(const qelinfo::Options& options, const std::string& file,
                   const std::string& reason)
{
    // A name with a line break or undecodable bytes must not break the
    // one line per failed file.
    std::cerr << "qelinfo: " << qel::PrintableText(file) << ": " << reason << std::endl;
    if (options.format == qelinfo::OutputFormat::kJson)
        std::cout << qelinfo::JsonErrorLine(file, reason) << std::endl;
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> arguments(argv + 1, argv + argc);
    qelinfo::ParsedOptions parsed = qelinfo::ParseOptions(arguments);
    if (!parsed.usageError.empty()) {
        std::cerr << "qelinfo: " << parsed.usageError << "\nTry 'qelinfo --help'." << std::endl;
        return kExitUsage;
    }
    const qelinfo::Options& options = parsed.options;
    if (options.showHelp) {
        std::cout << qelinfo::UsageText();
        return kExitOK;
    }
    if (options.showVersion) {
        std::cout << "qelinfo " << QELINFO_VERSION << '\n';
        return kExitOK;
    }
    // The library resolves its language at its first lookup, which comes
    // after this; LANGUAGE is the first thing it consults.
    if (options.language)
        setenv("LANGUAGE", options.language->c_str(), 1);

    std::unique_ptr<IQelImgInfo, ImgInfoDestroyer> info(IQelImgInfo::CreateImageInfo());
    if (!info) {
        std::cerr << "qelinfo: the image-information library could not be started" << std::endl;
        return kExitFileFailed;
    }

    int status = kExitOK;
    bool firstBlock = true;
    for (const std::string& file : options.files) {
        qelinfo::FileInfo fileInfo;
        try {
            std::unique_ptr<IVandelTagControl> tags = qel::OpenTagSource(file);
            fileInfo = qelinfo::ReadFileInfo(*info, *tags);
        } catch (const qel::TagSourceError& error) {
            ReportFailure(options, file, error.what());
            status = kExitFileFailed;
            continue;
        }
        if (options.format == qelinfo::OutputFormat::kJson) {
            std::cout << qelinfo::JsonLine(file, fileInfo) << std::endl;
        } else {
            if (!firstBlock)
                std::cout << '\n';
            qelinfo::WriteText(std::cout, file, fileInfo, options.allItems);
            std::cout.flush();
        }
        firstBlock = false;
    }
    return status;
}
