// SPDX-License-Identifier: MIT
// Exposure offsets delivered as a count of steps and the size of one step
// (a third or a sixth of a stop), as a number and as signed text, and the
// two items shown with them: exposure compensation and exposure difference.
#include "CQelImgInfo.h"
#include "NumberStyle.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

double CQelImgInfo::ValueStepToDouble(const IVandelTagControl::tagStrValueStep* record) const
{
    if (!record || record->value == 0 || record->stepNumerator == 0 ||
        record->stepDenominator == 0)
        return 0.0;

    // Two 16-bit fields: the product stays within 2^30.
    SInt32 product = SInt32{record->value} * record->stepNumerator;
    SInt32 denominator = record->stepDenominator;
    // Cameras deliver positive step sizes; should a negative one arrive, its
    // sign moves to the product so the count of whole steps stays finite.
    if (denominator < 0) {
        product = -product;
        denominator = -denominator;
    }

    // Whole steps and the part of a step left over: what counting the step
    // size off the product gives, the count negative for a negative offset.
    SInt32 whole = product / denominator;
    SInt32 rest = product % denominator;

    // Steps are halves, thirds and sixths of a stop: cancel those factors.
    for (SInt32 factor : {2, 3, 5}) {
        while (rest % factor == 0 && denominator % factor == 0) {
            rest /= factor;
            denominator /= factor;
        }
    }

    double magnitude = std::abs(whole) + std::abs(rest) / static_cast<double>(denominator);
    return whole < 0 || product < 0 ? -magnitude : magnitude;
}

const char* CQelImgInfo::ValueStepToString(const IVandelTagControl::tagStrValueStep* record) const
{
    // One buffer per thread: objects read on worker threads each keep their
    // text until that thread converts again.
    thread_local char szFraction[32];
    double number = ValueStepToDouble(record);
    // Only an exact zero loses its sign and decimal; -0.04 stays "-0.0".
    if (number == 0.0)
        std::snprintf(szFraction, sizeof szFraction, "0");
    else
        qel::PrintFixed(szFraction, sizeof szFraction, number, 1, true);
    return szFraction;
}

void CQelImgInfo::GetExposureOffset(IVandelTagControl* tagControl, UInt32 itemID,
                                    const char* titleKey, const char* unitKey)
{
    StoreTitle(itemID, titleKey);
    auto record = qel::ReadValueStep(tagControl, itemID);
    if (!record)
        return;
    CQelString value;
    value.LoadStringWithFormat(unitKey, ValueStepToString(&*record));
    StoreValue(itemID, value);
}

void CQelImgInfo::GetExposureComp(IVandelTagControl* tagControl)
{
    GetExposureOffset(tagControl, QelItem::kExposureComp, "IDS_QEL_EXPOSURE_COMP",
                      "IDS_QEL_EXPOSURE_COMP_UNIT");
}

void CQelImgInfo::GetExposureDiff(IVandelTagControl* tagControl)
{
    GetExposureOffset(tagControl, QelItem::kExposureDiff, "IDS_QEL_EXPOSURE_DIFF",
                      "IDS_QEL_EXPOSURE_DIFF_UNIT");
}
