// SPDX-License-Identifier: MIT
// The CoreFoundation types and functions a host needs to read and release
// the strings QelImgInfo hands it. On Apple platforms this is the system
// framework. Elsewhere it is the library's portable layer: the same types
// and names, every function bound under the prefix "Qel" (CFRelease is
// QelCFRelease, version QELIMGINFO_1), so that another CoreFoundation in the
// same process neither replaces the library's functions nor is replaced by
// them, while host code reads the same on every platform.
//
// Strings hold UTF-16 code units. Objects are reference counted: every
// Create/Copy result is owned by the caller and released with CFRelease.
#ifndef QEL_IMGINFO_COREFOUNDATION_H
#define QEL_IMGINFO_COREFOUNDATION_H

#if defined(__APPLE__)
#include <CoreFoundation/CoreFoundation.h>
#else

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

#if defined(__cplusplus)
#define CF_EXTERN_C_BEGIN extern "C" {
#define CF_EXTERN_C_END }
#else
#define CF_EXTERN_C_BEGIN
#define CF_EXTERN_C_END
#endif

// The functions a host may call; everything else in the layer stays inside
// the library.
#define QEL_CF_EXPORT extern __attribute__((visibility("default")))

#define CFRetain QelCFRetain
#define CFRelease QelCFRelease
#define CFGetRetainCount QelCFGetRetainCount
#define CFStringGetLength QelCFStringGetLength
#define CFStringGetCharacterAtIndex QelCFStringGetCharacterAtIndex
#define CFStringGetCharacters QelCFStringGetCharacters
#define CFStringGetCString QelCFStringGetCString
#define CFStringGetMaximumSizeForEncoding QelCFStringGetMaximumSizeForEncoding
#define CFStringCreateExternalRepresentation QelCFStringCreateExternalRepresentation
#define CFDataGetBytePtr QelCFDataGetBytePtr
#define CFDataGetLength QelCFDataGetLength
#define CFDataGetBytes QelCFDataGetBytes

CF_EXTERN_C_BEGIN

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef int8_t SInt8;
typedef uint16_t UInt16;
typedef int16_t SInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef uint64_t UInt64;
typedef int64_t SInt64;
typedef UInt16 UniChar;
typedef UInt32 UTF32Char;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

typedef long CFIndex;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length)
{
    CFRange range = {location, length};
    return range;
}

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef struct __CFString* CFMutableStringRef;
typedef const struct __CFData* CFDataRef;

// The default allocator; the portable layer has only this one.
#define kCFAllocatorDefault ((CFAllocatorRef)NULL)

typedef CFIndex CFComparisonResult;
enum {
    kCFCompareLessThan = -1L,
    kCFCompareEqualTo = 0,
    kCFCompareGreaterThan = 1
};

typedef CFOptionFlags CFStringCompareFlags;
enum {
    kCFCompareCaseInsensitive = 1,
    kCFCompareBackwards = 4,
    kCFCompareAnchored = 8,
    kCFCompareNonliteral = 16,
    kCFCompareLocalized = 32,
    kCFCompareNumerically = 64
};

typedef UInt32 CFStringEncoding;
enum {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingISOLatin1 = 0x0201,
    kCFStringEncodingNextStepLatin = 0x0B01,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUnicode = 0x0100,
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingNonLossyASCII = 0x0BFF,
    kCFStringEncodingUTF16 = 0x0100,
    kCFStringEncodingUTF16BE = 0x10000100,
    kCFStringEncodingUTF16LE = 0x14000100,
    kCFStringEncodingUTF32 = 0x0c000100,
    kCFStringEncodingUTF32BE = 0x18000100,
    kCFStringEncodingUTF32LE = 0x1c000100
};
// A few of the external encodings (CFStringEncodingExt.h on Apple platforms).
enum {
    kCFStringEncodingMacJapanese = 1,
    kCFStringEncodingISOLatin2 = 0x0202,
    kCFStringEncodingWindowsLatin2 = 0x0501,
    kCFStringEncodingDOSJapanese = 0x0420,
    kCFStringEncodingShiftJIS = 0x0A01,
    kCFStringEncodingEUC_JP = 0x0920,
    kCFStringEncodingISO_2022_JP = 0x0820
};
#define kCFStringEncodingInvalidId (0xffffffffU)

// Base services
QEL_CF_EXPORT CFTypeRef CFRetain(CFTypeRef cf);
QEL_CF_EXPORT void CFRelease(CFTypeRef cf);
QEL_CF_EXPORT CFIndex CFGetRetainCount(CFTypeRef cf);

// Reading strings
QEL_CF_EXPORT CFIndex CFStringGetLength(CFStringRef theString);
QEL_CF_EXPORT UniChar CFStringGetCharacterAtIndex(CFStringRef theString, CFIndex idx);
QEL_CF_EXPORT void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer);
QEL_CF_EXPORT Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                                         CFStringEncoding encoding);
QEL_CF_EXPORT CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
QEL_CF_EXPORT CFDataRef CFStringCreateExternalRepresentation(CFAllocatorRef alloc,
                                                             CFStringRef theString,
                                                             CFStringEncoding encoding,
                                                             UInt8 lossByte);

// Data
QEL_CF_EXPORT const UInt8* CFDataGetBytePtr(CFDataRef theData);
QEL_CF_EXPORT CFIndex CFDataGetLength(CFDataRef theData);
QEL_CF_EXPORT void CFDataGetBytes(CFDataRef theData, CFRange range, UInt8* buffer);

CF_EXTERN_C_END

#endif
#endif
