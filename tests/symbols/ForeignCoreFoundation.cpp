// SPDX-License-Identifier: MIT
#include "ForeignCoreFoundation.h"

#include <cstring>

namespace {

ForeignCalls calls;

struct ForeignString {
    long length;
};

}  // namespace

// Plain C names, as another CoreFoundation exports them.
extern "C" {

const void* CFStringCreateWithCString(const void*, const char* text, unsigned)
{
    ++calls.create;
    return new ForeignString{static_cast<long>(std::strlen(text))};
}

long CFStringGetLength(const void* string)
{
    ++calls.length;
    return static_cast<const ForeignString*>(string)->length;
}

void CFRelease(const void* object)
{
    ++calls.release;
    delete static_cast<const ForeignString*>(object);
}

}  // extern "C"

long ForeignStringLength(const char* text)
{
    const void* string = CFStringCreateWithCString(nullptr, text, 0);
    const long length = CFStringGetLength(string);
    CFRelease(string);
    return length;
}

ForeignCalls ForeignCallCounts()
{
    return calls;
}
