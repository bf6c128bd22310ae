// SPDX-License-Identifier: MIT
// Object model shared by every CoreFoundation type of the portable layer.
//
// Each CF object derives from CFObject: an atomic reference count and a
// virtual destructor. Objects are created with CreateObject<T>() holding one
// reference; CFRelease of the last reference destroys them. Immortal objects
// (interned CFSTR constants, bundles found by identifier) ignore retain and
// release and live for the whole process.
#ifndef QEL_PLATFORM_CFRUNTIME_H
#define QEL_PLATFORM_CFRUNTIME_H

#include <CoreFoundation/CoreFoundation.h>

#include <atomic>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace qelcf {

struct CFObject {
    virtual ~CFObject() = default;
    // What a "%@" conversion prints for the object.
    virtual std::u16string Description() const { return u"<CFType>"; }
    std::atomic<CFIndex> retainCount{1};
    bool immortal = false;
};

// A new object holding one reference, owned by the caller until CFRelease.
template <class T, class... Args>
T* CreateObject(Args&&... args)
{
    return std::make_unique<T>(std::forward<Args>(args)...).release();
}

// Process-lifetime storage that is never destroyed, so objects it points to
// stay reachable (and usable) during and after static destruction.
template <class T>
class NoDestructor {
public:
    template <class... Args>
    explicit NoDestructor(Args&&... args)
    {
        ::new (static_cast<void*>(&storage_)) T(std::forward<Args>(args)...);
    }
    NoDestructor(const NoDestructor&) = delete;
    NoDestructor& operator=(const NoDestructor&) = delete;
    T* get() { return std::launder(reinterpret_cast<T*>(&storage_)); }
    T* operator->() { return get(); }
    T& operator*() { return *get(); }

private:
    alignas(T) unsigned char storage_[sizeof(T)];
};

}  // namespace qelcf

#endif
