// SPDX-License-Identifier: MIT
// ReadFileTags: empties the store, learns the file kind, classifies the
// device and runs the item formatters in the fixed order of each device kind.
#include "CQelImgInfo.h"
#include "NumberStyle.h"
#include "QelItemIDs.h"

namespace {

using Formatter = void (CQelImgInfo::*)(IVandelTagControl*);

// Every file, whatever made it.
constexpr Formatter kCommonItems[] = {
    &CQelImgInfo::GetShootingDate,   &CQelImgInfo::GetDataFormat,
    &CQelImgInfo::GetImageSize,      &CQelImgInfo::GetColor,
    &CQelImgInfo::GetFocalLength,    &CQelImgInfo::GetExposureMode,
    &CQelImgInfo::GetMeteringMode,   &CQelImgInfo::GetExposureTime,
    &CQelImgInfo::GetExposureComp,   &CQelImgInfo::GetISOSensitivity,
    &CQelImgInfo::GetWhiteBalance,   &CQelImgInfo::GetExposureDiff,
};

// Compact cameras and their movie clips.
constexpr Formatter kCompactItems[] = {
    &CQelImgInfo::GetFlashSyncMode,  &CQelImgInfo::GetSharpening,
    &CQelImgInfo::GetAutoFocusMode,  &CQelImgInfo::GetNoiseReduction,
    &CQelImgInfo::GetQVControlInfo,  &CQelImgInfo::GetConverterLens,
    &CQelImgInfo::GetBRTCNTComp,     &CQelImgInfo::GetGammaTable,
    &CQelImgInfo::GetDigitalZoomRatio, &CQelImgInfo::GetSaturationComp,
};

// Digital SLRs; the location items follow.
constexpr Formatter kSLRItems[] = {
    &CQelImgInfo::GetFlashSyncMode,      &CQelImgInfo::GetSharpening,
    &CQelImgInfo::GetAutoFocusMode,      &CQelImgInfo::GetNoiseReduction,
    &CQelImgInfo::GetQVControlInfo,      &CQelImgInfo::GetLensInfo,
    &CQelImgInfo::GetImageEffectProgram, &CQelImgInfo::GetHueAdjustment,
    &CQelImgInfo::GetColorMode,          &CQelImgInfo::GetFalsificationInfo,
    &CQelImgInfo::GetBRTCNTComp,         &CQelImgInfo::GetGammaTable,
    &CQelImgInfo::GetMixedQBInfo,        &CQelImgInfo::GetImageComment,
    &CQelImgInfo::GetSaturationAdjust,   &CQelImgInfo::GetAutoFlashComp,
    &CQelImgInfo::GetPicProcInfo,        &CQelImgInfo::GetHighSensitivityNR,
    &CQelImgInfo::GetEditHistory,
};

constexpr UInt32 kSLRLocationItems[] = {
    QelItem::kGPSLatitude, QelItem::kGPSLongitude, QelItem::kGPSAltitude,
    QelItem::kGPSImgDirection, QelItem::kGPSTimeStamp,
};

// Film scanners.
constexpr Formatter kScannerItems[] = {
    &CQelImgInfo::GetColorSpace,        &CQelImgInfo::GetScanFilmType,
    &CQelImgInfo::GetScanMultiSample,   &CQelImgInfo::GetScanBitDepth,
    &CQelImgInfo::GetScanAnalogGain,    &CQelImgInfo::GetScanImageEnhance,
    &CQelImgInfo::GetScanICEMode,       &CQelImgInfo::GetScanROCIntensity,
    &CQelImgInfo::GetScanGEMIntensity,  &CQelImgInfo::GetScanShadow,
    &CQelImgInfo::GetScanGrayThreshold, &CQelImgInfo::GetScanHighlight,
};

template <size_t N>
void Run(CQelImgInfo& info, const Formatter (&formatters)[N], IVandelTagControl* tagControl)
{
    for (Formatter formatter : formatters)
        (info.*formatter)(tagControl);
}

}  // namespace

UInt32 CQelImgInfo::ReadFileTags(IVandelTagControl* tagControl)
{
    // The formatters print with snprintf: a host's LC_NUMERIC must not reach them.
    const qel::CNumericScope cNumbers;
    // The language is settled once for the whole read.
    const qel::CTextScope texts;
    m_infoDict.Clear();
    // A host must hand a tag source; without one every formatter stores
    // its title only, as for a file whose reads all fail.
    if (!tagControl) {
        m_fileKind = 0;
    } else if (ITagError* error = tagControl->GetFileKind(&m_fileKind)) {
        error->Release();
        m_fileKind = 0;
    }
    GetMakeAndModel(tagControl, &m_deviceKind);

    Run(*this, kCommonItems, tagControl);
    switch (m_deviceKind) {
    case kDeviceCompact:
    case kDeviceCompactMovie:
        Run(*this, kCompactItems, tagControl);
        break;
    case kDeviceSLR:
        Run(*this, kSLRItems, tagControl);
        for (UInt32 itemID : kSLRLocationItems)
            GetGPSInfo(tagControl, itemID);
        break;
    case kDeviceScanner:
        Run(*this, kScannerItems, tagControl);
        break;
    default:
        break;  // unclassified and other makers' files: the common items only
    }
    return m_infoDict.GetValueCount();
}
