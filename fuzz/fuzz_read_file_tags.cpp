// SPDX-License-Identifier: MIT
// Fuzz target: one image-information object reads up to three files from
// tag sources that answer whatever the input says, and after each read a
// host asks for everything. Run under AddressSanitizer, UndefinedBehavior-
// Sanitizer and LeakSanitizer; the tag source aborts when an error object is
// not released exactly once.
#include "ExportWorkout.h"
#include "HostileTagSource.h"

#include "IQelImgInfo.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <memory>

namespace {

struct Destroyer {
    void operator()(IQelImgInfo* info) const { info->Destroy(); }
};

// Now and then a host hands no tag source at all.
constexpr int kNoSourceOneIn = 8;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // The texts are the English ones unless the run asks for another language.
    setenv("LANGUAGE", "en", 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    std::unique_ptr<IQelImgInfo, Destroyer> info(IQelImgInfo::CreateImageInfo());
    const int files = input.ConsumeIntegralInRange(1, 3);
    for (int file = 0; file < files; ++file) {
        qel_fuzz::SeededChoices choices(input.ConsumeIntegral<uint64_t>());
        UInt32 values = 0;
        if (input.ConsumeIntegralInRange(1, kNoSourceOneIn) == 1) {
            values = info->ReadFileTags(nullptr);
        } else {
            qel_fuzz::HostileTagSource tags(input);
            values = info->ReadFileTags(&tags);
            tags.RequireEveryErrorReleasedOnce();
        }
        qel_fuzz::RequireValueCount(*info, values);
        qel_fuzz::ExerciseEveryExport(*info, choices);
    }
    return 0;
}
