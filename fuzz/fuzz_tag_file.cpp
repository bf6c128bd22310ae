// SPDX-License-Identifier: MIT
// Fuzz target: the tag-file reader on any text, and the library on every
// tag file the reader accepts. A refused file must say why on one line.
#include "FileReads.h"

#include "JsonTagSource.h"
#include "TagSourceError.h"

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("LANGUAGE", "en", 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::unique_ptr<qel::JsonTagSource> tags;
    try {
        tags = qel::JsonTagSource::FromText(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const qel::TagSourceError& refused) {
        qel_fuzz::RequireOneLineReason(refused.what());
        return 0;
    }
    qel_fuzz::ReadTwiceAndExercise(*tags, data, size);
    return 0;
}
