// SPDX-License-Identifier: MIT
// Film-scanner settings: dust and scratch removal, colour restoration, grain
// equalisation, analog gains, film type, multi-sampling, bit depth, tone
// adjustments and image enhancement, as the scanner recorded them.
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <cmath>
#include <cstddef>

namespace {

using qel::KeyEntry;

constexpr KeyEntry kFilmTypes[] = {
    {3, "IDS_QEL_SCAN_FILM_TYPE_POSI"},
    {0x100, "IDS_QEL_SCAN_FILM_TYPE_NEGA"},
    {0x101, "IDS_QEL_SCAN_FILM_TYPE_NEGA_MONO"},
    {0x102, "IDS_QEL_SCAN_FILM_TYPE_NEGA_COLOR"},
    {0x8003, "IDS_QEL_SCAN_FILM_TYPE_KODACHROME"},
};

// Only 1 means the enhancement ran; every other number shows as off.
constexpr KeyEntry kImageEnhance[] = {
    {1, "IDS_QEL_SCAN_IMAGE_ENHANCE_ON"},
};

// How strongly a restoration or grain filter worked (value type 19).
struct IntensityRecord {
    double enabled;    // exactly 0.0: the filter was off
    double unused1;
    double intensity;  // the strength the filter ran at
    double unused2[4];
};
static_assert(sizeof(IntensityRecord) == 56, "intensity record is 56 bytes");
static_assert(offsetof(IntensityRecord, intensity) == 16, "intensity sits at byte 16");

// The intensity a restoration or grain filter ran at, or its off text. A
// NaN on/off flag is taken as off: it cannot mean the filter ran. The
// scanner always shows these filters, so a record that cannot be read
// shows as intensity 0.00 rather than as nothing.
CQelString FilterIntensity(IVandelTagControl* tagControl, UInt32 tagID, const char* offKey)
{
    CQelString text;
    auto record = qel::ReadRecord<IntensityRecord>(tagControl, tagID, kQelValueIntensity);
    if (!record)
        text.AppendFormat(CFSTR("%.2lf"), 0.0);
    else if (record->enabled == 0.0 || std::isnan(record->enabled))
        text.LoadString(offKey);
    else
        text.AppendFormat(CFSTR("%.2lf"), record->intensity);
    return text;
}

// A gain followed by its unit. Any non-zero gain shows its sign
// (+1.00, -0.25); no gain (or a NaN) is a plain 0.00 without a sign.
CQelString GainText(double gain, const CQelString& unit)
{
    CQelString text;
    if (gain == 0.0 || std::isnan(gain))
        text.AppendFormat(CFSTR("%.2lf "), 0.0);
    else
        text.AppendFormat(CFSTR("%+.2lf "), gain);
    text.Append(unit);
    return text;
}

CQelString CText(const char* text, CFStringEncoding encoding)
{
    CQelString value;
    value.Append(text, encoding);
    return value;
}

}  // namespace

void CQelImgInfo::GetScanICEMode(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kScanICE, "IDS_QEL_SCAN_ICE");
    // The scanner writes this text in the machine's own encoding.
    if (auto text = qel::ReadText<256>(tagControl, QelItem::kScanICE))
        StoreValue(QelItem::kScanICE, CText(text->c_str(), CFStringGetSystemEncoding()));
}

void CQelImgInfo::GetScanMultiSample(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kScanMultiSample, "IDS_QEL_SCAN_MULTI_SAMPLE");
    // Unlike the ICE text, the sampling text is plain ASCII.
    if (auto text = qel::ReadText<256>(tagControl, QelItem::kScanMultiSample))
        StoreValue(QelItem::kScanMultiSample, CText(text->c_str(), kCFStringEncodingASCII));
}

void CQelImgInfo::GetScanImageEnhance(IVandelTagControl* tagControl)
{
    StoreMappedItem(tagControl, {QelItem::kScanImageEnhance, "IDS_QEL_SCAN_IMAGE_ENHANCE",
                                 kImageEnhance, "IDS_QEL_SCAN_IMAGE_ENHANCE_OFF"});
}

void CQelImgInfo::GetScanFilmType(IVandelTagControl* tagControl)
{
    StoreMappedItem(tagControl, {QelItem::kScanFilmType, "IDS_QEL_SCAN_FILM_TYPE", kFilmTypes,
                                 "IDS_QEL_SCAN_FILM_TYPE_UNKNOWN"});
}

void CQelImgInfo::GetScanHighlight(IVandelTagControl* tagControl)
{
    StoreIntegerItem(tagControl, QelItem::kScanHighlight, "IDS_QEL_SCAN_HIGHLIGHT_ADJUSTMENT");
}

void CQelImgInfo::GetScanGrayThreshold(IVandelTagControl* tagControl)
{
    StoreIntegerItem(tagControl, QelItem::kScanGrayThreshold, "IDS_QEL_SCAN_GRAY_THRESHOLD");
}

void CQelImgInfo::GetScanShadow(IVandelTagControl* tagControl)
{
    StoreIntegerItem(tagControl, QelItem::kScanShadow, "IDS_QEL_SCAN_SHADOW_ADJUSTMENT");
}

void CQelImgInfo::GetScanBitDepth(IVandelTagControl* tagControl)
{
    StoreIntegerItem(tagControl, QelItem::kScanBitDepth, "IDS_QEL_SCAN_BIT_DEPTH");
}

void CQelImgInfo::GetScanGEMIntensity(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kScanGEM, "IDS_QEL_SCAN_GEM");
    if (tagControl)
        StoreValue(QelItem::kScanGEM,
                   FilterIntensity(tagControl, QelItem::kScanGEM, "IDS_QEL_SCAN_GEM_OFF"));
}

void CQelImgInfo::GetScanROCIntensity(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kScanROC, "IDS_QEL_SCAN_ROC");
    if (tagControl)
        StoreValue(QelItem::kScanROC,
                   FilterIntensity(tagControl, QelItem::kScanROC, "IDS_QEL_SCAN_ROC_OFF"));
}

void CQelImgInfo::GetScanAnalogGain(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kScanGainMaster, "IDS_QEL_SCAN_ANALOG_GAIN_MASTER");
    StoreTitle(QelItem::kScanGainRed, "IDS_QEL_SCAN_ANALOG_GAIN_RED");
    StoreTitle(QelItem::kScanGainGreen, "IDS_QEL_SCAN_ANALOG_GAIN_GREEN");
    StoreTitle(QelItem::kScanGainBlue, "IDS_QEL_SCAN_ANALOG_GAIN_BLUE");
    if (!tagControl)
        return;
    CQelString unit;
    unit.LoadString("IDS_QEL_SCAN_ANALOG_GAIN_UNIT");

    auto master = qel::ReadDouble(tagControl, QelItem::kScanGainMaster);
    if (!master)
        return;
    StoreValue(QelItem::kScanGainMaster, GainText(*master, unit));

    // The scanner records the three channel gains together under the red
    // channel's tag; green and blue have no tags of their own.
    auto channels = qel::ReadDoubleTriple(tagControl, QelItem::kScanGainRed);
    if (!channels)
        return;
    const UInt32 channelItems[] = {QelItem::kScanGainRed, QelItem::kScanGainGreen,
                                   QelItem::kScanGainBlue};
    for (size_t i = 0; i < 3; ++i)
        StoreValue(channelItems[i], GainText((*channels)[i], unit));
}
