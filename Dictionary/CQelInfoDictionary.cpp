// SPDX-License-Identifier: MIT
#include "CQelInfoDictionary.h"

#include <QelPlatform/TextEncoding.h>

#include <atomic>
#include <utility>

namespace {

// The encodings of the system and of the application at load time, kept for
// hosts that want to choose one of them; the library itself does not read them.
[[maybe_unused]] const CFStringEncoding sysEncoding = CFStringGetSystemEncoding();
[[maybe_unused]] const TextEncoding appEncoding = GetApplicationTextEncoding();

// Revisions are drawn from one counter, so no two stores share one.
std::atomic<UInt64> nextRevision{1};

}  // namespace

void CQelInfoDictionary::Revise()
{
    m_revision = nextRevision.fetch_add(1, std::memory_order_relaxed);
}

CQelInfoDictionary::~CQelInfoDictionary()
{
    Clear();
}

CQelInfoDictionary& CQelInfoDictionary::operator=(const CQelInfoDictionary& other)
{
    if (this != &other) {
        m_titleMap = other.m_titleMap;
        m_valueMap = other.m_valueMap;
        Revise();
    }
    return *this;
}

CQelInfoDictionary::CQelInfoDictionary(const CQelInfoDictionary& other)
    : m_titleMap(other.m_titleMap), m_valueMap(other.m_valueMap)
{
    Revise();
}

void CQelInfoDictionary::SetStringToMap(Map& map, UInt32 id, const CQelString& text)
{
    SetStringToMap(map, id, text.GetCFString());
}

void CQelInfoDictionary::SetStringToMap(Map& map, UInt32 id, CFStringRef text)
{
    // The last write wins: the earlier text is replaced by a copy of the new
    // one, in its own buffer.
    Revise();
    auto at = map.lower_bound(id);
    if (at != map.end() && at->first == id) {
        at->second.Assign(text);
        return;
    }
    if (m_spareEntries.empty()) {
        map.emplace_hint(at, id, CQelString(text));
        return;
    }
    // An entry of the last read: the text is copied into its string's buffer.
    Map::node_type entry = std::move(m_spareEntries.back());
    m_spareEntries.pop_back();
    entry.key() = id;
    entry.mapped().Assign(text);
    map.insert(at, std::move(entry));
}

void CQelInfoDictionary::SetStringToMap(Map& map, UInt32 id, CQelString&& text)
{
    // A new item takes the text over unless an entry of the last read can
    // hold it; an earlier text is replaced by a copy.
    if (!m_spareEntries.empty())
        return SetStringToMap(map, id, static_cast<const CQelString&>(text));
    Revise();
    auto [stored, inserted] = map.try_emplace(id, std::move(text));
    if (!inserted)
        stored->second = text;
}

bool CQelInfoDictionary::GetStringFromMap(const Map& map, UInt32 id, CQelString* out)
{
    auto it = map.find(id);
    if (it == map.end())
        return false;
    if (out)
        *out = it->second;
    return true;
}

UInt32 CQelInfoDictionary::GetByteLengthAtIndex(const Map& map, UInt32 id,
                                                CFStringEncoding encoding)
{
    auto it = map.find(id);
    return it == map.end() ? 0 : it->second.GetByteLength(encoding);
}

const char* CQelInfoDictionary::GetCStringPtrFromMap(const Map& map, UInt32 id,
                                                     CFStringEncoding encoding)
{
    // The bytes stay valid until the stored text is replaced or cleared.
    auto it = map.find(id);
    return it == map.end() ? nullptr : it->second.GetCStringPtr(encoding);
}

void CQelInfoDictionary::SetTitle(UInt32 id, const CQelString& text)
{
    SetStringToMap(m_titleMap, id, text);
}

void CQelInfoDictionary::SetValue(UInt32 id, const CQelString& text)
{
    SetStringToMap(m_valueMap, id, text);
}

void CQelInfoDictionary::SetTitle(UInt32 id, CQelString&& text)
{
    SetStringToMap(m_titleMap, id, std::move(text));
}

void CQelInfoDictionary::SetValue(UInt32 id, CQelString&& text)
{
    SetStringToMap(m_valueMap, id, std::move(text));
}

void CQelInfoDictionary::SetTitle(UInt32 id, CFStringRef text)
{
    SetStringToMap(m_titleMap, id, text);
}

void CQelInfoDictionary::SetValue(UInt32 id, CFStringRef text)
{
    SetStringToMap(m_valueMap, id, text);
}

bool CQelInfoDictionary::GetTitle(UInt32 id, CQelString* out) const
{
    return GetStringFromMap(m_titleMap, id, out);
}

bool CQelInfoDictionary::GetValue(UInt32 id, CQelString* out) const
{
    return GetStringFromMap(m_valueMap, id, out);
}

UInt32 CQelInfoDictionary::GetTitleByteLength(UInt32 id, CFStringEncoding encoding) const
{
    return GetByteLengthAtIndex(m_titleMap, id, encoding);
}

UInt32 CQelInfoDictionary::GetValueByteLength(UInt32 id, CFStringEncoding encoding) const
{
    return GetByteLengthAtIndex(m_valueMap, id, encoding);
}

const char* CQelInfoDictionary::GetTitleCStringPtr(UInt32 id, CFStringEncoding encoding) const
{
    return GetCStringPtrFromMap(m_titleMap, id, encoding);
}

const char* CQelInfoDictionary::GetValueCStringPtr(UInt32 id, CFStringEncoding encoding) const
{
    return GetCStringPtrFromMap(m_valueMap, id, encoding);
}

const CQelString* CQelInfoDictionary::FindTitle(UInt32 id) const
{
    auto it = m_titleMap.find(id);
    return it == m_titleMap.end() ? nullptr : &it->second;
}

const CQelString* CQelInfoDictionary::FindValue(UInt32 id) const
{
    auto it = m_valueMap.find(id);
    return it == m_valueMap.end() ? nullptr : &it->second;
}

UInt32 CQelInfoDictionary::GetValueCount() const
{
    return GetMapCount(&m_valueMap);
}

UInt32 CQelInfoDictionary::GetMapSize(const Map* map) const
{
    return map ? static_cast<UInt32>(map->size()) : 0;
}

UInt32 CQelInfoDictionary::GetMapCount(const Map* map) const
{
    return GetMapSize(map);
}

void CQelInfoDictionary::CopyMap(const Map* from, Map* to)
{
    // Copying a map onto itself changes nothing.
    if (!from || !to || from == to)
        return;
    for (const auto& [id, text] : *from)
        SetStringToMap(*to, id, text);
}

void CQelInfoDictionary::Clear()
{
    Revise();
    for (Map* map : {&m_titleMap, &m_valueMap})
        while (!map->empty())
            m_spareEntries.push_back(map->extract(map->begin()));
}
