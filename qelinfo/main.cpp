// SPDX-License-Identifier: MIT
// qelinfo: the command-line host of QelImgInfo. For each file it makes a tag
// source, reads it with one image-information object (as a photo manager
// browsing a folder does, so value-list positions carry over from file to
// file) and shows what the library makes of it.
#include "FileInfo.h"
#include "Inputs.h"
#include "JsonRender.h"
#include "Languages.h"
#include "Options.h"
#include "TextRender.h"

#include "IQelImgInfo.h"
#include "OpenTagSource.h"
#include "TagSourceError.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
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
using ImgInfo = std::unique_ptr<IQelImgInfo, ImgInfoDestroyer>;

// kExitOK once everything written so far has reached stdout; a full disk or
// a closed pipe is said on stderr.
int Flushed()
{
    errno = 0;
    if (std::cout.flush())
        return kExitOK;
    const int reason = errno;
    std::cerr << "qelinfo: cannot write the output"
              << (reason ? std::string(": ") + std::strerror(reason) : std::string()) << std::endl;
    return kExitFileFailed;
}

// Reads the files one by one and shows each as it is read.
class Host {
public:
    explicit Host(const qelinfo::Options& options) : m_options(options) {}

    bool Start()
    {
        m_info.reset(IQelImgInfo::CreateImageInfo());
        if (!m_info)
            std::cerr << "qelinfo: the image-information library could not be started" << std::endl;
        return m_info != nullptr;
    }

    // A FILE argument: a file, "-", or with --recursive a folder.
    void Argument(const std::string& argument)
    {
        if (!m_options.recursive || argument == qelinfo::kStandardInput || !qelinfo::IsDirectory(argument)) {
            Show(argument);
            return;
        }
        std::vector<std::string> files;
        try {
            files = qelinfo::FilesUnder(argument);
        } catch (const qel::TagSourceError& error) {
            Fail(argument, error.what());
            return;
        }
        for (const std::string& file : files)
            if (!WriteFailed())
                Show(file);
    }

    bool WriteFailed() const { return m_writeFailed; }

    int Finish()
    {
        if (!m_writeFailed)
            CheckOutput();
        return m_writeFailed ? kExitFileFailed : m_status;
    }

private:
    void Show(const std::string& file)
    {
        const bool json = m_options.format == qelinfo::OutputFormat::kJson;
        const qelinfo::FileInfo* fileInfo = nullptr;
        try {
            std::unique_ptr<IVandelTagControl> tags =
                file == qelinfo::kStandardInput ? qel::OpenTagSourceFromContent(qelinfo::ReadStandardInput())
                                                : qel::OpenTagSource(file);
            if (m_options.eachFileFresh && !m_firstFile && !Start())
                throw qel::TagSourceError("no image-information object");
            fileInfo = &m_reader.Read(*m_info, *tags, !json);
        } catch (const qel::TagSourceError& error) {
            Fail(file, error.what());
            return;
        }
        m_firstFile = false;
        if (json) {
            // One buffer for every line, so a folder costs no allocation per file.
            m_line.clear();
            m_json.Append(m_line, file, *fileInfo);
            m_line += '\n';
            std::cout.write(m_line.data(), static_cast<std::streamsize>(m_line.size()));
        } else {
            if (!m_firstBlock)
                std::cout << '\n';
            qelinfo::WriteText(std::cout, file, *fileInfo, m_options.allItems);
        }
        m_firstBlock = false;
        CheckOutput();
    }

    void Fail(const std::string& file, const std::string& reason)
    {
        // A name with a line break or undecodable bytes must not break the
        // one line per failed file.
        std::cerr << "qelinfo: " << qel::PrintableText(file) << ": " << reason << std::endl;
        if (m_options.format == qelinfo::OutputFormat::kJson) {
            std::cout << qelinfo::JsonErrorLine(file, reason) << '\n';
            CheckOutput();
        }
        m_status = kExitFileFailed;
    }

    // Each file's output reaches the reader before the next file is read;
    // a full disk or a closed pipe ends the run.
    void CheckOutput() { m_writeFailed = Flushed() != kExitOK; }

    const qelinfo::Options& m_options;
    ImgInfo m_info;
    qelinfo::FileReader m_reader;
    qelinfo::JsonWriter m_json;
    std::string m_line;
    int m_status = kExitOK;
    bool m_firstBlock = true;
    bool m_firstFile = true;
    bool m_writeFailed = false;
};

// --lang for a language the library has no texts in: the library quietly
// shows another, so say which.
void WarnIfLanguageMissing(const std::string& language)
{
    const auto bundle = qelinfo::FindBundleLanguages();
    if (!bundle || qelinfo::ServingLanguage(*bundle, language))
        return;
    std::cerr << "qelinfo: warning: no texts in '" << qel::PrintableText(language) << "'; showing '"
              << qelinfo::FallbackLanguage(*bundle) << "'" << std::endl;
}

int ListLanguages()
{
    const auto bundle = qelinfo::FindBundleLanguages();
    if (!bundle) {
        std::cerr << "qelinfo: the library's texts were not found" << std::endl;
        return kExitFileFailed;
    }
    for (const std::string& language : bundle->languages)
        std::cout << language << '\n';
    return Flushed();
}

}  // namespace

int main(int argc, char** argv)
{
    qelinfo::ParsedOptions parsed = qelinfo::ParseOptions({argv + 1, argv + argc});
    if (!parsed.usageError.empty()) {
        std::cerr << "qelinfo: " << parsed.usageError << "\nTry 'qelinfo --help'." << std::endl;
        return kExitUsage;
    }
    const qelinfo::Options& options = parsed.options;
    if (options.showHelp) {
        std::cout << qelinfo::UsageText();
        return Flushed();
    }
    if (options.showVersion) {
        std::cout << "qelinfo " << QELINFO_VERSION << '\n';
        return Flushed();
    }
    if (options.listLanguages)
        return ListLanguages();
    // The library resolves its language at its first lookup, which comes
    // after this; LANGUAGE is the first thing it consults.
    if (options.language) {
        setenv("LANGUAGE", options.language->c_str(), 1);
        WarnIfLanguageMissing(*options.language);
    }

    Host host(options);
    if (!host.Start())
        return kExitFileFailed;
    for (const std::string& file : options.files)
        if (!host.WriteFailed())
            host.Argument(file);
    return host.Finish();
}
