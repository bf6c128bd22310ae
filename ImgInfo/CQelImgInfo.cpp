// SPDX-License-Identifier: MIT
#include "CQelImgInfo.h"
#include "TagReads.h"

#include <QelPlatform/TextEncoding.h>

namespace {

// The encodings of the system and of the application at load time, kept for
// hosts that want to choose one of them; the library itself does not read them.
[[maybe_unused]] const CFStringEncoding sysEncoding = CFStringGetSystemEncoding();
[[maybe_unused]] const TextEncoding appEncoding = GetApplicationTextEncoding();

// The text of a key, or an empty text for an empty or missing key.
CQelString TextOfKey(const char* key)
{
    CQelString text;
    if (key && *key)
        text.LoadString(key);
    return text;
}

// The text of a key as the open text scope keeps it, stored without a
// string of its own; null for an empty or missing key or outside a scope.
CFStringRef KeptTextOfKey(const char* key)
{
    return key && *key ? CQelString::KeptText(key) : nullptr;
}

}  // namespace

IQelImgInfo* IQelImgInfo::CreateImageInfo()
{
    return new CQelImgInfo();
}

CQelImgInfo::CQelImgInfo() = default;

CQelImgInfo::~CQelImgInfo()
{
    m_infoDict.Clear();
}

void CQelImgInfo::Destroy()
{
    delete this;
}

CQelImgInfo& CQelImgInfo::operator=(const CQelImgInfo& other)
{
    if (this == &other)
        return *this;
    m_deviceKind = other.m_deviceKind;
    m_fileKind = other.m_fileKind;
    m_wbListIndex = other.m_wbListIndex;
    m_sharpeningListIndex = other.m_sharpeningListIndex;
    m_brtcntListIndex = other.m_brtcntListIndex;
    m_gammaListIndex = other.m_gammaListIndex;
    m_colorModeListIndex = other.m_colorModeListIndex;
    m_saturationListIndex = other.m_saturationListIndex;
    m_infoDict = other.m_infoDict;
    return *this;
}

void CQelImgInfo::StoreTitle(UInt32 itemID, const char* key)
{
    if (CFStringRef kept = KeptTextOfKey(key))
        m_infoDict.SetTitle(itemID, kept);
    else
        m_infoDict.SetTitle(itemID, TextOfKey(key));
}

void CQelImgInfo::StoreValue(UInt32 itemID, const CQelString& value)
{
    m_infoDict.SetValue(itemID, value);
}

void CQelImgInfo::StoreValueKey(UInt32 itemID, const char* key)
{
    if (CFStringRef kept = KeptTextOfKey(key))
        m_infoDict.SetValue(itemID, kept);
    else
        m_infoDict.SetValue(itemID, TextOfKey(key));
}

void CQelImgInfo::StoreMappedItem(IVandelTagControl* tagControl, const MappedItem& item)
{
    StoreTitle(item.itemID, item.titleKey);
    auto raw = qel::ReadInt32(tagControl, item.itemID);
    if (!raw)
        return;
    if (item.listIndex)
        qel::RecordListPosition(ListEntries(item.itemID), static_cast<UInt32>(*raw),
                                this->*item.listIndex);
    if (const char* key = qel::KeyFor(item.table, *raw, item.fallback))
        StoreValueKey(item.itemID, key);
}

void CQelImgInfo::StoreIntegerItem(IVandelTagControl* tagControl, UInt32 itemID,
                                   const char* titleKey)
{
    StoreTitle(itemID, titleKey);
    if (auto number = qel::ReadInt32(tagControl, itemID)) {
        CQelString text;
        text.AppendFormat(CFSTR("%ld"), static_cast<long>(*number));
        StoreValue(itemID, text);
    }
}
