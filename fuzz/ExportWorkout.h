// SPDX-License-Identifier: MIT
// After a read, asks an image-information object for everything a host can
// ask for: every item's line, title and value, every grid cell (and the ones
// just outside the grid), every value-list entry (and one past the end),
// each as a length, into buffers of small, exact and odd sizes in a spread
// of encodings, and as CoreFoundation copies. Buffers are allocated to their
// exact size so an overrun is caught, and the all-or-nothing buffer contract
// is checked: the program aborts when it is broken.
#ifndef QEL_FUZZ_EXPORT_WORKOUT_H
#define QEL_FUZZ_EXPORT_WORKOUT_H

#include "IQelImgInfo.h"

#include <cstddef>
#include <cstdint>

namespace qel_fuzz {

// Where the workout takes its choices of encoding and buffer size from.
class Choices {
public:
    virtual ~Choices() = default;
    // A number below `count` (count > 0).
    virtual size_t Below(size_t count) = 0;
};

// Choices that follow from a seed, so one input always makes the same ones.
class SeededChoices final : public Choices {
public:
    explicit SeededChoices(uint64_t seed) : m_state(seed | 1) {}
    size_t Below(size_t count) override;

private:
    uint64_t m_state;
};

// A seed from a whole input (FNV-1a).
uint64_t SeedOf(const uint8_t* data, size_t size);

void ExerciseEveryExport(IQelImgInfo& info, Choices& choices);

// Aborts unless `answered` (what ReadFileTags returned) is the number of
// items that have a value, all of them among the items a host can list.
void RequireValueCount(IQelImgInfo& info, UInt32 answered);

}  // namespace qel_fuzz

#endif
