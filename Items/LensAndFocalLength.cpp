// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetLensInfo(IVandelTagControl*) {}
void CQelImgInfo::GetFocalLength(IVandelTagControl*) {}
