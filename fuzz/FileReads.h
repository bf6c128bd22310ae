// SPDX-License-Identifier: MIT
// What the file-based fuzz targets do with a tag source they could make:
// read it twice with one image-information object (the second read starts
// from the value-list positions of the first, as in a host browsing a
// folder), ask for everything after each read, and abort when an error
// object is left unreleased or a refusal gives no one-line reason.
#ifndef QEL_FUZZ_FILE_READS_H
#define QEL_FUZZ_FILE_READS_H

#include "TagTable.h"

#include <cstddef>
#include <cstdint>

namespace qel_fuzz {

void ReadTwiceAndExercise(qel::TagTable& tags, const uint8_t* data, size_t size);

// Aborts unless `reason` is a non-empty line without control characters.
void RequireOneLineReason(const char* reason);

}  // namespace qel_fuzz

#endif
