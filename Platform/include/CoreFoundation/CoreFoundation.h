// SPDX-License-Identifier: MIT
// Portable CoreFoundation: the subset of Apple's CoreFoundation API that the
// library uses, with the same names, types, constants and documented
// semantics. Built only where the system has no CoreFoundation (Linux); on
// Apple platforms the system framework is used instead.
//
// This header is the library's own: it adds, to what a host sees through
// <QelImgInfo/QelCoreFoundation.h>, the functions only the library calls.
// Every name is bound under the prefix "Qel", and these stay hidden inside
// the shared library.
#ifndef QEL_PORTABLE_COREFOUNDATION_H
#define QEL_PORTABLE_COREFOUNDATION_H

#if defined(__APPLE__)
// The system framework, which this folder on the include path must not hide.
#include_next <CoreFoundation/CoreFoundation.h>
#else

#include <QelImgInfo/QelCoreFoundation.h>

#define CF_INTERNAL extern __attribute__((visibility("hidden")))

#define __CFStringMakeConstantString QelCFStringMakeConstantString
#define CFStringCreateWithCString QelCFStringCreateWithCString
#define CFStringCreateWithBytes QelCFStringCreateWithBytes
#define CFStringCreateWithCharacters QelCFStringCreateWithCharacters
#define CFStringCreateCopy QelCFStringCreateCopy
#define CFStringCreateMutable QelCFStringCreateMutable
#define CFStringCreateMutableCopy QelCFStringCreateMutableCopy
#define CFStringCreateWithFormat QelCFStringCreateWithFormat
#define CFStringCreateWithFormatAndArguments QelCFStringCreateWithFormatAndArguments
#define CFStringCompare QelCFStringCompare
#define CFStringFindWithOptions QelCFStringFindWithOptions
#define CFStringFind QelCFStringFind
#define CFStringHasPrefix QelCFStringHasPrefix
#define CFStringAppend QelCFStringAppend
#define CFStringAppendCharacters QelCFStringAppendCharacters
#define CFStringAppendCString QelCFStringAppendCString
#define CFStringAppendFormat QelCFStringAppendFormat
#define CFStringAppendFormatAndArguments QelCFStringAppendFormatAndArguments
#define CFStringReplaceAll QelCFStringReplaceAll
#define CFStringReplace QelCFStringReplace
#define CFStringDelete QelCFStringDelete
#define CFStringGetSystemEncoding QelCFStringGetSystemEncoding
#define CFStringIsEncodingAvailable QelCFStringIsEncodingAvailable
#define CFDataCreate QelCFDataCreate
#define CFBundleGetBundleWithIdentifier QelCFBundleGetBundleWithIdentifier
#define CFBundleGetMainBundle QelCFBundleGetMainBundle
#define CFBundleGetIdentifier QelCFBundleGetIdentifier
#define CFBundleOpenBundleResourceMap QelCFBundleOpenBundleResourceMap
#define CFBundleCloseBundleResourceMap QelCFBundleCloseBundleResourceMap
#define CFBundleCopyLocalizedString QelCFBundleCopyLocalizedString

CF_EXTERN_C_BEGIN

typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFBundle* CFBundleRef;
typedef int CFBundleRefNum;

// Strings
CF_INTERNAL CFStringRef __CFStringMakeConstantString(const char* cStr);
#if defined(__cplusplus)
// Each place that names a constant string interns it once and keeps it, so
// that using it again costs no more than the compiler-built constants of the
// Mac do.
#define CFSTR(cStr)                                                                   \
    ([]() -> CFStringRef {                                                            \
        static const CFStringRef constant = __CFStringMakeConstantString("" cStr ""); \
        return constant;                                                              \
    }())
#else
#define CFSTR(cStr) __CFStringMakeConstantString("" cStr "")
#endif

CF_INTERNAL CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr,
                                                  CFStringEncoding encoding);
CF_INTERNAL CFStringRef CFStringCreateWithBytes(CFAllocatorRef alloc, const UInt8* bytes,
                                                CFIndex numBytes, CFStringEncoding encoding,
                                                Boolean isExternalRepresentation);
