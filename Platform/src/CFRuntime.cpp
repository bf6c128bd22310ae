// SPDX-License-Identifier: MIT
// Reference counting for every portable CoreFoundation object.
#include "CFRuntime.h"

#include <limits>

using qelcf::CFObject;

namespace {

CFObject* ObjectOf(CFTypeRef cf)
{
    return static_cast<CFObject*>(const_cast<void*>(cf));
}

}  // namespace

CFTypeRef CFRetain(CFTypeRef cf)
{
    if (cf == nullptr)
        return nullptr;
    CFObject* object = ObjectOf(cf);
    if (!object->immortal)
        object->retainCount.fetch_add(1, std::memory_order_relaxed);
    return cf;
}

void CFRelease(CFTypeRef cf)
{
    if (cf == nullptr)
        return;
    CFObject* object = ObjectOf(cf);
    if (object->immortal)
        return;
    if (object->retainCount.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::unique_ptr<CFObject> last(object);
}

CFIndex CFGetRetainCount(CFTypeRef cf)
{
    if (cf == nullptr)
        return 0;
    const CFObject* object = ObjectOf(cf);
    // Constants answer a huge count, as they do on the Mac.
    if (object->immortal)
        return std::numeric_limits<CFIndex>::max();
    return object->retainCount.load(std::memory_order_relaxed);
}
