// SPDX-License-Identifier: MIT
#include "FileReads.h"

#include "ExportWorkout.h"

#include "IQelImgInfo.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace qel_fuzz {

namespace {

struct Destroyer {
    void operator()(IQelImgInfo* info) const { info->Destroy(); }
};

constexpr int kReads = 2;

}  // namespace

void ReadTwiceAndExercise(qel::TagTable& tags, const uint8_t* data, size_t size)
{
    std::unique_ptr<IQelImgInfo, Destroyer> info(IQelImgInfo::CreateImageInfo());
    SeededChoices choices(SeedOf(data, size));
    for (int read = 0; read < kReads; ++read) {
        const UInt32 values = info->ReadFileTags(&tags);
        if (tags.OutstandingErrors() != 0) {
            std::fprintf(stderr, "%zu error objects were not released\n", tags.OutstandingErrors());
            std::abort();
        }
        RequireValueCount(*info, values);
        ExerciseEveryExport(*info, choices);
    }
}

void RequireOneLineReason(const char* reason)
{
    bool control = false;
    for (const char* c = reason; *c; ++c)
        control = control || static_cast<unsigned char>(*c) < 0x20 || *c == 0x7F;
    if (*reason == '\0' || control) {
        std::fprintf(stderr, "a refused file must give a one-line reason, not \"%s\"\n", reason);
        std::abort();
    }
}

}  // namespace qel_fuzz
