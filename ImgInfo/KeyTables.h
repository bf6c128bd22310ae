// SPDX-License-Identifier: MIT
// Constant {raw value, localization key} tables, the form in which every
// formatter keeps its mapping from what the camera wrote to what is shown.
#ifndef QEL_KEY_TABLES_H
#define QEL_KEY_TABLES_H

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>

namespace qel {

struct KeyEntry {
    SInt64 raw;       // the number as the tag carries it
    const char* key;  // "" stores an empty value
};

// The key of `raw`, or null when the table has no such row.
template <size_t N>
constexpr const char* FindKey(const KeyEntry (&table)[N], SInt64 raw)
{
    for (const KeyEntry& entry : table)
        if (entry.raw == raw)
            return entry.key;
    return nullptr;
}

// The key of `raw`, or `fallback` for a number the table does not list.
template <size_t N>
constexpr const char* KeyFor(const KeyEntry (&table)[N], SInt64 raw, const char* fallback)
{
    const char* key = FindKey(table, raw);
    return key ? key : fallback;
}

// The fallback of tables whose unknown numbers store an empty value.
constexpr const char* kEmptyValue = "";

}  // namespace qel

#endif
