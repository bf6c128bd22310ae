// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetImageComment(IVandelTagControl*) {}
