// SPDX-License-Identifier: MIT
// The flash records the flash items read: the flash state (was the flash
// fired at all) and the 44-byte multi-flash record, whose layout depends on
// its four-character version and, from "0101" on, on which flash (an
// optional unit or the built-in one) controlled the shot. Each layout has
// its own struct and its own reader; fields are taken byte by byte in the
// little-endian order the tag source delivers, never by casting the buffer.
#ifndef QEL_MIXED_FLASH_RECORD_H
#define QEL_MIXED_FLASH_RECORD_H

#include "CQelString.h"
#include "IVandelTagControl.h"
#include "KeyTables.h"
#include "TagReads.h"

#include <cstring>
#include <optional>

namespace qel {

constexpr UInt32 kTagFlashState = 0x80087;  // value type 257, 8 bytes
constexpr UInt32 kTagMixedFlash = 0x800A8;  // value type 271, 44 bytes

// What a flash item shows when the flash took no part or the setting is
// unknown: a single blank, which still counts as a value.
inline CQelString FlashBlank()
{
    return CQelString(" ", kCFStringEncodingASCII);
}

// Byte 0: the flash-used flag; byte 1: a second flash flag.
struct FlashState {
    UInt8 used;
    UInt8 second;
};

inline std::optional<FlashState> ReadFlashState(IVandelTagControl* tags)
{
    auto bytes = ReadBytes<8>(tags, kTagFlashState, kQelValueFlash);
    if (!bytes)
        return std::nullopt;
    return FlashState{(*bytes)[0], (*bytes)[1]};
}

using MixedFlashBytes = Bytes<44>;

inline std::optional<MixedFlashBytes> ReadMixedFlash(IVandelTagControl* tags)
{
    return ReadBytes<44>(tags, kTagMixedFlash, kQelValueMixedFlash);
}

enum class MixedFlashVersion { kUnknown, k0100, k0101, k0102 };

inline MixedFlashVersion VersionOf(const MixedFlashBytes& record)
{
    if (std::memcmp(record.data(), "0100", 4) == 0)
        return MixedFlashVersion::k0100;
    if (std::memcmp(record.data(), "0101", 4) == 0)
        return MixedFlashVersion::k0101;
    if (std::memcmp(record.data(), "0102", 4) == 0)
        return MixedFlashVersion::k0102;
    return MixedFlashVersion::kUnknown;
}

// Little-endian fields at byte offsets.
inline UInt16 U16At(const MixedFlashBytes& b, size_t at)
{
    return static_cast<UInt16>(b[at] | (b[at + 1] << 8));
}

inline double F64At(const MixedFlashBytes& b, size_t at)
{
    UInt64 bits = 0;
    for (size_t i = 0; i < 8; ++i)
        bits |= static_cast<UInt64>(b[at + i]) << (8 * i);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Remote flash groups A, B and C: a mode code and a level each.
struct FlashGroups {
    UInt16 modeA = 0, modeB = 0, modeC = 0;
    UInt8 levelA = 0, levelB = 0, levelC = 0;
};

inline FlashGroups GroupsAt(const MixedFlashBytes& b, size_t modes, size_t levels)
{
    return {U16At(b, modes), U16At(b, modes + 2), U16At(b, modes + 4),
            b[levels], b[levels + 1], b[levels + 2]};
}

// "0100": an external unit reporting plain mode names.
struct ExternalUnitRecord {
    UInt8 widePanel;
    UInt8 bounce;
    UInt8 controlsGroups;
    UInt16 mode;
    UInt8 outputLevel;
    double guideNumber;
    FlashGroups groups;
};

inline ExternalUnitRecord ReadExternalUnit(const MixedFlashBytes& b)
{
    return {b[8], b[10], b[13], U16At(b, 14), b[16], F64At(b, 24), GroupsAt(b, 32, 38)};
}

// "0101"/"0102": which flash controlled the shot.
enum MixedFlashSource : UInt8 { kSourceOptionalUnit = 1, kSourceBuiltIn = 2 };

inline UInt8 SourceOf(const MixedFlashBytes& b)
{
    return b[4];
}

// "0101"/"0102" with an optional unit.
struct OptionalUnitRecord {
    FlashGroups groups;
    UInt8 widePanel;
    UInt8 bounce;
    UInt8 commander;
    UInt16 mode;
    UInt8 outputLevel;
    double guideNumber;
};

inline OptionalUnitRecord ReadOptionalUnit(const MixedFlashBytes& b)
{
    return {GroupsAt(b, 8, 14), b[23], b[25], b[28], U16At(b, 30), b[32], F64At(b, 36)};
}

// "0101"/"0102" with the built-in flash. Its mode code overlaps the optional
// unit's wide-panel byte: the two flashes lay the record out differently.
struct BuiltInFlashRecord {
    FlashGroups groups;
    UInt8 commander;
    UInt16 mode;
    UInt8 outputLevel;
};

inline BuiltInFlashRecord ReadBuiltInFlash(const MixedFlashBytes& b)
{
    return {GroupsAt(b, 8, 14), b[20], U16At(b, 22), b[24]};
}

}  // namespace qel

#endif
