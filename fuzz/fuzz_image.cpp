// SPDX-License-Identifier: MIT
// Fuzz target: qelinfo's image path. The input is written to an in-memory
// file that the image tag source opens by name, as qelinfo opens a file a
// user names; whatever it accepts is read by the library. A refused file
// must say why on one line.
#include "FileReads.h"

#include "ExivTagSource.h"
#include "TagSourceError.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// One in-memory file for the whole run, rewritten for every input.
int ImageFile()
{
    static const int fd = [] {
        int made = memfd_create("fuzz-image", 0);
        if (made < 0) {
            std::perror("memfd_create");
            std::abort();
        }
        return made;
    }();
    return fd;
}

void Rewrite(int fd, const uint8_t* data, size_t size)
{
    if (ftruncate(fd, 0) != 0)
        std::abort();
    for (size_t written = 0; written < size;) {
        ssize_t n = pwrite(fd, data + written, size - written, static_cast<off_t>(written));
        if (n <= 0)
            std::abort();
        written += static_cast<size_t>(n);
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("LANGUAGE", "en", 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const int fd = ImageFile();
    Rewrite(fd, data, size);
    std::unique_ptr<qel::ExivTagSource> tags;
    try {
        tags = qel::ExivTagSource::FromFile("/proc/self/fd/" + std::to_string(fd));
    } catch (const qel::TagSourceError& refused) {
        qel_fuzz::RequireOneLineReason(refused.what());
        return 0;
    }
    qel_fuzz::ReadTwiceAndExercise(*tags, data, size);
    return 0;
}
