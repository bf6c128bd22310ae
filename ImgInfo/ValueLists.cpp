// SPDX-License-Identifier: MIT
// The choices a host can offer for six adjustable settings, with the text
// and tag value of each and the position of the file's current setting.
#include "CQelImgInfo.h"
#include "QelItemIDs.h"
#include "ValueListTables.h"

#include <cstring>

namespace {

using qel::ValueListTable;

// Writes the list's length, then the entry's tag value and text; an index
// past the end gives an empty text and the value 0. Each output may be null.
void BuildEntry(ValueListTable list, UInt32 index, CQelString* text, UInt32* raw, UInt32* count)
{
    if (count)
        *count = static_cast<UInt32>(list.count);
    if (index >= list.count) {
        if (raw)
            *raw = 0;
        if (text)
            text->Clear();
        return;
    }
    const qel::ValueListEntry& entry = list.begin()[index];
    if (raw)
        *raw = entry.raw;
    if (!text)
        return;
    const qel::CTextScope texts;
    text->LoadString(entry.key);
    if (entry.filterKey) {  // monochrome through a colour filter, named after a comma
        text->Append(", ", kCFStringEncodingASCII);
        text->AppendLoadString(entry.filterKey);
    }
}

}  // namespace

const CQelImgInfo::ValueList* CQelImgInfo::FindValueList(UInt32 itemID)
{
    // Brightness/contrast offers the tone table's choices: hosts show one
    // scale for both adjustments.
    static constexpr ValueList kLists[] = {
        {QelItem::kWhiteBalance, qel::kWhiteBalanceList, {}, &CQelImgInfo::m_wbListIndex},
        {QelItem::kSharpening, qel::kSharpeningList, qel::kCompactSharpeningList,
         &CQelImgInfo::m_sharpeningListIndex},
        {QelItem::kBrightnessContrast, qel::kGammaTableList, {}, &CQelImgInfo::m_brtcntListIndex},
        {QelItem::kToneTable, qel::kGammaTableList, {}, &CQelImgInfo::m_gammaListIndex},
        {QelItem::kColorMode, qel::kColorModeList, {}, &CQelImgInfo::m_colorModeListIndex},
        {QelItem::kSaturationAdjust, qel::kSaturationAdjustList, {},
         &CQelImgInfo::m_saturationListIndex},
    };
    return qel::FindRow(kLists, &ValueList::itemID, itemID);
}

qel::ValueListTable CQelImgInfo::ListEntries(UInt32 itemID) const
{
    const ValueList* list = FindValueList(itemID);
    if (!list)
        return {};
    const bool compact = m_deviceKind == kDeviceCompact || m_deviceKind == kDeviceCompactMovie;
    return compact && !list->compactEntries.empty() ? list->compactEntries : list->entries;
}

UInt32 CQelImgInfo::GetInfoValueListCount(UInt32 itemID)
{
    return static_cast<UInt32>(ListEntries(itemID).count);
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
    // An item without a list answers an empty text and the value 0.
    CQelString& text = EmptyScratchText();
    BuildEntry(ListEntries(itemID), index, &text, value, nullptr);
    return text.GetCString(buffer, bufferSize, encoding);
}

UInt32 CQelImgInfo::GetInfoValueListItemStringLength(UInt32 itemID, UInt32 index,
                                                     CFStringEncoding encoding)
{
    // An item without a list has no entry, not even an empty one.
    if (!FindValueList(itemID))
        return 0;
    CQelString& text = EmptyScratchText();
    BuildEntry(ListEntries(itemID), index, &text, nullptr, nullptr);
    return text.GetByteLength(encoding);
}

CFStringRef CQelImgInfo::CopyInfoValueListItemCFString(UInt32 itemID, UInt32 index,
                                                       UInt32* value)
{
    CQelString& text = EmptyScratchText();
    BuildEntry(ListEntries(itemID), index, &text, value, nullptr);
    return text.GetLength() > 0 ? CFStringCreateCopy(kCFAllocatorDefault, text.GetCFString())
                                : nullptr;
}
