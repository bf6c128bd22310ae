// SPDX-License-Identifier: MIT
// The tag source a host hands to IQelImgInfo::ReadFileTags: an object of the
// sibling tag-reading library, already opened on one image file. The library
// only calls slots 3, 4, 5 and 15 and the error object's Release; the slot
// positions are binding because host objects are built against this layout.
#ifndef QEL_IVANDEL_TAG_CONTROL_H
#define QEL_IVANDEL_TAG_CONTROL_H

#include <QelImgInfo/QelCoreFoundation.h>
#include <cstddef>

// Error object returned by a failed read. Whoever receives it owns it and
// disposes of it with Release (third slot); its content is never shown.
class ITagError {
public:
    virtual UInt32 GetErrorCode() const { return 0; }
    virtual const char* GetErrorText() const { return ""; }
    virtual void Release() = 0;

protected:
    ~ITagError() = default;
};

// How GetTagValue delivers a value (its valueType argument).
enum QelTagValueType : UInt32 {
    kQelValueText = 2,           // 8-bit text, zero-terminated
    kQelValueInt32 = 3,          // signed 32-bit integer(s), host order
    kQelValueDouble = 4,         // 64-bit IEEE double(s), host order
    kQelValueStep = 17,          // IVandelTagControl::tagStrValueStep
    kQelValueIntensity = 19,     // 56 bytes: f64 on/off at 0, f64 intensity at 16
    kQelValueLens = 256,         // four f64: focal range and apertures
    kQelValueFlash = 257,        // 8 bytes: flash-used flag, second flash flag
    kQelValueFlashCompSelector = 259,  // 16 bytes: byte 4 selects a source
    kQelValueISO = 260,          // two u16: sensitivity mode, ISO number
    kQelValueLensType = 261,     // 8 single bytes
    kQelValueWhiteBalance = 266, // u32 mode, s32 colour temperature
    kQelValueMixedFlash = 271,   // 44-byte multi-flash record
    kQelValuePictureProcessing = 277,  // "0100" then three s32
    kQelValueStabilisation = 279       // "0100" then single bytes
};

class IVandelTagControl {
public:
    // A number delivered as a whole count of steps and the size of one step:
    // value * stepNumerator / stepDenominator, 0 when any field is 0.
    struct tagStrValueStep {
        SInt16 value;
        SInt16 stepNumerator;
        SInt16 stepDenominator;
    };

    // Slots 0 to 2: not used by this library.
    virtual UInt32 GetVersion() { return 0; }
    virtual UInt32 GetTagCount() { return 0; }
    virtual UInt32 GetTagIDAtIndex(UInt32 /*position*/) { return 0; }

    // Slot 3: the value type in which the tag is naturally delivered.
    virtual UInt32 GetTagInfo(UInt32 tagID, UInt32 index) = 0;
    // Slot 4: the byte length of the tag's data.
    virtual UInt32 GetTagSize(UInt32 tagID, UInt32 index) = 0;
    // Slot 5: fills at most bufferSize bytes; null on success, otherwise an
    // error object that the caller releases once.
    virtual ITagError* GetTagValue(UInt32 tagID, UInt32 valueType, UInt32 bufferSize,
                                   void* buffer, UInt32 index) = 0;

    // Slots 6 to 14: not used by this library.
    virtual UInt32 GetTagCountInGroup(UInt32 /*group*/) { return 0; }
    virtual Boolean HasTag(UInt32 /*tagID*/) { return false; }
    virtual ITagError* SetTagValue(UInt32, UInt32, UInt32, const void*, UInt32) { return nullptr; }
    virtual ITagError* RemoveTag(UInt32 /*tagID*/) { return nullptr; }
    virtual ITagError* Commit() { return nullptr; }
    virtual ITagError* Revert() { return nullptr; }
    virtual UInt32 GetThumbnailSize() { return 0; }
    virtual ITagError* GetThumbnail(UInt32 /*bufferSize*/, void* /*buffer*/) { return nullptr; }
    virtual UInt32 GetFileFormat() { return 0; }

    // Slot 15: the model-family code of the file.
    virtual ITagError* GetFileKind(SInt32* fileKind) = 0;

    virtual ~IVandelTagControl() = default;
};

// The interface's date-and-time record.
struct tagVxTESKDateTime {
    UInt16 year;
    UInt16 month;
    UInt16 day;
    UInt16 hour;
    UInt16 minute;
    UInt16 second;
    UInt32 millisecond;
};

static_assert(sizeof(IVandelTagControl::tagStrValueStep) == 6, "value-step record is 6 bytes");
static_assert(offsetof(IVandelTagControl::tagStrValueStep, stepNumerator) == 2, "layout");
static_assert(offsetof(IVandelTagControl::tagStrValueStep, stepDenominator) == 4, "layout");
static_assert(sizeof(tagVxTESKDateTime) == 16, "date-time record is 16 bytes");
static_assert(offsetof(tagVxTESKDateTime, second) == 10, "layout");
static_assert(offsetof(tagVxTESKDateTime, millisecond) == 12, "layout");

#endif
