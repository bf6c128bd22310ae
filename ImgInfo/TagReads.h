// SPDX-License-Identifier: MIT
// Typed reads from the tag source for the item formatters. Each read zeroes
// its buffer, asks the tag source once and, when the tag source answers with
// an error object, releases that object here and reports the tag as absent,
// so no formatter handles error objects itself.
#ifndef QEL_TAG_READS_H
#define QEL_TAG_READS_H

#include "IVandelTagControl.h"

#include <array>
#include <optional>
#include <type_traits>

namespace qel {

// Reads `size` bytes of `tagID` delivered as `valueType` into `buffer`
// (zeroed first). False, with the error object released, when the tag
// source fails or is null.
bool ReadTag(IVandelTagControl* tags, UInt32 tagID, UInt32 valueType, void* buffer, UInt32 size);

// A record of plain bytes or numbers in host order, read whole.
template <class Record>
std::optional<Record> ReadRecord(IVandelTagControl* tags, UInt32 tagID, UInt32 valueType)
{
    static_assert(std::is_trivially_copyable<Record>::value, "records are plain data");
    Record record{};
    if (!ReadTag(tags, tagID, valueType, &record, sizeof record))
        return std::nullopt;
    return record;
}

template <size_t N>
using Bytes = std::array<UInt8, N>;

template <size_t N>
std::optional<Bytes<N>> ReadBytes(IVandelTagControl* tags, UInt32 tagID, UInt32 valueType)
{
    return ReadRecord<Bytes<N>>(tags, tagID, valueType);
}

// One signed 32-bit integer (value type 3, 4 bytes).
std::optional<SInt32> ReadInt32(IVandelTagControl* tags, UInt32 tagID);
// One double (value type 4, 8 bytes).
std::optional<double> ReadDouble(IVandelTagControl* tags, UInt32 tagID);
// Three doubles (value type 4, 24 bytes): degrees/minutes/seconds and alike.
std::optional<std::array<double, 3>> ReadDoubleTriple(IVandelTagControl* tags, UInt32 tagID);
// A value-step record (value type 17, 6 bytes).
std::optional<IVandelTagControl::tagStrValueStep> ReadValueStep(IVandelTagControl* tags,
                                                               UInt32 tagID);

// Text (value type 2). The tag source is offered `Size` bytes; the buffer
// holds one more zero byte, so a text delivered without its terminator is
// cut at the buffer's end instead of running past it.
template <size_t Size>
struct TagText {
    char text[Size + 1];
    const char* c_str() const { return text; }
};

template <size_t Size>
std::optional<TagText<Size>> ReadText(IVandelTagControl* tags, UInt32 tagID)
{
    TagText<Size> result{};
    if (!ReadTag(tags, tagID, 2, result.text, Size))
        return std::nullopt;
    result.text[Size] = '\0';
    return result;
}

}  // namespace qel

#endif
