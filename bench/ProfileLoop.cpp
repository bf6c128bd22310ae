// SPDX-License-Identifier: MIT
// A fixed number of reads and grid exports of one device's file, for
// profilers that count instructions (callgrind) rather than time:
//
//   qel_profile_loop <reads> [slr|compact|scanner|other]
//
// Run it with two read counts; the difference divided by the difference of
// the counts is the cost of one read and export, without the set-up.
#include "BenchSources.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv)
{
    const int reads = argc > 1 ? std::atoi(argv[1]) : 100;
    const char* name = argc > 2 ? argv[2] : "slr";
    struct Named {
        const char* name;
        qelbench::Device device;
    };
    const Named devices[] = {{"slr", qelbench::Device::kSLR},
                             {"compact", qelbench::Device::kCompact},
                             {"scanner", qelbench::Device::kScanner},
                             {"other", qelbench::Device::kOtherMaker}};
    const Named* chosen = nullptr;
    for (const Named& device : devices)
        if (std::strcmp(device.name, name) == 0)
            chosen = &device;
    if (!chosen || reads < 0) {
        std::fprintf(stderr, "usage: qel_profile_loop <reads> [slr|compact|scanner|other]\n");
        return 2;
    }
    auto tags = qelbench::OpenDeviceFile(chosen->device);
    auto info = qelbench::NewInfo();
    char buffer[1024];
    unsigned long bytes = 0;
    for (int read = 0; read < reads; ++read) {
        info->ReadFileTags(tags.get());
        for (UInt32 column = 0; column < info->GetLayoutCols(); ++column)
            for (UInt32 row = 0; row < info->GetLayoutRows(); ++row) {
                bytes += info->GetLayoutString(row, column, buffer, sizeof buffer, kCFStringEncodingUTF8);
                if (CFStringRef line = info->CopyLayoutCFString(row, column))
                    CFRelease(line);
            }
    }
    std::printf("%d reads, %lu bytes exported\n", reads, bytes);
    return 0;
}
