// SPDX-License-Identifier: MIT
// CQelImgInfo: the image-information object behind IQelImgInfo. A read fills
// its dictionary through the item formatters (one file of Items/ per group of
// items); the export, grid and value-list operations only read it.
#ifndef QEL_CQELIMGINFO_H
#define QEL_CQELIMGINFO_H

#include "CQelInfoDictionary.h"
#include "CQelString.h"
#include "IQelImgInfo.h"
#include "IVandelTagControl.h"
#include "KeyTables.h"
#include "ValueListTables.h"

// Device kinds, from the Make/Model classification.
enum QelDeviceKind : SInt32 {
    kDeviceUnknown = 0,
    kDeviceCompact = 1,       // the maker's compact line
    kDeviceSLR = 2,           // the maker's digital SLRs
    kDeviceCompactMovie = 3,  // movie clip of a compact camera
    kDeviceScanner = 4,       // the maker's film scanners
    kDeviceOtherMaker = 5,
};

class CQelImgInfo : public IQelImgInfo {
public:
    CQelImgInfo();
    ~CQelImgInfo() override;
    CQelImgInfo& operator=(const CQelImgInfo& other);

    // IQelImgInfo
    void Destroy() override;
    UInt32 ReadFileTags(IVandelTagControl* tagControl) override;
    UInt32 GetLayoutItem(UInt32 row, UInt32 column) override;
    UInt32 GetLayoutRows() const override;
    UInt32 GetLayoutCols() const override;
    UInt32 GetInfoString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                         CFStringEncoding encoding) override;
    UInt32 GetInfoStringLength(UInt32 itemID, CFStringEncoding encoding) override;
    CFStringRef CopyInfoCFString(UInt32 itemID) override;
    UInt32 GetLayoutString(UInt32 row, UInt32 column, char* buffer, UInt32 bufferSize,
                           CFStringEncoding encoding) override;
    UInt32 GetLayoutStringLength(UInt32 row, UInt32 column, CFStringEncoding encoding) override;
    CFStringRef CopyLayoutCFString(UInt32 row, UInt32 column) override;
    UInt32 GetInfoTitleString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                              CFStringEncoding encoding) const override;
    UInt32 GetInfoTitleStringLength(UInt32 itemID, CFStringEncoding encoding) const override;
    CFStringRef CopyInfoTitleCFString(UInt32 itemID) const override;
    UInt32 GetInfoValueString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                              CFStringEncoding encoding) const override;
    UInt32 GetInfoValueStringLength(UInt32 itemID, CFStringEncoding encoding) const override;
    CFStringRef CopyInfoValueCFString(UInt32 itemID) const override;
    UInt32 GetInfoValueListCount(UInt32 itemID) override;
    SInt32 GetInfoValueListCurrentIndex(UInt32 itemID) const override;
    UInt32 GetInfoValueListItemString(UInt32 itemID, UInt32 index, UInt32* value, char* buffer,
                                      UInt32 bufferSize, CFStringEncoding encoding) override;
    UInt32 GetInfoValueListItemStringLength(UInt32 itemID, UInt32 index,
                                            CFStringEncoding encoding) override;
    CFStringRef CopyInfoValueListItemCFString(UInt32 itemID, UInt32 index,
                                              UInt32* value) override;

    // Read driver and classification (ImgInfo/ReadDriver.cpp)
    void GetMakeAndModel(IVandelTagControl* tagControl, SInt32* deviceKind);
    void SwapValueIfRotate(IVandelTagControl* tagControl, SInt32* first, SInt32* second);

    // Scanner items (Items/ScannerItems.cpp)
    void GetScanICEMode(IVandelTagControl* tagControl);
    void GetScanImageEnhance(IVandelTagControl* tagControl);
    void GetScanMultiSample(IVandelTagControl* tagControl);
    void GetScanFilmType(IVandelTagControl* tagControl);
    void GetScanHighlight(IVandelTagControl* tagControl);
    void GetScanGrayThreshold(IVandelTagControl* tagControl);
    void GetScanShadow(IVandelTagControl* tagControl);
    void GetScanBitDepth(IVandelTagControl* tagControl);
    void GetScanGEMIntensity(IVandelTagControl* tagControl);
    void GetScanROCIntensity(IVandelTagControl* tagControl);
    void GetScanAnalogGain(IVandelTagControl* tagControl);

    // Tone and colour adjustments (Items/ToneAndColorItems.cpp)
    void GetColor(IVandelTagControl* tagControl);
    void GetColorSpace(IVandelTagControl* tagControl);
    void GetGammaTable(IVandelTagControl* tagControl);
    void GetBRTCNTComp(IVandelTagControl* tagControl);
    void GetSaturationAdjust(IVandelTagControl* tagControl);
    void GetSaturationComp(IVandelTagControl* tagControl);
    void GetHueAdjustment(IVandelTagControl* tagControl);
    void GetNoiseReduction(IVandelTagControl* tagControl);
    void GetHighSensitivityNR(IVandelTagControl* tagControl);
    void GetConverterLens(IVandelTagControl* tagControl);
    void GetFalsificationInfo(IVandelTagControl* tagControl);

    // Metering and sensitivity (Items/MeteringAndSensitivity.cpp)
    void GetMeteringMode(IVandelTagControl* tagControl);
    void GetISOSensitivity(IVandelTagControl* tagControl);

    // Exposure mode and scene programs (Items/ExposureMode.cpp)
    void GetExposureMode(IVandelTagControl* tagControl);

    // White balance (Items/WhiteBalance.cpp)
    void GetWhiteBalance(IVandelTagControl* tagControl);

    // Value steps and exposure compensation (Items/ExposureCompensation.cpp)
    double ValueStepToDouble(const IVandelTagControl::tagStrValueStep* record) const;
    const char* ValueStepToString(const IVandelTagControl::tagStrValueStep* record) const;
    void GetExposureComp(IVandelTagControl* tagControl);
    void GetExposureDiff(IVandelTagControl* tagControl);
    // The one layout of both: title, then the signed offset in its unit.
    void GetExposureOffset(IVandelTagControl* tagControl, UInt32 itemID, const char* titleKey,
                           const char* unitKey);

    // Sharpening, picture effects, colour mode (Items/SharpeningEffectsColorMode.cpp)
    void GetSharpening(IVandelTagControl* tagControl);
    void GetImageEffectProgram(IVandelTagControl* tagControl);
    void GetColorMode(IVandelTagControl* tagControl);

    // Data format and image size (Items/DataFormatAndImageSize.cpp)
    void GetDataFormat(IVandelTagControl* tagControl);
    void GetImageSize(IVandelTagControl* tagControl);

    // Lens and focal length (Items/LensAndFocalLength.cpp)
    void GetLensInfo(IVandelTagControl* tagControl);
    void GetFocalLength(IVandelTagControl* tagControl);

    // Focus, stabilisation, zoom, processing, edit history
    // (Items/FocusStabilisationZoomHistory.cpp)
    void GetAutoFocusMode(IVandelTagControl* tagControl);
    void GetQVControlInfo(IVandelTagControl* tagControl);
    void GetDigitalZoomRatio(IVandelTagControl* tagControl);
    void GetPicProcInfo(IVandelTagControl* tagControl);
    void GetEditHistory(IVandelTagControl* tagControl);

    // Flash sync and control modes (Items/FlashModes.cpp)
    void GetFlashSyncMode(IVandelTagControl* tagControl);
    void GetMixedQBInfo(IVandelTagControl* tagControl);
    void GetFlashAutoMode(IVandelTagControl* tagControl);

    // Multi-flash groups (Items/FlashGroups.cpp)
    void GetMixedQBInfo_Group(UInt16 modeA, UInt16 modeB, UInt16 modeC, UInt8 levelA,
                              UInt8 levelB, UInt8 levelC);
    void GetMixedQBInfo_BounceAndWidePanel(UInt8 bounce, bool widePanel);
    int GetMixedQBInfo_FlashCompensation(char level, CQelString* out);
    int GetMixedQBInfo_FlashAmount(UInt8 code, CQelString* out);
    void GetMixedQBInfo_GuideNumber(double guideNumber, CQelString* out);

    // Flash compensation (Items/FlashCompensation.cpp)
    void GetAutoFlashComp(IVandelTagControl* tagControl);

    // Shooting date and time (Items/ShootingDate.cpp)
    void GetShootingDate(IVandelTagControl* tagControl);
    int DateToString(const tagVxTESKDateTime* dateTime, char* out, int size);
    int TimeToString(const tagVxTESKDateTime* dateTime, char* out, int size);

    // Exposure time (Items/ExposureTime.cpp)
    void GetExposureTime(IVandelTagControl* tagControl);

    // Image comment (Items/ImageComment.cpp)
    void GetImageComment(IVandelTagControl* tagControl);

    // Location (Items/Location.cpp)
    void GetGPSInfo(IVandelTagControl* tagControl, UInt32 itemID);

    // State, readable by tests and the value lists.
    SInt32 DeviceKind() const { return m_deviceKind; }
    SInt32 FileKind() const { return m_fileKind; }
    const CQelInfoDictionary& Dictionary() const { return m_infoDict; }

