// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetShootingDate(IVandelTagControl*) {}
int CQelImgInfo::DateToString(const tagVxTESKDateTime*, char*, int) { return -1; }
int CQelImgInfo::TimeToString(const tagVxTESKDateTime*, char*, int) { return -1; }