CF_INTERNAL CFStringRef CFStringCreateWithCharacters(CFAllocatorRef alloc, const UniChar* chars,
                                                     CFIndex numChars);
CF_INTERNAL CFStringRef CFStringCreateCopy(CFAllocatorRef alloc, CFStringRef theString);
CF_INTERNAL CFMutableStringRef CFStringCreateMutable(CFAllocatorRef alloc, CFIndex maxLength);
CF_INTERNAL CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef alloc, CFIndex maxLength,
                                                         CFStringRef theString);
CF_INTERNAL CFStringRef CFStringCreateWithFormat(CFAllocatorRef alloc,
                                                 CFDictionaryRef formatOptions,
                                                 CFStringRef format, ...);
CF_INTERNAL CFStringRef CFStringCreateWithFormatAndArguments(CFAllocatorRef alloc,
                                                             CFDictionaryRef formatOptions,
                                                             CFStringRef format,
                                                             va_list arguments);

CF_INTERNAL CFComparisonResult CFStringCompare(CFStringRef theString1, CFStringRef theString2,
                                               CFStringCompareFlags compareOptions);
CF_INTERNAL Boolean CFStringFindWithOptions(CFStringRef theString, CFStringRef stringToFind,
                                            CFRange rangeToSearch,
                                            CFStringCompareFlags searchOptions, CFRange* result);
CF_INTERNAL CFRange CFStringFind(CFStringRef theString, CFStringRef stringToFind,
                                 CFStringCompareFlags compareOptions);
CF_INTERNAL Boolean CFStringHasPrefix(CFStringRef theString, CFStringRef prefix);

CF_INTERNAL void CFStringAppend(CFMutableStringRef theString, CFStringRef appendedString);
CF_INTERNAL void CFStringAppendCharacters(CFMutableStringRef theString, const UniChar* chars,
                                          CFIndex numChars);
CF_INTERNAL void CFStringAppendCString(CFMutableStringRef theString, const char* cStr,
                                       CFStringEncoding encoding);
CF_INTERNAL void CFStringAppendFormat(CFMutableStringRef theString, CFDictionaryRef formatOptions,
                                      CFStringRef format, ...);
CF_INTERNAL void CFStringAppendFormatAndArguments(CFMutableStringRef theString,
                                                  CFDictionaryRef formatOptions,
                                                  CFStringRef format, va_list arguments);
CF_INTERNAL void CFStringReplaceAll(CFMutableStringRef theString, CFStringRef replacement);
CF_INTERNAL void CFStringReplace(CFMutableStringRef theString, CFRange range,
                                 CFStringRef replacement);
CF_INTERNAL void CFStringDelete(CFMutableStringRef theString, CFRange range);

// Encodings
CF_INTERNAL CFStringEncoding CFStringGetSystemEncoding(void);
CF_INTERNAL Boolean CFStringIsEncodingAvailable(CFStringEncoding encoding);

// Data
CF_INTERNAL CFDataRef CFDataCreate(CFAllocatorRef alloc, const UInt8* bytes, CFIndex length);

// Bundles. A bundle is a directory "<Name>.framework" (or any directory)
// holding Resources/Info.plist and Resources/<lang>.lproj/Localizable.strings.
CF_INTERNAL CFBundleRef CFBundleGetBundleWithIdentifier(CFStringRef bundleID);
CF_INTERNAL CFBundleRef CFBundleGetMainBundle(void);
CF_INTERNAL CFStringRef CFBundleGetIdentifier(CFBundleRef bundle);
CF_INTERNAL CFBundleRefNum CFBundleOpenBundleResourceMap(CFBundleRef bundle);
CF_INTERNAL void CFBundleCloseBundleResourceMap(CFBundleRef bundle, CFBundleRefNum refNum);
CF_INTERNAL CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key,
                                                    CFStringRef value, CFStringRef tableName);

CF_EXTERN_C_END

#endif
#endif
