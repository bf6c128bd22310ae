// SPDX-License-Identifier: MIT
// Lens description (focal range, aperture range, stabilisation, lens type)
// and the focal length used. Numbers are printed with one decimal and whole
// millimetres and whole f-numbers lose their ".0".
#include "CQelImgInfo.h"
#include "NumberStyle.h"
#include "QelItemIDs.h"
#include "TagReads.h"

#include <cstdio>
#include <string>

namespace {

constexpr UInt32 kTagLensType = 0x80083;

struct LensRecord {
    double minFocalLength;    // mm
    double maxFocalLength;    // mm
    double minFocalAperture;  // widest f-number at the shortest focal length
    double maxFocalAperture;  // widest f-number at the longest focal length
};
static_assert(sizeof(LensRecord) == 32, "lens record is four doubles");

// Bytes of the lens-type record.
constexpr size_t kLensTypeKnown = 0;
constexpr size_t kLensTypeD = 2;
constexpr size_t kLensTypeG = 3;
constexpr size_t kLensTypeStabilised = 4;

// One decimal, whatever the size of the number (a corrupt record may hold
// anything up to NaN or 1e308; the text grows to fit).
std::string OneDecimal(double number)
{
    char text[320];  // room for any double
    const int length = qel::PrintFixed(text, sizeof text, number, 1);
    return length > 0 ? std::string(text, static_cast<size_t>(length)) : std::string();
}

// "18-55" style: both ends when they differ, one number for a prime lens;
// every ".0" goes, so whole numbers read as lens names print them.
std::string LensRange(double shortest, double longest)
{
    std::string text = OneDecimal(shortest);
    if (shortest != longest)
        text += "-" + OneDecimal(longest);
    for (size_t at = text.find(".0"); at != std::string::npos; at = text.find(".0", at))
        text.erase(at, 2);
    return text;
}

CQelString Formatted(const char* key, const std::string& number)
{
    CQelString text;
    text.LoadStringWithFormat(key, number.c_str());
    return text;
}

}  // namespace

void CQelImgInfo::GetLensInfo(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kLensInfo, "IDS_QEL_LENS_INFO");
    auto lens = qel::ReadRecord<LensRecord>(tagControl, QelItem::kLensInfo, kQelValueLens);
    if (!lens)
        return;
    auto type = qel::ReadBytes<8>(tagControl, kTagLensType, kQelValueLensType);
    const bool typeKnown = type && (*type)[kLensTypeKnown] != 0;

    CQelString value;
    if (typeKnown && (*type)[kLensTypeStabilised] != 0)
        value.AppendLoadString("IDS_QEL_LENS_INFO_QV");
    value.Append(Formatted("IDS_QEL_LENS_INFO_UNIT",
                           LensRange(lens->minFocalLength, lens->maxFocalLength)));
    value.Append(" ", kCFStringEncodingASCII);
    value.Append(Formatted("IDS_QEL_LENS_INFO_APERTURE_PREFIX",
                           LensRange(lens->minFocalAperture, lens->maxFocalAperture)));
    if (typeKnown) {
        // G before D: a G-type lens is a D-type lens too.
        if ((*type)[kLensTypeG] != 0)
            value.AppendLoadString("IDS_QEL_LENS_INFO_TYPE_G");
        else if ((*type)[kLensTypeD] != 0)
            value.AppendLoadString("IDS_QEL_LENS_INFO_TYPE_D");
    }
    StoreValue(QelItem::kLensInfo, value);
}

void CQelImgInfo::GetFocalLength(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kFocalLength, "IDS_QEL_FOCAL_LENGTH");
    auto focalLength = qel::ReadDouble(tagControl, QelItem::kFocalLength);
    if (!focalLength)
        return;
    // Only a trailing ".0" goes: whenever the one decimal printed is a 0,
    // the last two characters are dropped (50.0 -> 50, 18.5 stays).
    std::string text = OneDecimal(*focalLength);
    if (text.size() >= 2 && text.back() == '0')
        text.erase(text.size() - 2);
    StoreValue(QelItem::kFocalLength, Formatted("IDS_QEL_FOCAL_LENGTH_UNIT", text));
}
