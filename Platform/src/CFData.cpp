// CFData: an immutable run of bytes.
#include "CFRuntime.h"

#include <algorithm>
#include <cstring>
#include <vector>

struct __CFData : qelcf::CFObject {
    std::vector<UInt8> bytes;
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
        data->bytes.assign(bytes, bytes + length);
    return data;
}

const UInt8* CFDataGetBytePtr(CFDataRef theData)
{
    // An empty CFData still answers a valid pointer, as on the Mac.
    static const UInt8 kNoBytes[1] = {0};
    if (theData == nullptr)
        return nullptr;
    return theData->bytes.empty() ? kNoBytes : theData->bytes.data();
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
