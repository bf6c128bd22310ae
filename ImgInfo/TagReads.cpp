// SPDX-License-Identifier: MIT
#include "TagReads.h"

#include <cstring>

namespace qel {

bool ReadTag(IVandelTagControl* tags, UInt32 tagID, UInt32 valueType, void* buffer, UInt32 size)
{
    if (!buffer)
        return false;
    std::memset(buffer, 0, size);
    if (!tags)
        return false;
    if (ITagError* error = tags->GetTagValue(tagID, valueType, size, buffer, 0)) {
        error->Release();
        return false;
    }
    return true;
}

std::optional<SInt32> ReadInt32(IVandelTagControl* tags, UInt32 tagID)
{
    return ReadRecord<SInt32>(tags, tagID, kQelValueInt32);
}

std::optional<double> ReadDouble(IVandelTagControl* tags, UInt32 tagID)
{
    return ReadRecord<double>(tags, tagID, kQelValueDouble);
}

std::optional<std::array<double, 3>> ReadDoubleTriple(IVandelTagControl* tags, UInt32 tagID)
{
    return ReadRecord<std::array<double, 3>>(tags, tagID, kQelValueDouble);
}

std::optional<IVandelTagControl::tagStrValueStep> ReadValueStep(IVandelTagControl* tags,
                                                               UInt32 tagID)
{
    return ReadRecord<IVandelTagControl::tagStrValueStep>(tags, tagID, kQelValueStep);
}

}  // namespace qel
