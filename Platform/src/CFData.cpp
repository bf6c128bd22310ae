// SPDX-License-Identifier: MIT
// CFData: an immutable run of bytes.
#include "CFDataInternal.h"
#include "CFRuntime.h"

#include <algorithm>
#include <cstring>
#include <utility>

struct __CFData : qelcf::CFObject {
    // Held as a string so that encoded text is handed over, not copied.
    std::string bytes;
    std::u16string Description() const override
    {
        std::string text = "<CFData length " + std::to_string(bytes.size()) + ">";
        return std::u16string(text.begin(), text.end());
    }
};

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length)
{
    __CFData* data = qelcf::CreateObject<__CFData>();
    if (bytes != nullptr && length > 0)
        data->bytes.assign(reinterpret_cast<const char*>(bytes), static_cast<size_t>(length));
    return data;
}

namespace qelcf {

CFDataRef CreateDataTakingBytes(std::string bytes)
{
    __CFData* data = CreateObject<__CFData>();
    data->bytes = std::move(bytes);
    return data;
}

}  // namespace qelcf

const UInt8* CFDataGetBytePtr(CFDataRef theData)
{
    // An empty CFData still answers a valid pointer, as on the Mac.
    static const UInt8 kNoBytes[1] = {0};
    if (theData == nullptr)
        return nullptr;
    return theData->bytes.empty() ? kNoBytes : reinterpret_cast<const UInt8*>(theData->bytes.data());
}

CFIndex CFDataGetLength(CFDataRef theData)
{
    return theData ? static_cast<CFIndex>(theData->bytes.size()) : 0;
}

void CFDataGetBytes(CFDataRef theData, CFRange range, UInt8* buffer)
{
    if (theData == nullptr || buffer == nullptr)
        return;
    const CFIndex size = static_cast<CFIndex>(theData->bytes.size());
    const CFIndex location = std::clamp<CFIndex>(range.location, 0, size);
    const CFIndex count = std::clamp<CFIndex>(range.length, 0, size - location);
    if (count > 0)
        std::memcpy(buffer, theData->bytes.data() + location, static_cast<size_t>(count));
}
