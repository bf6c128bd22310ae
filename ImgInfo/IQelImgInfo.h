// SPDX-License-Identifier: MIT
// QelImgInfo: the shooting information of one image file as localized,
// human-readable titles and values, laid out in a display grid per kind of
// device, with value lists for six adjustable settings.
//
//   IQelImgInfo* info = IQelImgInfo::CreateImageInfo();
//   info->ReadFileTags(tagSource);            // once per image file
//   for (UInt32 col = 0; col < info->GetLayoutCols(); ++col)
//       for (UInt32 row = 0; row < info->GetLayoutRows(); ++row)
//           if (CFStringRef line = info->CopyLayoutCFString(row, col)) { ...; CFRelease(line); }
//   info->Destroy();
//
// Buffers are filled whole or not at all: a text that does not fit leaves the
// buffer zeroed and 0 is answered. Copy... results belong to the caller.
// The virtual slot order below is binding; hosts call through the table.
// Threads: each thread may use objects of its own; a host that shares one
// object between threads must serialise every call on it.
#ifndef QEL_IQELIMGINFO_H
#define QEL_IQELIMGINFO_H

#include <QelImgInfo/QelCoreFoundation.h>

#include "IVandelTagControl.h"
#include "QelItemIDs.h"

#if defined(_WIN32)
#define QEL_EXPORT __declspec(dllexport)
#else
#define QEL_EXPORT __attribute__((visibility("default")))
#endif

class QEL_EXPORT IQelImgInfo {
public:
    // A new object, owned by the caller until Destroy.
    static IQelImgInfo* CreateImageInfo();

    virtual void Destroy() = 0;                                               // 0
    // Reads one file; answers the number of items that received a value.
    virtual UInt32 ReadFileTags(IVandelTagControl* tagControl) = 0;           // 1

    // Display grid of the device kind of the last file read.
    virtual UInt32 GetLayoutItem(UInt32 row, UInt32 column) = 0;              // 2
    virtual UInt32 GetLayoutRows() const = 0;                                 // 3
    virtual UInt32 GetLayoutCols() const = 0;                                 // 4

    // Title and value joined into one display line.
    virtual UInt32 GetInfoString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                                 CFStringEncoding encoding) = 0;              // 5
    virtual UInt32 GetInfoStringLength(UInt32 itemID, CFStringEncoding encoding) = 0;  // 6
    virtual CFStringRef CopyInfoCFString(UInt32 itemID) = 0;                  // 7

    virtual UInt32 GetLayoutString(UInt32 row, UInt32 column, char* buffer, UInt32 bufferSize,
                                   CFStringEncoding encoding) = 0;            // 8
    virtual UInt32 GetLayoutStringLength(UInt32 row, UInt32 column,
                                         CFStringEncoding encoding) = 0;      // 9
    virtual CFStringRef CopyLayoutCFString(UInt32 row, UInt32 column) = 0;    // 10

    virtual UInt32 GetInfoTitleString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                                      CFStringEncoding encoding) const = 0;   // 11
    virtual UInt32 GetInfoTitleStringLength(UInt32 itemID,
                                            CFStringEncoding encoding) const = 0;  // 12
    virtual CFStringRef CopyInfoTitleCFString(UInt32 itemID) const = 0;       // 13

    virtual UInt32 GetInfoValueString(UInt32 itemID, char* buffer, UInt32 bufferSize,
                                      CFStringEncoding encoding) const = 0;   // 14
    virtual UInt32 GetInfoValueStringLength(UInt32 itemID,
                                            CFStringEncoding encoding) const = 0;  // 15
    virtual CFStringRef CopyInfoValueCFString(UInt32 itemID) const = 0;       // 16

    // Value lists of white balance, sharpening, brightness/contrast, tone
    // table, colour mode and saturation adjustment.
    virtual UInt32 GetInfoValueListCount(UInt32 itemID) = 0;                  // 17
    virtual SInt32 GetInfoValueListCurrentIndex(UInt32 itemID) const = 0;     // 18
    virtual UInt32 GetInfoValueListItemString(UInt32 itemID, UInt32 index, UInt32* value,
                                              char* buffer, UInt32 bufferSize,
                                              CFStringEncoding encoding) = 0; // 19
    virtual UInt32 GetInfoValueListItemStringLength(UInt32 itemID, UInt32 index,
                                                    CFStringEncoding encoding) = 0;  // 20
    virtual CFStringRef CopyInfoValueListItemCFString(UInt32 itemID, UInt32 index,
                                                      UInt32* value) = 0;     // 21

    virtual ~IQelImgInfo() = default;                                         // 22, 23
};

#endif
