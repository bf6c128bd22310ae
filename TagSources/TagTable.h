// SPDX-License-Identifier: MIT
// TagTable: the tags of one file held in memory, served through
// IVandelTagControl. The tag-file reader and the image reader both fill one;
// the reading rules below are therefore the same for every file a host opens.
//
//   GetTagInfo   the tag's value type, 0 when the tag is absent
//   GetTagSize   the size recorded with the tag, 0 when absent
//   GetTagValue  fails with an error object when the tag is absent or asked
//                for in another value type; otherwise copies at most
//                bufferSize bytes, zero-fills the rest of the buffer, and a
//                text is always zero-terminated inside the buffer
//   GetFileKind  fails when the file's model family is unknown
//
// Error objects come from a pool owned by the table: Release hands one back
// for reuse, so a host that releases every error it receives leaks nothing.
#ifndef QEL_TAG_TABLE_H
#define QEL_TAG_TABLE_H

#include "IVandelTagControl.h"

#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace qel {

// Why a read failed, as ITagError::GetErrorCode answers it.
enum TagErrorCode : UInt32 {
    kTagAbsent = 1,
    kTagTypeMismatch = 2,
    kTagNoBuffer = 3,
    kFileKindUnknown = 4,
};

class TagErrorPool {
public:
    TagErrorPool();
    ~TagErrorPool();
    TagErrorPool(const TagErrorPool&) = delete;
    TagErrorPool& operator=(const TagErrorPool&) = delete;

    // An error object the receiver must Release once.
    ITagError* Issue(UInt32 code, std::string text);
    // Error objects handed out and not yet released.
    size_t Outstanding() const;

private:
    class PooledError;
    std::vector<std::unique_ptr<PooledError>> m_errors;
};

class TagTable : public IVandelTagControl {
public:
    struct Tag {
        UInt32 type = 0;
        std::vector<UInt8> bytes;
        UInt32 size = 0;      // what GetTagSize answers
        bool isText = false;  // delivered zero-terminated whatever the buffer size
    };

    TagTable() = default;
    TagTable(const TagTable&) = delete;
    TagTable& operator=(const TagTable&) = delete;

    // Adds a tag; false (and nothing changed) when the ID is already taken.
    bool Add(UInt32 id, Tag tag);
    // A text tag: the bytes, then a terminating zero; its size is `size`, or
    // the text's length plus the terminator.
    bool AddText(UInt32 id, const std::string& text, std::optional<UInt32> size = {});
    // A tag of plain numbers or records in host order, sized by its bytes.
    bool AddBytes(UInt32 id, UInt32 type, std::vector<UInt8> bytes);

    const Tag* Find(UInt32 id) const;
    void SetFileKind(std::optional<SInt32> fileKind) { m_fileKind = fileKind; }
    size_t OutstandingErrors() const { return m_errors.Outstanding(); }

    // IVandelTagControl
    UInt32 GetTagCount() override;
    UInt32 GetTagIDAtIndex(UInt32 position) override;
    Boolean HasTag(UInt32 tagID) override;
    UInt32 GetTagInfo(UInt32 tagID, UInt32 index) override;
    UInt32 GetTagSize(UInt32 tagID, UInt32 index) override;
    ITagError* GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize, void* buffer,
                           UInt32 index) override;
    ITagError* GetFileKind(SInt32* fileKind) override;

protected:
    // Why GetFileKind fails for this kind of source.
    virtual std::string FileKindUnknownReason() const;

private:
    std::map<UInt32, Tag> m_tags;
    std::optional<SInt32> m_fileKind;
    TagErrorPool m_errors;
};

// Numbers or records as the raw bytes of their host representation.
template <class T>
std::vector<UInt8> HostBytes(const std::vector<T>& values)
{
    static_assert(std::is_trivially_copyable<T>::value, "plain numbers and records only");
    std::vector<UInt8> bytes(values.size() * sizeof(T));
    if (!bytes.empty())
        std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

template <class T>
std::vector<UInt8> HostBytes(const T& value)
{
    static_assert(std::is_trivially_copyable<T>::value, "plain numbers and records only");
    std::vector<UInt8> bytes(sizeof(T));
    std::memcpy(bytes.data(), &value, sizeof(T));
    return bytes;
}

}  // namespace qel

#endif
