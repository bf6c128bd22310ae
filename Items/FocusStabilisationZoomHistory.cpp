// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetAutoFocusMode(IVandelTagControl*) {}
void CQelImgInfo::GetQVControlInfo(IVandelTagControl*) {}
void CQelImgInfo::GetDigitalZoomRatio(IVandelTagControl*) {}
void CQelImgInfo::GetPicProcInfo(IVandelTagControl*) {}
void CQelImgInfo::GetEditHistory(IVandelTagControl*) {}
