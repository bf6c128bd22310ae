// SPDX-License-Identifier: MIT
// Localized strings tables in the Mac's strings-file syntax:
//
//     /* comment */  // comment
//     "key" = "value";
//     "key";                      (the value is the key itself)
//
// with the escapes \" \\ \n \t \r \a \b \f \v, \Uxxxx (a hex UTF-16 unit)
// and \ooo (octal). Files are UTF-8 (optionally with a BOM) or UTF-16 with
// a BOM in either byte order. A table is parsed once and then answers
// lookups by the UTF-16 key without further work.
#ifndef QEL_PLATFORM_STRINGSFILE_H
#define QEL_PLATFORM_STRINGSFILE_H

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace qelcf {

struct CFReleaser {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};
using StringHolder = std::unique_ptr<const struct __CFString, CFReleaser>;

class StringTable {
public:
    // The stored text (not retained), or null.
    CFStringRef Find(const std::u16string& key) const;
    void Set(std::u16string key, std::u16string value);
    size_t Size() const { return entries_.size(); }
    // Visits every entry as (key, text), in no particular order.
    template <class Visit>
    void ForEach(Visit visit) const
    {
        for (const auto& entry : entries_)
            visit(entry.first, entry.second.get());
    }
    void Clear() { entries_.clear(); }

private:
    std::unordered_map<std::u16string, StringHolder> entries_;
};

struct StringsFileError {
    int line = 0;
    std::string message;
};

// Parses a whole file's bytes into `table`. On malformed text the table is
// left empty and `error` says where and why.
bool ParseStringsFile(const std::string& bytes, StringTable& table, StringsFileError& error);

// Reads and parses the file at `path`. A missing file gives an empty
// table; a malformed one is reported on stderr with file and line and
// gives an empty table.
std::unique_ptr<StringTable> LoadStringsFile(const std::string& path);

}  // namespace qelcf

#endif
