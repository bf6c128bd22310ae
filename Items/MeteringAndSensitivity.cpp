// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetMeteringMode(IVandelTagControl*) {}
void CQelImgInfo::GetISOSensitivity(IVandelTagControl*) {}
