// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetColor(IVandelTagControl*) {}
void CQelImgInfo::GetColorSpace(IVandelTagControl*) {}
void CQelImgInfo::GetGammaTable(IVandelTagControl*) {}
void CQelImgInfo::GetBRTCNTComp(IVandelTagControl*) {}
void CQelImgInfo::GetSaturationAdjust(IVandelTagControl*) {}
void CQelImgInfo::GetSaturationComp(IVandelTagControl*) {}
void CQelImgInfo::GetHueAdjustment(IVandelTagControl*) {}
void CQelImgInfo::GetNoiseReduction(IVandelTagControl*) {}
void CQelImgInfo::GetHighSensitivityNR(IVandelTagControl*) {}
void CQelImgInfo::GetConverterLens(IVandelTagControl*) {}
void CQelImgInfo::GetFalsificationInfo(IVandelTagControl*) {}
