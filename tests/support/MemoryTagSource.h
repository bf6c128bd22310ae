// SPDX-License-Identifier: MIT
// The tests' tag source: the tag table qelinfo reads files into, filled tag
// by tag. It also notes every read and hands out each error object through a
// counter, so a test can tell that every error was released exactly once.
#ifndef QEL_TEST_MEMORY_TAG_SOURCE_H
#define QEL_TEST_MEMORY_TAG_SOURCE_H

#include "TagTable.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <string>
#include <vector>

class MemoryTagSource : public qel::TagTable {
public:
    struct Read {
        UInt32 tagID, valueType, bufferSize;
    };

    // File kind 0 unless told; nullopt makes GetFileKind fail.
    explicit MemoryTagSource(std::optional<SInt32> fileKind = 0) { SetFileKind(fileKind); }

    // `size` overrides what GetTagSize answers.
    MemoryTagSource& Bytes(UInt32 id, UInt32 type, std::vector<UInt8> bytes,
                           std::optional<UInt32> size = {})
    {
        const auto length = static_cast<UInt32>(bytes.size());
        Add(id, Tag{type, std::move(bytes), size.value_or(length), false});
        return *this;
    }
    template <class T>
    MemoryTagSource& Record(UInt32 id, UInt32 type, const T& record) { return Bytes(id, type, qel::HostBytes(record)); }
    MemoryTagSource& Text(UInt32 id, const std::string& text, std::optional<UInt32> size = {})
    {
        AddText(id, text, size);
        return *this;
    }
    // An absent value stores no tag.
    MemoryTagSource& Int32(UInt32 id, std::optional<SInt32> v) { return v ? Record(id, kQelValueInt32, *v) : *this; }
    MemoryTagSource& Double(UInt32 id, std::optional<double> v) { return v ? Record(id, kQelValueDouble, *v) : *this; }
    MemoryTagSource& Int32s(UInt32 id, const std::vector<SInt32>& v, std::optional<UInt32> size = {})
    {
        return Bytes(id, kQelValueInt32, qel::HostBytes(v), size);
    }
    MemoryTagSource& Doubles(UInt32 id, const std::vector<double>& v) { return Bytes(id, kQelValueDouble, qel::HostBytes(v)); }
    MemoryTagSource& ValueStep(UInt32 id, SInt16 value, SInt16 numerator, SInt16 denominator)
    {
        return Record(id, kQelValueStep, tagStrValueStep{value, numerator, denominator});
    }

    ITagError* GetTagValue(UInt32 tagID, UInt32 type, UInt32 size, void* buffer,
                           UInt32 index) override
    {
        m_reads.push_back({tagID, type, size});
        return Counted(TagTable::GetTagValue(tagID, type, size, buffer, index));
    }
    ITagError* GetFileKind(SInt32* fileKind) override { return Counted(TagTable::GetFileKind(fileKind)); }

    const std::vector<Read>& Reads() const { return m_reads; }
    bool WasRead(UInt32 tagID) const
    {
        return std::any_of(m_reads.begin(), m_reads.end(),
                           [tagID](const Read& read) { return read.tagID == tagID; });
    }
    int ErrorsIssued() const { return static_cast<int>(m_errors.size()); }
    bool EveryErrorReleasedOnce() const
    {
        return OutstandingErrors() == 0 &&
               std::all_of(m_errors.begin(), m_errors.end(),
                           [](const CountedError& error) { return error.releases == 1; });
    }

private:
    // Passes the first release on to the table's error object, counting all.
    struct CountedError final : ITagError {
        explicit CountedError(ITagError* inner) : inner(inner) {}
        UInt32 GetErrorCode() const override { return inner->GetErrorCode(); }
        const char* GetErrorText() const override { return inner->GetErrorText(); }
        void Release() override
        {
            if (releases++ == 0)
                inner->Release();
        }
        ITagError* inner;
        int releases = 0;
    };
    // A deque keeps earlier errors in place.
    ITagError* Counted(ITagError* error) { return error ? &m_errors.emplace_back(error) : nullptr; }

    std::deque<CountedError> m_errors;
    std::vector<Read> m_reads;
};

#endif
