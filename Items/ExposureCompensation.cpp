// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetExposureComp(IVandelTagControl*) {}
void CQelImgInfo::GetExposureDiff(IVandelTagControl*) {}
double CQelImgInfo::ValueStepToDouble(const IVandelTagControl::tagStrValueStep*) const { return 0.0; }
const char* CQelImgInfo::ValueStepToString(const IVandelTagControl::tagStrValueStep*) const { return "0"; }
