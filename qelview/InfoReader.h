// SPDX-License-Identifier: MIT
// Reads files through the library on a worker thread that owns its own
// image-information object, as a photo manager's browser does: the library
// object is never shared between threads.
#ifndef QELVIEW_INFO_READER_H
#define QELVIEW_INFO_READER_H

#include "FileInfo.h"
#include "Worker.h"

#include <optional>
#include <string>

namespace qelview {

struct InfoJob {
    std::string path;
    std::string language;  // a .lproj folder name
};

struct Reading {
    InfoJob job;
    std::optional<qelinfo::FileInfo> info;  // nullopt: `error` says why
    std::string error;
};

class InfoReader {
public:
    explicit InfoReader(std::function<void(Reading)> done);

    // Only the newest request is worth reading: older ones are dropped.
    void Read(InfoJob job);
    bool Idle() { return worker_.Idle(); }

private:
    Worker<InfoJob, Reading> worker_;
};

}  // namespace qelview

#endif
