// SPDX-License-Identifier: MIT
// Item IDs: the keys under which IQelImgInfo stores titles and values. Most
// are the number of the tag the item is read from; 0x7xxxx items are derived.
// kQelAllItemIDs lists every item the library can store, ascending, so a
// host can enumerate them.
#ifndef QEL_ITEM_IDS_H
#define QEL_ITEM_IDS_H

#include <QelImgInfo/QelCoreFoundation.h>

namespace QelItem {
constexpr UInt32 kModel = 0x110;
constexpr UInt32 kExposureTime = 0x829A;
constexpr UInt32 kExposureMode = 0x8822;
constexpr UInt32 kShootingDate = 0x9003;
constexpr UInt32 kExposureComp = 0x9204;
constexpr UInt32 kMeteringMode = 0x9207;
constexpr UInt32 kFocalLength = 0x920A;
constexpr UInt32 kUserComment = 0x9286;
constexpr UInt32 kImageSize = 0x10000;
constexpr UInt32 kColorSpace = 0x10002;
constexpr UInt32 kGPSLatitude = 0x30002;
constexpr UInt32 kGPSLongitude = 0x30004;
constexpr UInt32 kGPSAltitude = 0x30006;
constexpr UInt32 kGPSTimeStamp = 0x30007;
constexpr UInt32 kGPSImgDirection = 0x30011;
constexpr UInt32 kEditHistoryFirst = 0x7009E;  // entries 0x7009E .. 0x700A7
constexpr UInt32 kEditHistoryLast = 0x700A7;
constexpr UInt32 kFlashGroupA = 0x700A8;
constexpr UInt32 kFlashGroupB = 0x700A9;
constexpr UInt32 kFlashGroupC = 0x700AA;
constexpr UInt32 kISOSensitivity = 0x80002;
constexpr UInt32 kColor = 0x80003;
constexpr UInt32 kDataFormat = 0x80004;
constexpr UInt32 kWhiteBalance = 0x80005;
constexpr UInt32 kSharpening = 0x80006;
constexpr UInt32 kAutoFocusMode = 0x80007;
constexpr UInt32 kFlashSyncMode = 0x80008;
constexpr UInt32 kFlashMode = 0x80009;
constexpr UInt32 kExposureDiff = 0x8000E;
constexpr UInt32 kFlashComp = 0x80012;
constexpr UInt32 kStabilisation = 0x8001F;
constexpr UInt32 kFalsification = 0x80020;
constexpr UInt32 kBrightnessContrast = 0x80080;
constexpr UInt32 kToneTable = 0x80081;
constexpr UInt32 kConverterLens = 0x80082;
constexpr UInt32 kLensInfo = 0x80084;
constexpr UInt32 kDigitalZoom = 0x80086;
constexpr UInt32 kColorMode = 0x8008D;
constexpr UInt32 kHueAdjustment = 0x80092;
constexpr UInt32 kSaturationComp = 0x80094;
constexpr UInt32 kNoiseReduction = 0x80095;
constexpr UInt32 kBounceAndWidePanel = 0x800A8;
constexpr UInt32 kImageEffectProgram = 0x800A9;
constexpr UInt32 kSaturationAdjust = 0x800AA;
constexpr UInt32 kPictureProcessing = 0x800B0;
constexpr UInt32 kHighSensitivityNR = 0x800B1;
constexpr UInt32 kScanFilmType = 0x90002;
constexpr UInt32 kScanMultiSample = 0x90040;
constexpr UInt32 kScanBitDepth = 0x90041;
constexpr UInt32 kScanGainMaster = 0x90050;
constexpr UInt32 kScanGainRed = 0x90051;
constexpr UInt32 kScanGainGreen = 0x90052;
constexpr UInt32 kScanGainBlue = 0x90053;
constexpr UInt32 kScanImageEnhance = 0x90060;
constexpr UInt32 kScanICE = 0x90100;
constexpr UInt32 kScanROC = 0x90110;
constexpr UInt32 kScanGEM = 0x90120;
constexpr UInt32 kScanShadow = 0x90200;
constexpr UInt32 kScanGrayThreshold = 0x90201;
constexpr UInt32 kScanHighlight = 0x90202;
}  // namespace QelItem

// Every item ID the library can store, ascending.
constexpr UInt32 kQelAllItemIDs[] = {
    QelItem::kModel, QelItem::kExposureTime, QelItem::kExposureMode, QelItem::kShootingDate,
    QelItem::kExposureComp, QelItem::kMeteringMode, QelItem::kFocalLength,
    QelItem::kUserComment, QelItem::kImageSize, QelItem::kColorSpace,
    QelItem::kGPSLatitude, QelItem::kGPSLongitude, QelItem::kGPSAltitude,
    QelItem::kGPSTimeStamp, QelItem::kGPSImgDirection,
    0x7009E, 0x7009F, 0x700A0, 0x700A1, 0x700A2, 0x700A3, 0x700A4, 0x700A5, 0x700A6, 0x700A7,
    QelItem::kFlashGroupA, QelItem::kFlashGroupB, QelItem::kFlashGroupC,
    QelItem::kISOSensitivity, QelItem::kColor, QelItem::kDataFormat, QelItem::kWhiteBalance,
    QelItem::kSharpening, QelItem::kAutoFocusMode, QelItem::kFlashSyncMode,
    QelItem::kFlashMode, QelItem::kExposureDiff, QelItem::kFlashComp,
    QelItem::kStabilisation, QelItem::kFalsification, QelItem::kBrightnessContrast,
    QelItem::kToneTable, QelItem::kConverterLens, QelItem::kLensInfo,
    QelItem::kDigitalZoom, QelItem::kColorMode, QelItem::kHueAdjustment,
    QelItem::kSaturationComp, QelItem::kNoiseReduction, QelItem::kBounceAndWidePanel,
    QelItem::kImageEffectProgram, QelItem::kSaturationAdjust,
    QelItem::kPictureProcessing, QelItem::kHighSensitivityNR,
    QelItem::kScanFilmType, QelItem::kScanMultiSample, QelItem::kScanBitDepth,
    QelItem::kScanGainMaster, QelItem::kScanGainRed, QelItem::kScanGainGreen,
    QelItem::kScanGainBlue, QelItem::kScanImageEnhance, QelItem::kScanICE,
    QelItem::kScanROC, QelItem::kScanGEM, QelItem::kScanShadow,
    QelItem::kScanGrayThreshold, QelItem::kScanHighlight,
};

// The six items that offer a value list, in the order hosts usually show them.
constexpr UInt32 kQelValueListItemIDs[] = {
    QelItem::kWhiteBalance, QelItem::kSharpening, QelItem::kBrightnessContrast,
    QelItem::kToneTable,    QelItem::kColorMode,  QelItem::kSaturationAdjust,
};

#endif
