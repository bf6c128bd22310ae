// SPDX-License-Identifier: MIT
// The application's text encoding, as the Text Encoding Conversion Manager
// reports it. Modern Apple SDKs no longer declare it for 64-bit code, so on
// every platform the library reaches it through this header.
#ifndef QEL_PLATFORM_TEXT_ENCODING_H
#define QEL_PLATFORM_TEXT_ENCODING_H

#include <CoreFoundation/CoreFoundation.h>

typedef UInt32 TextEncoding;

#if defined(__APPLE__)
static inline TextEncoding GetApplicationTextEncoding(void)
{
    return CFStringGetSystemEncoding();
}
#else
#define GetApplicationTextEncoding QelGetApplicationTextEncoding
CF_EXTERN_C_BEGIN
// The encoding of the running application's own texts; UTF-8 here.
CF_INTERNAL TextEncoding GetApplicationTextEncoding(void);
CF_EXTERN_C_END
#endif

#endif
