// SPDX-License-Identifier: MIT
// Metering mode (the Exif tag) and ISO sensitivity (the maker's tag, which
// also tells automatic, manual and the extended "HI" settings above the
// camera's top sensitivity).
#include "CQelImgInfo.h"
#include "KeyTables.h"
#include "QelItemIDs.h"
#include "TagReads.h"

using qel::KeyEntry;

namespace {

// Raw metering-mode numbers as the camera writes them; anything else is unknown.
constexpr KeyEntry kMeteringModes[] = {
    {1, "IDS_QEL_METERING_MODE_AVERAGE"}, {2, "IDS_QEL_METERING_MODE_CENTER"},
    {3, "IDS_QEL_METERING_MODE_SPOT"},    {4, "IDS_QEL_METERING_MODE_MULTI_SPOT"},
    {5, "IDS_QEL_METERING_MODE_MATRIX"},  {6, "IDS_QEL_METERING_MODE_PARTIAL"},
};

// The sensitivity record: the mode, then the ISO number.
struct ISORecord {
    UInt16 mode;
    UInt16 number;
};
static_assert(sizeof(ISORecord) == 4, "sensitivity record is two 16-bit halves");

constexpr UInt16 kISOModeNormal = 0;
constexpr UInt16 kISOModeManual = 0x8001;
constexpr UInt16 kISOModeAuto = 0x8009;
// Every other mode is an extended sensitivity, named after the ISO number.

// Extended sensitivities of the cameras whose top sensitivity is ISO 800.
constexpr SInt32 kISO800FileKinds[] = {259, 261, 263};
constexpr UInt32 kISO800Base = 800;
constexpr KeyEntry kExtendedISOAbove800[] = {
    {1000, "IDS_QEL_ISO_SENSITIVITY_HI03"}, {1100, "IDS_QEL_ISO_SENSITIVITY_HI05"},
    {1250, "IDS_QEL_ISO_SENSITIVITY_HI07"}, {1600, "IDS_QEL_ISO_SENSITIVITY_HI1"},
    {3200, "IDS_QEL_ISO_SENSITIVITY_HI2"},
};

// Every other camera tops out at ISO 1600. The two scales name ISO 3200
// differently (HI 1 here, HI 2 above 800), as each camera's menu does.
constexpr UInt32 kISO1600Base = 1600;
constexpr KeyEntry kExtendedISOAbove1600[] = {
    {2000, "IDS_QEL_ISO_SENSITIVITY_HI03"}, {2200, "IDS_QEL_ISO_SENSITIVITY_HI05"},
    {2500, "IDS_QEL_ISO_SENSITIVITY_HI07"}, {3200, "IDS_QEL_ISO_SENSITIVITY_HI1"},
    {6400, "IDS_QEL_ISO_SENSITIVITY_HI2"},
};

// The extended sensitivity as "HI n" over the camera's top sensitivity, or an
// empty text for a number the camera does not offer.
CQelString ExtendedSensitivity(SInt32 fileKind, UInt16 number)
{
    const bool tops800 = qel::Lists(kISO800FileKinds, fileKind);
    const char* key = tops800 ? qel::FindKey(kExtendedISOAbove800, number)
                              : qel::FindKey(kExtendedISOAbove1600, number);
    CQelString text;
    if (key)
        text.LoadStringWithFormat(key, tops800 ? kISO800Base : kISO1600Base);
    return text;
}

}  // namespace

void CQelImgInfo::GetMeteringMode(IVandelTagControl* tagControl)
{
    StoreMappedItem(tagControl, {QelItem::kMeteringMode, "IDS_QEL_METERING_MODE", kMeteringModes,
                                 "IDS_QEL_METERING_MODE_UNKNOWN"});
}

void CQelImgInfo::GetISOSensitivity(IVandelTagControl* tagControl)
{
    StoreTitle(QelItem::kISOSensitivity, "IDS_QEL_ISO_SENSITIVITY");
    auto record = qel::ReadRecord<ISORecord>(tagControl, QelItem::kISOSensitivity, kQelValueISO);
    if (!record)
        return;

    CQelString value;
    if (record->mode == kISOModeManual)
        value.LoadString("IDS_QEL_ISO_SENSITIVITY_MANUAL");
    else if (record->mode == kISOModeAuto)
        value.LoadString("IDS_QEL_ISO_SENSITIVITY_AUTO");
    else if (record->mode != kISOModeNormal)
        value = ExtendedSensitivity(m_fileKind, record->number);
    else
        value.LoadStringWithFormat("IDS_QEL_ISO_SENSITIVITY_NORMAL", UInt32{record->number});
    StoreValue(QelItem::kISOSensitivity, value);
}
