// SPDX-License-Identifier: MIT
// Constant tables, the form in which every formatter keeps its mapping from
// what the camera wrote to what is shown, and the one look-up over them.
#ifndef QEL_KEY_TABLES_H
#define QEL_KEY_TABLES_H

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace qel {

// A view of a constant array of rows; empty by default.
template <class Row>
struct Table {
    const Row* first = nullptr;
    size_t count = 0;

    constexpr Table() = default;
    template <size_t N>
    constexpr Table(const Row (&rows)[N]) : first(rows), count(N) {}
    constexpr const Row* begin() const { return first; }
    constexpr const Row* end() const { return first + count; }
    constexpr bool empty() const { return count == 0; }
};

// The first row whose `field` equals `value`, or null.
template <class Rows, class Row, class Field, class Value>
constexpr const Row* FindRow(const Rows& rows, Field Row::*field, Value value)
{
    for (const Row& row : rows)
        if (row.*field == value)
            return &row;
    return nullptr;
}

// Whether a list of file kinds (or any numbers) holds `value`.
template <class Numbers, class Value>
bool Lists(const Numbers& numbers, Value value)
{
    return std::find(std::begin(numbers), std::end(numbers), value) != std::end(numbers);
}

struct KeyEntry {
    SInt64 raw;       // the number as the tag carries it
    const char* key;  // "" stores an empty value
};
using KeyTable = Table<KeyEntry>;

// The key of `raw`, or null when the table has no such row.
constexpr const char* FindKey(KeyTable table, SInt64 raw)
{
    const KeyEntry* entry = FindRow(table, &KeyEntry::raw, raw);
    return entry ? entry->key : nullptr;
}

// The key of `raw`, or `fallback` for a number the table does not list.
constexpr const char* KeyFor(KeyTable table, SInt64 raw, const char* fallback)
{
    const char* key = FindKey(table, raw);
    return key ? key : fallback;
}

// The fallback of tables whose unknown numbers store an empty value.
constexpr const char* kEmptyValue = "";

}  // namespace qel

#endif
