// Placeholder until these items are written.
#include "CQelImgInfo.h"

void CQelImgInfo::GetSharpening(IVandelTagControl*) {}
void CQelImgInfo::GetImageEffectProgram(IVandelTagControl*) {}
void CQelImgInfo::GetColorMode(IVandelTagControl*) {}
