// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetGPSInfo(IVandelTagControl*, UInt32) {}
