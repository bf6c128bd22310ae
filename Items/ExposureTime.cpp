// SPDX-License-Identifier: MIT
// Exposure time with the aperture: shutter times below one second as a
// fraction ("1/250"), longer ones in seconds ("30"), then the f-number.
#include "CQelImgInfo.h"
#include "NumberStyle.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <climits>
#include <cstdio>
#include <cstring>

namespace {

constexpr UInt32 kTagFNumber = 0x829D;

// Long exposures are shown in seconds, shorter ones as one over a number.
constexpr double kSecondsThreshold = 1.0;

// Room for any double printed with two decimals (at most 309 digits).
constexpr size_t kNumberRoom = 320;

bool EndsInStopOrZero(const char* text)
{
    size_t length = std::strlen(text);
    return length > 0 && (text[length - 1] == '.' || text[length - 1] == '0');
}

void DropLast(char* text, size_t count)
{
    size_t length = std::strlen(text);
    text[length > count ? length - count : 0] = '\0';
}

// "8.0" shows as "8", "5.6" stays.
void DropZeroDecimal(char* text)
{
    if (EndsInStopOrZero(text))
        DropLast(text, 2);
}

// The 32-bit platform truncated to int with the processor's conversion,
// which answers INT_MIN for NaN, infinity and anything out of range. A
// zero exposure time reaches it as infinity; the same answer is given here
// without an out-of-range conversion.
SInt32 TruncateAsThePlatform(double value)
{
    if (!(value > -2147483649.0 && value < 2147483648.0))
        return INT_MIN;
    return static_cast<SInt32>(value);
}

// Seconds with two decimals, losing the whole decimal part when its last
// digit is zero: 2.00 shows as "2", 2.25 as "2.25", and 1.50 as "1" too.
// Cameras have always shown long times this way; keep 1.5 s as "1".
void PrintSeconds(double seconds, char (&text)[kNumberRoom])
{
    qel::PrintFixed(text, sizeof text, seconds, 2);
    if (EndsInStopOrZero(text))
        DropLast(text, 3);
}

// One over the time, rounded to one decimal with ties upward: 0.004 s is
// "1/250", 0.3 s "1/3.3", 0.4 s "1/2.5".
void PrintFraction(double seconds, char (&text)[kNumberRoom])
{
    double denominator = 1.0 / seconds;
    denominator = TruncateAsThePlatform((denominator + 0.05) * 10.0) * 0.1;
    text[0] = '1';
    text[1] = '/';
    qel::PrintFixed(text + 2, sizeof text - 2, denominator, 1);
    DropZeroDecimal(text);
}

}  // namespace

void CQelImgInfo::GetExposureTime(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kExposureTime, "IDS_QEL_EXPOSURE_TIME");
    auto seconds = qel::ReadDouble(tagControl, QelItem::kExposureTime);
    if (!seconds)
        return;

    char text[kNumberRoom];
    // Zero, negative and NaN times take the fraction layout too.
    if (*seconds >= kSecondsThreshold)
        PrintSeconds(*seconds, text);
    else
        PrintFraction(*seconds, text);
    CQelString value;
    value.LoadStringWithFormat("IDS_QEL_EXPOSURE_TIME_UNIT", text);

    if (auto fNumber = qel::ReadDouble(tagControl, kTagFNumber)) {
        qel::PrintFixed(text, sizeof text, *fNumber, 1);
        DropZeroDecimal(text);
        CQelString aperture;
        aperture.LoadStringWithFormat("IDS_QEL_FNUMBER_PREFIX", text);
        value.Append(aperture);
    }
    StoreValue(QelItem::kExposureTime, value);
}
