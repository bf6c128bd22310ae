// SPDX-License-Identifier: MIT
#include "ExportWorkout.h"

#include "QelItemIDs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <memory>
#include <vector>

namespace qel_fuzz {

namespace {

// 8-bit, multi-byte and Unicode encodings with and without byte-order
// marks, and numbers that name no encoding at all.
constexpr CFStringEncoding kEncodings[] = {
    kCFStringEncodingASCII,     kCFStringEncodingUTF8,       kCFStringEncodingUTF16,
    kCFStringEncodingUTF16BE,   kCFStringEncodingUTF16LE,    kCFStringEncodingUTF32,
    kCFStringEncodingUTF32BE,   kCFStringEncodingUTF32LE,    kCFStringEncodingMacRoman,
    kCFStringEncodingISOLatin1, kCFStringEncodingWindowsLatin1, kCFStringEncodingShiftJIS,
    kCFStringEncodingEUC_JP,    kCFStringEncodingMacJapanese, kCFStringEncodingNonLossyASCII,
    kCFStringEncodingInvalidId, 0x12345,
};

// Sizes no text fits in, and odd ones.
constexpr UInt32 kSmallSizes[] = {0, 1, 2, 3, 4, 5, 7, 13, 64};

constexpr size_t kLargestBuffer = 1 << 20;

// Grids and lists are fixed tables; anything this large is a fault.
constexpr UInt32 kMostCells = 1000;

// IDs nothing is ever stored under, beside every ID that can be.
constexpr UInt32 kStrangeIDs[] = {0, 1, 0x7009D, 0x700AB, 0x7FFFFFFF, 0xFFFFFFFF};
constexpr UInt32 kStrangeIndexes[] = {0xFFFFFFFF, 0x80000000};

[[noreturn]] void Broken(const char* what, UInt32 size, UInt32 answer)
{
    std::fprintf(stderr, "export contract broken: %s (%u, %u)\n", what, size, answer);
    std::abort();
}

// One text as a host can take it: measured, into a buffer, as a copy.
struct TextExport {
    std::function<UInt32(CFStringEncoding)> length;
    std::function<UInt32(char*, UInt32, CFStringEncoding)> fill;
    std::function<CFStringRef()> copy;
};

// A buffer of exactly `size` bytes (none at all for a null buffer), filled
// with a pattern the export must overwrite with zeros.
void FillChecked(const TextExport& text, UInt32 size, bool nullBuffer, CFStringEncoding encoding)
{
    std::unique_ptr<char[]> buffer;
    if (!nullBuffer) {
        buffer.reset(new char[size]);
        std::fill(buffer.get(), buffer.get() + size, '\x5A');
    }
    const UInt32 placed = text.fill(buffer.get(), size, encoding);
    if (nullBuffer) {
        if (placed != 0)
            Broken("a null buffer received a text", size, placed);
        return;
    }
    // Whole or nothing, always followed by zeros: at least three of them.
    if (placed != 0 && (placed >= size || size - placed < 3))
        Broken("a text was placed without room for its terminator", size, placed);
    for (UInt32 at = placed; at < size; ++at)
        if (buffer[at] != 0)
            Broken("the buffer was not zeroed behind the text", size, placed);
}

void Exercise(const TextExport& text, Choices& choices)
{
    const CFStringEncoding encoding = kEncodings[choices.Below(std::size(kEncodings))];
    const UInt32 length = text.length(encoding);
    // Two of: too small, exactly the reported length, one byte more or less.
    const UInt32 sizes[] = {kSmallSizes[choices.Below(std::size(kSmallSizes))], length,
                            length + 1, length > 0 ? length - 1 : 0};
    const size_t first = choices.Below(std::size(sizes));
    for (size_t size : {sizes[first], sizes[(first + 1 + choices.Below(3)) % std::size(sizes)]})
        // A length is a promise about the text, not about memory: cap what
        // is allocated for it.
        if (size <= kLargestBuffer)
            FillChecked(text, static_cast<UInt32>(size), false, encoding);
    if (choices.Below(4) == 0)
        FillChecked(text, kSmallSizes[choices.Below(std::size(kSmallSizes))], true, encoding);
    if (CFStringRef copy = text.copy()) {
        (void)CFStringGetLength(copy);
        CFRelease(copy);
    }
}

void ExerciseItem(IQelImgInfo& info, UInt32 id, Choices& choices)
{
    Exercise({[&](CFStringEncoding e) { return info.GetInfoStringLength(id, e); },
              [&](char* b, UInt32 s, CFStringEncoding e) { return info.GetInfoString(id, b, s, e); },
              [&] { return info.CopyInfoCFString(id); }},
             choices);
    Exercise({[&](CFStringEncoding e) { return info.GetInfoTitleStringLength(id, e); },
              [&](char* b, UInt32 s, CFStringEncoding e) {
                  return info.GetInfoTitleString(id, b, s, e);
              },
              [&] { return info.CopyInfoTitleCFString(id); }},
             choices);
    Exercise({[&](CFStringEncoding e) { return info.GetInfoValueStringLength(id, e); },
              [&](char* b, UInt32 s, CFStringEncoding e) {
                  return info.GetInfoValueString(id, b, s, e);
              },
              [&] { return info.CopyInfoValueCFString(id); }},
             choices);
}

void ExerciseCell(IQelImgInfo& info, UInt32 row, UInt32 col, Choices& choices)
{
    (void)info.GetLayoutItem(row, col);
    Exercise({[&](CFStringEncoding e) { return info.GetLayoutStringLength(row, col, e); },
              [&](char* b, UInt32 s, CFStringEncoding e) {
                  return info.GetLayoutString(row, col, b, s, e);
              },
              [&] { return info.CopyLayoutCFString(row, col); }},
             choices);
}

void ExerciseListEntry(IQelImgInfo& info, UInt32 id, UInt32 index, Choices& choices)
{
    // Hosts may pass no place for the raw value.
    UInt32 raw = 0;
    UInt32* rawOut = choices.Below(2) ? &raw : nullptr;
    Exercise({[&](CFStringEncoding e) { return info.GetInfoValueListItemStringLength(id, index, e); },
              [&](char* b, UInt32 s, CFStringEncoding e) {
                  return info.GetInfoValueListItemString(id, index, rawOut, b, s, e);
              },
              [&] { return info.CopyInfoValueListItemCFString(id, index, rawOut); }},
             choices);
}

void ExerciseGrid(IQelImgInfo& info, Choices& choices)
{
    const UInt32 rows = info.GetLayoutRows();
    const UInt32 cols = info.GetLayoutCols();
    if (rows > kMostCells || cols > kMostCells)
        Broken("a grid of impossible size", rows, cols);
    // One row and one column past the grid as well.
    for (UInt32 col = 0; col <= cols; ++col)
        for (UInt32 row = 0; row <= rows; ++row)
            ExerciseCell(info, row, col, choices);
    ExerciseCell(info, 0xFFFFFFFF, 0, choices);
    ExerciseCell(info, 0, 0xFFFFFFFF, choices);
}

void ExerciseLists(IQelImgInfo& info, Choices& choices)
{
    std::vector<UInt32> ids(std::begin(kQelValueListItemIDs), std::end(kQelValueListItemIDs));
    ids.insert(ids.end(), {0, QelItem::kISOSensitivity, 0xFFFFFFFF});
    for (UInt32 id : ids) {
        const UInt32 count = info.GetInfoValueListCount(id);
        if (count > kMostCells)
            Broken("a value list of impossible length", count, id);
        const SInt32 current = info.GetInfoValueListCurrentIndex(id);
        if (current < -1)
            Broken("a current list position before the first entry", count,
                   static_cast<UInt32>(current));
        for (UInt32 index = 0; index <= count; ++index)
            ExerciseListEntry(info, id, index, choices);
        for (UInt32 index : kStrangeIndexes)
            ExerciseListEntry(info, id, index, choices);
    }
}

}  // namespace

uint64_t SeedOf(const uint8_t* data, size_t size)
{
    uint64_t seed = 0xCBF29CE484222325ull;
    for (size_t i = 0; i < size; ++i)
        seed = (seed ^ data[i]) * 0x100000001B3ull;
    return seed;
}

size_t SeededChoices::Below(size_t count)
{
    // xorshift64*
    m_state ^= m_state >> 12;
    m_state ^= m_state << 25;
    m_state ^= m_state >> 27;
    return static_cast<size_t>((m_state * 0x2545F4914F6CDD1Dull) >> 33) % count;
}

void RequireValueCount(IQelImgInfo& info, UInt32 answered)
{
    UInt32 values = 0;
    for (UInt32 id : kQelAllItemIDs)
        if (CFStringRef value = info.CopyInfoValueCFString(id)) {
            ++values;
            CFRelease(value);
        }
    if (values != answered)
        Broken("the read counted other values than it stored", values, answered);
}

void ExerciseEveryExport(IQelImgInfo& info, Choices& choices)
{
    for (UInt32 id : kQelAllItemIDs)
        ExerciseItem(info, id, choices);
    for (UInt32 id : kStrangeIDs)
        ExerciseItem(info, id, choices);
    ExerciseGrid(info, choices);
    ExerciseLists(info, choices);
}

}  // namespace qel_fuzz
