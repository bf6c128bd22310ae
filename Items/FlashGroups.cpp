// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetMixedQBInfo_Group(UInt16, UInt16, UInt16, UInt8, UInt8, UInt8) {}
void CQelImgInfo::GetMixedQBInfo_BounceAndWidePanel(UInt8, bool) {}
int CQelImgInfo::GetMixedQBInfo_FlashCompensation(char, CQelString*) { return 0; }
int CQelImgInfo::GetMixedQBInfo_FlashAmount(UInt8, CQelString*) { return 0; }
void CQelImgInfo::GetMixedQBInfo_GuideNumber(double, CQelString*) {}
