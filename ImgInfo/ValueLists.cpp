// SPDX-License-Identifier: MIT
// The choices a host can offer for six adjustable settings, with the text
// and tag value of each and the position of the file's current setting.
#include "CQelImgInfo.h"
#include "QelItemIDs.h"
#include "ValueListTables.h"

#include <cstring>

namespace {

using qel::ValueListEntry;

struct ListView {
    const ValueListEntry* entries;
    UInt32 count;
};

template <size_t N>
constexpr ListView View(const ValueListEntry (&list)[N])
{
    return {list, static_cast<UInt32>(N)};
}

// Writes the list's length, then the entry's tag value and text; an index
// past the end gives an empty text and the value 0. Each output may be null.
void BuildEntry(ListView list, UInt32 index, CQelString* text, UInt32* raw, UInt32* count)
{
    if (count)
        *count = list.count;
    if (index >= list.count) {
        if (raw)
            *raw = 0;
        if (text)
            text->Clear();
        return;
    }
    const ValueListEntry& entry = list.entries[index];
    if (raw)
        *raw = entry.raw;
    if (!text)
        return;
    text->LoadString(entry.key);
    if (entry.filterKey) {  // monochrome through a colour filter, named after a comma
        text->Append(", ", kCFStringEncodingASCII);
        text->AppendLoadString(entry.filterKey);
    }
}

}  // namespace

void CQelImgInfo::GetWhiteBalance_ValueList(UInt32 index, CQelString* text, UInt32* raw,
                                            UInt32* count)
{
    BuildEntry(View(qel::kWhiteBalanceList), index, text, raw, count);
}

void CQelImgInfo::GetSharpening_ValueList(UInt32 index, CQelString* text, UInt32* raw,
                                          UInt32* count)
{
    const bool compact = m_deviceKind == kDeviceCompact || m_deviceKind == kDeviceCompactMovie;
    BuildEntry(compact ? View(qel::kCompactSharpeningList) : View(qel::kSharpeningList), index,
               text, raw, count);
}

// Brightness/contrast offers the tone table's choices, by design.
void CQelImgInfo::GetBRTCNTComp_ValueList(UInt32 index, CQelString* text, UInt32* raw,
                                          UInt32* count)
{
    BuildEntry(View(qel::kGammaTableList), index, text, raw, count);
}

void CQelImgInfo::GetGammaTable_ValueList(UInt32 index, CQelString* text, UInt32* raw,
                                          UInt32* count)
{
    BuildEntry(View(qel::kGammaTableList), index, text, raw, count);
}

void CQelImgInfo::GetColorMode_ValueList(UInt32 index, CQelString* text, UInt32* raw,
                                         UInt32* count)
{
    BuildEntry(View(qel::kColorModeList), index, text, raw, count);
}

void CQelImgInfo::GetSaturationAdjust_ValueList(UInt32 index, CQelString* text, UInt32* raw,
                                                UInt32* count)
{
    BuildEntry(View(qel::kSaturationAdjustList), index, text, raw, count);
}

const CQelImgInfo::ValueList* CQelImgInfo::FindValueList(UInt32 itemID)
{
    static constexpr ValueList kLists[] = {
        {QelItem::kWhiteBalance, &CQelImgInfo::GetWhiteBalance_ValueList,
         &CQelImgInfo::m_wbListIndex},
        {QelItem::kSharpening, &CQelImgInfo::GetSharpening_ValueList,
         &CQelImgInfo::m_sharpeningListIndex},
        {QelItem::kBrightnessContrast, &CQelImgInfo::GetBRTCNTComp_ValueList,
         &CQelImgInfo::m_brtcntListIndex},
        {QelItem::kToneTable, &CQelImgInfo::GetGammaTable_ValueList,
         &CQelImgInfo::m_gammaListIndex},
        {QelItem::kColorMode, &CQelImgInfo::GetColorMode_ValueList,
         &CQelImgInfo::m_colorModeListIndex},
        {QelItem::kSaturationAdjust, &CQelImgInfo::GetSaturationAdjust_ValueList,
         &CQelImgInfo::m_saturationListIndex},
    };
    for (const ValueList& list : kLists)
        if (list.itemID == itemID)
            return &list;
    return nullptr;
}

UInt32 CQelImgInfo::GetInfoValueListCount(UInt32 itemID)
{
    const ValueList* list = FindValueList(itemID);
    if (!list)
        return 0;
    UInt32 count = 0;
    (this->*list->build)(0, nullptr, nullptr, &count);
    return count;
}

SInt32 CQelImgInfo::GetInfoValueListCurrentIndex(UInt32 itemID) const
{
    const ValueList* list = FindValueList(itemID);
    return list ? this->*list->current : -1;
}

UInt32 CQelImgInfo::GetInfoValueListItemString(UInt32 itemID, UInt32 index, UInt32* value,
                                               char* buffer, UInt32 bufferSize,
                                               CFStringEncoding encoding)
{
    if (buffer)
        std::memset(buffer, 0, bufferSize);
    CQelString& text = EmptyScratchText();
    if (const ValueList* list = FindValueList(itemID))
        (this->*list->build)(index, &text, value, nullptr);
    else if (value)  // hosts pass a valid pointer; a null one is skipped, not written
        *value = 0;
    return text.GetCString(buffer, bufferSize, encoding);
}

UInt32 CQelImgInfo::GetInfoValueListItemStringLength(UInt32 itemID, UInt32 index,
                                                     CFStringEncoding encoding)
{
    const ValueList* list = FindValueList(itemID);
    if (!list)
        return 0;
    CQelString& text = EmptyScratchText();
    UInt32 raw = 0;
    (this->*list->build)(index, &text, &raw, nullptr);
    return text.GetByteLength(encoding);
}

CFStringRef CQelImgInfo::CopyInfoValueListItemCFString(UInt32 itemID, UInt32 index,
                                                       UInt32* value)
{
    const ValueList* list = FindValueList(itemID);
    if (!list) {
        if (value)  // hosts pass a valid pointer; a null one is skipped, not written
            *value = 0;
        return nullptr;
    }
    CQelString& text = EmptyScratchText();
    (this->*list->build)(index, &text, value, nullptr);
    return text.GetLength() > 0 ? CFStringCreateCopy(kCFAllocatorDefault, text.GetCFString())
                                : nullptr;
}
