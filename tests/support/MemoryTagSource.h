// SPDX-License-Identifier: MIT
// An in-memory tag source for tests. It serves the tags it was given, fails
// every other read with an error object, and counts the releases of every
// error object it hands out.
#ifndef QEL_TEST_MEMORY_TAG_SOURCE_H
#define QEL_TEST_MEMORY_TAG_SOURCE_H

#include "IVandelTagControl.h"

#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class MemoryTagSource : public IVandelTagControl {
public:
    struct Read {
        UInt32 tagID, valueType, bufferSize;
    };

    MemoryTagSource() = default;
    explicit MemoryTagSource(std::optional<SInt32> fileKind) : m_fileKind(fileKind) {}

    MemoryTagSource& Bytes(UInt32 id, UInt32 type, std::vector<UInt8> bytes)
    {
        const auto size = static_cast<UInt32>(bytes.size());
        m_tags[id] = Tag{type, std::move(bytes), size};
        return *this;
    }
    template <class T>
    MemoryTagSource& Record(UInt32 id, UInt32 type, const T& record)
    {
        std::vector<UInt8> bytes(sizeof record);
        std::memcpy(bytes.data(), &record, sizeof record);
        return Bytes(id, type, std::move(bytes));
    }
    template <class T>
    MemoryTagSource& Array(UInt32 id, UInt32 type, const std::vector<T>& values)
    {
        std::vector<UInt8> bytes(values.size() * sizeof(T));
        if (!values.empty())
            std::memcpy(bytes.data(), values.data(), bytes.size());
        return Bytes(id, type, std::move(bytes));
    }
    // Text with its terminating zero; `size` overrides what GetTagSize answers.
    MemoryTagSource& Text(UInt32 id, const std::string& text, std::optional<UInt32> size = {})
    {
        Bytes(id, 2, std::vector<UInt8>(text.c_str(), text.c_str() + text.size() + 1));
        return size ? Size(id, *size) : *this;
    }
    MemoryTagSource& Int32(UInt32 id, SInt32 value) { return Record(id, 3, value); }
    // The optional forms store nothing for an absent value.
    MemoryTagSource& Int32(UInt32 id, std::optional<SInt32> v) { return v ? Int32(id, *v) : *this; }
    MemoryTagSource& Double(UInt32 id, std::optional<double> v) { return v ? Double(id, *v) : *this; }
    MemoryTagSource& Int32s(UInt32 id, const std::vector<SInt32>& v) { return Array(id, 3, v); }
    MemoryTagSource& Double(UInt32 id, double value) { return Record(id, 4, value); }
    MemoryTagSource& Doubles(UInt32 id, const std::vector<double>& v) { return Array(id, 4, v); }
    MemoryTagSource& ValueStep(UInt32 id, SInt16 value, SInt16 numerator, SInt16 denominator)
    {
        return Record(id, 17, tagStrValueStep{value, numerator, denominator});
    }
    MemoryTagSource& Size(UInt32 id, UInt32 size) { m_tags[id].size = size; return *this; }
    MemoryTagSource& Remove(UInt32 id) { m_tags.erase(id); return *this; }

    // IVandelTagControl
    UInt32 GetTagInfo(UInt32 tagID, UInt32) override
    {
        auto it = m_tags.find(tagID);
        return it == m_tags.end() ? 0 : it->second.type;
    }
    UInt32 GetTagSize(UInt32 tagID, UInt32) override
    {
        auto it = m_tags.find(tagID);
        return it == m_tags.end() ? 0 : it->second.size;
    }
    ITagError* GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize, void* buffer,
                           UInt32) override
    {
        m_reads.push_back({tagID, valueType, bufferSize});
        auto it = m_tags.find(tagID);
        if (it == m_tags.end() || it->second.type != valueType || !buffer)
            return NewError();
        const std::vector<UInt8>& bytes = it->second.bytes;
        size_t n = bytes.size() < bufferSize ? bytes.size() : bufferSize;
        auto* out = static_cast<UInt8*>(buffer);
        if (n)
            std::memcpy(out, bytes.data(), n);
        std::memset(out + n, 0, bufferSize - n);
        if (valueType == 2 && bufferSize > 0)
            out[bufferSize - 1 < n ? bufferSize - 1 : n] = 0;
        return nullptr;
    }
    ITagError* GetFileKind(SInt32* fileKind) override
    {
        if (!m_fileKind)
            return NewError();
        *fileKind = *m_fileKind;
        return nullptr;
    }

    // Accounting
    int ErrorsIssued() const { return static_cast<int>(m_errors.size()); }
    bool EveryErrorReleasedOnce() const
    {
        for (const auto& error : m_errors)
            if (error->releases != 1)
                return false;
        return true;
    }
    const std::vector<Read>& Reads() const { return m_reads; }
    bool WasRead(UInt32 tagID) const
    {
        for (const Read& read : m_reads)
            if (read.tagID == tagID)
                return true;
        return false;
    }

private:
    struct Tag {
        UInt32 type = 0;
        std::vector<UInt8> bytes;
        UInt32 size = 0;  // what GetTagSize answers
    };
    struct CountingError final : ITagError {
        int releases = 0;
        void Release() override { ++releases; }
    };
    ITagError* NewError()
    {
        m_errors.push_back(std::make_unique<CountingError>());
        return m_errors.back().get();
    }

    std::optional<SInt32> m_fileKind = 0;
    std::map<UInt32, Tag> m_tags;
    std::vector<std::unique_ptr<CountingError>> m_errors;
    std::vector<Read> m_reads;
};

#endif
