// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetDataFormat(IVandelTagControl*) {}
void CQelImgInfo::GetImageSize(IVandelTagControl*) {}
