// SPDX-License-Identifier: MIT
// CFData for the other areas of the layer.
#ifndef QEL_PLATFORM_CFDATAINTERNAL_H
#define QEL_PLATFORM_CFDATAINTERNAL_H

#include <CoreFoundation/CoreFoundation.h>

#include <string>

namespace qelcf {

// A new CFData that takes over `bytes` instead of copying them.
CFDataRef CreateDataTakingBytes(std::string bytes);

}  // namespace qelcf

#endif
