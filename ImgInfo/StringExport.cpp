// SPDX-License-Identifier: MIT
// Titles, values and the joined display line of an item, into a caller's
// buffer in any encoding or as a new CFString.
#include "CQelImgInfo.h"
#include "QelItemIDs.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

using namespace QelItem;

// Items whose value already says everything: the title is never shown.
constexpr UInt32 kValueOnlyItems[] = {
    kModel, kExposureTime, kShootingDate, kColor, kDataFormat, kBounceAndWidePanel,
};

// Items that make a line only when both title and a non-empty value exist.
constexpr UInt32 kValueRequiredItems[] = {
    kColorSpace,      kFlashSyncMode,    kFlashMode,       kFlashComp,
    kPictureProcessing, kHighSensitivityNR, kGPSLatitude,  kGPSLongitude,
    kGPSAltitude,     kGPSImgDirection,  kGPSTimeStamp,    kScanFilmType,
    kScanMultiSample, kScanBitDepth,     kScanICE,         kScanGainMaster,
    kScanGainRed,     kScanGainGreen,    kScanGainBlue,    kScanImageEnhance,
    kScanShadow,      kScanGrayThreshold, kScanHighlight,  kFlashGroupA,
    kFlashGroupB,     kFlashGroupC,      kEditHistoryFirst, kFalsification,
};

// No item is ever stored under 0: it stands for an empty grid cell.
constexpr UInt32 kNoItem = 0;

enum class LineKind { ValueOnly, ValueRequired, TitleFirst };

template <size_t N>
bool Lists(const UInt32 (&items)[N], UInt32 itemID)
{
    return std::find(std::begin(items), std::end(items), itemID) != std::end(items);
}

LineKind LineKindOf(UInt32 itemID)
{
    if (Lists(kValueOnlyItems, itemID))
        return LineKind::ValueOnly;
    if (Lists(kValueRequiredItems, itemID))
        return LineKind::ValueRequired;
    return LineKind::TitleFirst;
}

void ZeroBuffer(char* buffer, UInt32 size)
{
    if (buffer)
        std::memset(buffer, 0, size);
}

// Title, blank, value, built in `line`.
const CQelString* Joined(const CQelString& title, const CQelString& value, CQelString& line)
{
    line.Clear();
    line.Append(title);
    line.Append(CFSTR(" "));
    line.Append(value);
    return &line;
}

// The display line of an item, or null when the item shows nothing. A line
// that is one stored text is that text itself; only a joined line is built,
// in `line`.
const CQelString* DisplayLine(const CQelInfoDictionary& dict, UInt32 itemID, CQelString& line)
{
    if (itemID == kNoItem)
        return nullptr;
    const CQelString* title = dict.FindTitle(itemID);
    const CQelString* value = dict.FindValue(itemID);
    switch (LineKindOf(itemID)) {
    case LineKind::ValueOnly:
        return value;
    case LineKind::ValueRequired:
        if (!value || value->GetLength() == 0 || !title)
            return nullptr;
        return Joined(*title, *value, line);
    case LineKind::TitleFirst:
        if (!title)
            return nullptr;
        return (value && value->GetLength() > 0) ? Joined(*title, *value, line) : title;
    }
    return nullptr;
}

UInt32 ExportText(const CQelString* text, char* buffer, UInt32 size, CFStringEncoding encoding)
{
    // GetCString zeroes the buffer itself.
    if (!text) {
        ZeroBuffer(buffer, size);
        return 0;
    }
    return text->GetCString(buffer, size, encoding);
}

CFStringRef CopyText(const CQelString* text)
{
    return text ? CFStringCreateCopy(kCFAllocatorDefault, text->GetCFString()) : nullptr;
}

}  // namespace

const CQelString* CQelImgInfo::LineOf(UInt32 itemID)
{
    // Hosts ask for a cell's text in several forms one after another.
    if (itemID != kNoItem && itemID == m_lineItem && m_lineRevision == m_infoDict.GetRevision())
        return &m_line;
    const CQelString* line = DisplayLine(m_infoDict, itemID, m_line);
    m_lineItem = line == &m_line ? itemID : kNoItem;
    m_lineRevision = m_infoDict.GetRevision();
    return line;
}

UInt32 CQelImgInfo::GetInfoString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                                  CFStringEncoding encoding)
{
    return ExportText(LineOf(itemID), buffer, bufferSize, encoding);
}

UInt32 CQelImgInfo::GetInfoStringLength(UInt32 itemID, CFStringEncoding encoding)
{
    if (itemID == kNoItem)
        return 0;
    // Compared signed. The length does not ask whether the value is empty:
    // an empty value still counts its terminator slack, so the length is an
    // upper bound even where GetInfoString shows the title alone.
    const SInt32 title = static_cast<SInt32>(m_infoDict.GetTitleByteLength(itemID, encoding));
    const SInt32 value = static_cast<SInt32>(m_infoDict.GetValueByteLength(itemID, encoding));
    constexpr SInt32 kSeparator = 1;
    switch (LineKindOf(itemID)) {
    case LineKind::ValueOnly:
        return static_cast<UInt32>(value);
    case LineKind::ValueRequired:
        if (value < 1)
            return 0;
        if (title < 1)
            return static_cast<UInt32>(title);
        return static_cast<UInt32>(value + title + kSeparator);
    case LineKind::TitleFirst:
        if (title < 1 || value < 1)
            return static_cast<UInt32>(title);
        return static_cast<UInt32>(title + value + kSeparator);
    }
    return 0;
}

CFStringRef CQelImgInfo::CopyInfoCFString(UInt32 itemID)
{
    return CopyText(LineOf(itemID));
}

UInt32 CQelImgInfo::GetInfoTitleString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                                       CFStringEncoding encoding) const
{
    const CQelString* title = itemID == kNoItem ? nullptr : m_infoDict.FindTitle(itemID);
    return ExportText(title, buffer, bufferSize, encoding);
}

UInt32 CQelImgInfo::GetInfoTitleStringLength(UInt32 itemID, CFStringEncoding encoding) const
{
    return itemID == kNoItem ? 0 : m_infoDict.GetTitleByteLength(itemID, encoding);
}

CFStringRef CQelImgInfo::CopyInfoTitleCFString(UInt32 itemID) const
{
    return CopyText(m_infoDict.FindTitle(itemID));
}

UInt32 CQelImgInfo::GetInfoValueString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                                       CFStringEncoding encoding) const
{
    const CQelString* value = itemID == kNoItem ? nullptr : m_infoDict.FindValue(itemID);
    return ExportText(value, buffer, bufferSize, encoding);
}

UInt32 CQelImgInfo::GetInfoValueStringLength(UInt32 itemID, CFStringEncoding encoding) const
{
    return itemID == kNoItem ? 0 : m_infoDict.GetValueByteLength(itemID, encoding);
}

CFStringRef CQelImgInfo::CopyInfoValueCFString(UInt32 itemID) const
{
    return CopyText(m_infoDict.FindValue(itemID));
}
