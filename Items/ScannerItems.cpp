// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetScanICEMode(IVandelTagControl*) {}
void CQelImgInfo::GetScanImageEnhance(IVandelTagControl*) {}
void CQelImgInfo::GetScanMultiSample(IVandelTagControl*) {}
void CQelImgInfo::GetScanFilmType(IVandelTagControl*) {}
void CQelImgInfo::GetScanHighlight(IVandelTagControl*) {}
void CQelImgInfo::GetScanGrayThreshold(IVandelTagControl*) {}
void CQelImgInfo::GetScanShadow(IVandelTagControl*) {}
void CQelImgInfo::GetScanBitDepth(IVandelTagControl*) {}
void CQelImgInfo::GetScanGEMIntensity(IVandelTagControl*) {}
void CQelImgInfo::GetScanROCIntensity(IVandelTagControl*) {}
void CQelImgInfo::GetScanAnalogGain(IVandelTagControl*) {}
