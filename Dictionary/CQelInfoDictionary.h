// SPDX-License-Identifier: MIT
// CQelInfoDictionary: the store that one ReadFileTags fills and every query
// reads. Each item ID may hold a title and, independently, a value; an empty
// value counts as present. The last write of an item wins.
#ifndef QEL_CQELINFODICTIONARY_H
#define QEL_CQELINFODICTIONARY_H

#include "CQelString.h"

#include <map>
#include <vector>

class CQelInfoDictionary {
public:
    using Map = std::map<UInt32, CQelString>;

    CQelInfoDictionary() = default;
    CQelInfoDictionary(const CQelInfoDictionary& other);
    virtual ~CQelInfoDictionary();
    CQelInfoDictionary& operator=(const CQelInfoDictionary& other);

    void SetTitle(UInt32 id, const CQelString& text);
    void SetValue(UInt32 id, const CQelString& text);
    // The same for a text made only to be stored: it is taken over, not copied.
    void SetTitle(UInt32 id, CQelString&& text);
    void SetValue(UInt32 id, CQelString&& text);
    // A copy of `text` (not null).
    void SetTitle(UInt32 id, CFStringRef text);
    void SetValue(UInt32 id, CFStringRef text);
    // False when absent (`*out` untouched); otherwise a copy into `*out`.
    bool GetTitle(UInt32 id, CQelString* out) const;
    bool GetValue(UInt32 id, CQelString* out) const;
    // 0 when absent, else the stored text's GetByteLength.
    UInt32 GetTitleByteLength(UInt32 id, CFStringEncoding encoding) const;
    UInt32 GetValueByteLength(UInt32 id, CFStringEncoding encoding) const;
    const char* GetTitleCStringPtr(UInt32 id, CFStringEncoding encoding) const;
    const char* GetValueCStringPtr(UInt32 id, CFStringEncoding encoding) const;
    // Direct read access for the export, without copying the stored text.
    const CQelString* FindTitle(UInt32 id) const;
    const CQelString* FindValue(UInt32 id) const;

    UInt32 GetValueCount() const;
    UInt32 GetMapSize(const Map* map) const;
    UInt32 GetMapCount(const Map* map) const;
    void CopyMap(const Map* from, Map* to);
    void Clear();

    // Changes whenever a text is stored or the store is emptied or copied
    // over; never the same for two different contents.
    UInt64 GetRevision() const { return m_revision; }

    const Map& Titles() const { return m_titleMap; }
    const Map& Values() const { return m_valueMap; }

private:
    void SetStringToMap(Map& map, UInt32 id, const CQelString& text);
    void SetStringToMap(Map& map, UInt32 id, CFStringRef text);
    void SetStringToMap(Map& map, UInt32 id, CQelString&& text);
    static bool GetStringFromMap(const Map& map, UInt32 id, CQelString* out);
    static UInt32 GetByteLengthAtIndex(const Map& map, UInt32 id, CFStringEncoding encoding);
    static const char* GetCStringPtrFromMap(const Map& map, UInt32 id, CFStringEncoding encoding);

    void Revise();

    Map m_titleMap;
    Map m_valueMap;
    UInt64 m_revision = 0;
    // Entries of the last read, kept with their strings after Clear so that
    // the next read stores its texts into buffers it already has.
    std::vector<Map::node_type> m_spareEntries;
};

#endif
