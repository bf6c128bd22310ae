// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetFlashSyncMode(IVandelTagControl*) {}
void CQelImgInfo::GetMixedQBInfo(IVandelTagControl*) {}
void CQelImgInfo::GetFlashAutoMode(IVandelTagControl*) {}