protected:
    // Helpers shared by the formatters.
    // Loads the title key and stores it for the item.
    void StoreTitle(UInt32 itemID, const char* key);
    // Stores the text as the item's value.
    void StoreValue(UInt32 itemID, const CQelString& value);
    // Loads the key and stores it as the item's value; "" or null stores an
    // empty value.
    void StoreValueKey(UInt32 itemID, const char* key);

    // An item whose value is the key a table gives for the one integer its
    // tag holds; the title is stored even when the tag cannot be read.
    struct MappedItem {
        UInt32 itemID;         // also the tag the integer is read from
        const char* titleKey;
        qel::KeyTable table;
        const char* fallback;  // for a number the table lacks; null stores no value
        // Where the number's position in the item's value list goes, if anywhere.
        SInt32 CQelImgInfo::*listIndex = nullptr;
    };
    void StoreMappedItem(IVandelTagControl* tagControl, const MappedItem& item);
    // Title, then the tag's integer printed plainly.
    void StoreIntegerItem(IVandelTagControl* tagControl, UInt32 itemID, const char* titleKey);

    // The choices of an item's value list for this object's device kind;
    // empty for an item without a list (ImgInfo/ValueLists.cpp).
    qel::ValueListTable ListEntries(UInt32 itemID) const;

    CQelInfoDictionary m_infoDict;
    SInt32 m_deviceKind = kDeviceUnknown;
    SInt32 m_fileKind = 0;
    // Current positions in the value lists. A read does not reset them: a
    // file whose setting is not in the list leaves the earlier file's index.
    SInt32 m_wbListIndex = -1;
    SInt32 m_sharpeningListIndex = -1;
    SInt32 m_brtcntListIndex = -1;  // never written: brightness/contrast has no current choice
    SInt32 m_gammaListIndex = -1;
    SInt32 m_colorModeListIndex = -1;
    SInt32 m_saturationListIndex = -1;

private:
    // Where the export joins a title and a value into one line and the value
    // lists build an entry's text; kept so that its buffer serves text after
    // text without allocating.
    CQelString m_line;
    // The item whose joined line m_line holds, and the store's revision it
    // was joined from; 0 when m_line holds anything else.
    UInt32 m_lineItem = 0;
    UInt64 m_lineRevision = 0;
    CQelString& EmptyScratchText()
    {
        m_lineItem = 0;
        m_line.Clear();
        return m_line;
    }
    // The display line of an item (DisplayLine), joined again only when the
    // item or the store changed.
    const CQelString* LineOf(UInt32 itemID);

    // The value list of an item: its choices, those of compact cameras and
    // their movies where they differ, and its current-position member.
    struct ValueList {
        UInt32 itemID;
        qel::ValueListTable entries;
        qel::ValueListTable compactEntries;
        SInt32 CQelImgInfo::*current;
    };
    // Null for an item without a value list.
    static const ValueList* FindValueList(UInt32 itemID);
};

#endif
