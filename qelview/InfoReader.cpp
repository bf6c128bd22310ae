// SPDX-License-Identifier: MIT
#include "InfoReader.h"

#include "IQelImgInfo.h"
#include "OpenTagSource.h"
#include "TagSourceError.h"

#include <cstdlib>
#include <memory>

namespace qelview {

namespace {

struct ImgInfoDestroyer {
    void operator()(IQelImgInfo* info) const { info->Destroy(); }
};

// What the worker thread keeps between files: its library object, made on
// first use, and the language the library last looked up texts in.
struct ReaderState {
    std::unique_ptr<IQelImgInfo, ImgInfoDestroyer> info;
    std::string language;

    Reading Read(const InfoJob& job)
    {
        Reading reading{job, std::nullopt, {}};
        // The library picks its language from LANGUAGE at each lookup; only
        // this thread calls it, so the switch lands between two files.
        if (job.language != language) {
            setenv("LANGUAGE", job.language.c_str(), 1);
            language = job.language;
        }
        if (!info)
            info.reset(IQelImgInfo::CreateImageInfo());
        if (!info) {
            reading.error = "the image-information library could not be started";
            return reading;
        }
        try {
            std::unique_ptr<IVandelTagControl> tags = qel::OpenTagSource(job.path);
            reading.info = qelinfo::ReadFileInfo(*info, *tags);
        } catch (const qel::TagSourceError& error) {
            reading.error = error.what();
        } catch (const std::exception& error) {
            // Whatever else a damaged file provokes must not end the viewer.
            reading.error = qel::PrintableText(error.what());
        }
        return reading;
    }
};

}  // namespace

InfoReader::InfoReader(std::function<void(Reading)> done)
    : worker_([state = std::make_shared<ReaderState>()](const InfoJob& job) { return state->Read(job); },
              std::move(done))
{
}

void InfoReader::Read(InfoJob job)
{
    worker_.Drop([](const InfoJob&) { return true; });
    worker_.Post(std::move(job));
}

}  // namespace qelview
