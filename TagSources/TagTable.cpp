// SPDX-License-Identifier: MIT
#include "TagTable.h"

#include <algorithm>
#include <iterator>

namespace qel {

class TagErrorPool::PooledError final : public ITagError {
public:
    UInt32 GetErrorCode() const override { return m_code; }
    const char* GetErrorText() const override { return m_text.c_str(); }
    void Release() override { m_inUse = false; }

    bool InUse() const { return m_inUse; }
    void Reuse(UInt32 code, std::string text)
    {
        m_code = code;
        m_text = std::move(text);
        m_inUse = true;
    }

private:
    UInt32 m_code = 0;
    std::string m_text;
    bool m_inUse = false;
};

TagErrorPool::TagErrorPool() = default;
TagErrorPool::~TagErrorPool() = default;

ITagError* TagErrorPool::Issue(UInt32 code, std::string text)
{
    auto free = std::find_if(m_errors.begin(), m_errors.end(),
                             [](const auto& error) { return !error->InUse(); });
    if (free == m_errors.end()) {
        m_errors.push_back(std::make_unique<PooledError>());
        free = std::prev(m_errors.end());
    }
    (*free)->Reuse(code, std::move(text));
    return free->get();
}

size_t TagErrorPool::Outstanding() const
{
    return static_cast<size_t>(std::count_if(m_errors.begin(), m_errors.end(),
                                             [](const auto& error) { return error->InUse(); }));
}

bool TagTable::Add(UInt32 id, Tag tag)
{
    return m_tags.emplace(id, std::move(tag)).second;
}

bool TagTable::AddText(UInt32 id, const std::string& text, std::optional<UInt32> size)
{
    Tag tag;
    tag.type = kQelValueText;
    const auto* bytes = reinterpret_cast<const UInt8*>(text.data());
    tag.bytes.assign(bytes, bytes + text.size());
    tag.bytes.push_back(0);
    tag.size = size ? *size : static_cast<UInt32>(tag.bytes.size());
    tag.isText = true;
    return Add(id, std::move(tag));
}

bool TagTable::AddBytes(UInt32 id, UInt32 type, std::vector<UInt8> bytes)
{
    Tag tag;
    tag.type = type;
    tag.size = static_cast<UInt32>(bytes.size());
    tag.bytes = std::move(bytes);
    return Add(id, std::move(tag));
}

const TagTable::Tag* TagTable::Find(UInt32 id) const
{
    auto it = m_tags.find(id);
    return it == m_tags.end() ? nullptr : &it->second;
}

UInt32 TagTable::GetTagCount()
{
    return static_cast<UInt32>(m_tags.size());
}

UInt32 TagTable::GetTagIDAtIndex(UInt32 position)
{
    if (position >= m_tags.size())
        return 0;
    return std::next(m_tags.begin(), position)->first;
}

Boolean TagTable::HasTag(UInt32 tagID)
{
    return Find(tagID) != nullptr;
}

UInt32 TagTable::GetTagInfo(UInt32 tagID, UInt32)
{
    const Tag* tag = Find(tagID);
    return tag ? tag->type : 0;
}

UInt32 TagTable::GetTagSize(UInt32 tagID, UInt32)
{
    const Tag* tag = Find(tagID);
    return tag ? tag->size : 0;
}

ITagError* TagTable::GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize, void* buffer,
                                 UInt32)
{
    const Tag* tag = Find(tagID);
    if (!tag)
        return m_errors.Issue(kTagAbsent, "tag is absent");
    if (tag->type != valueType)
        return m_errors.Issue(kTagTypeMismatch, "tag is delivered as value type " +
                                                    std::to_string(tag->type) + ", not " +
                                                    std::to_string(valueType));
    if (!buffer && bufferSize > 0)
        return m_errors.Issue(kTagNoBuffer, "no buffer");

    auto* out = static_cast<UInt8*>(buffer);
    size_t copied = std::min<size_t>(tag->bytes.size(), bufferSize);
    std::copy_n(tag->bytes.begin(), copied, out);
    std::fill(out + copied, out + bufferSize, UInt8{0});
    if (tag->isText && bufferSize > 0)
        out[std::min<size_t>(copied, bufferSize - 1)] = 0;
    return nullptr;
}

ITagError* TagTable::GetFileKind(SInt32* fileKind)
{
    if (!m_fileKind)
        return m_errors.Issue(kFileKindUnknown, FileKindUnknownReason());
    if (!fileKind)
        return m_errors.Issue(kTagNoBuffer, "no buffer");
    *fileKind = *m_fileKind;
    return nullptr;
}

std::string TagTable::FileKindUnknownReason() const
{
    return "the file names no model family";
}

}  // namespace qel
