// Flash sync mode and flash control mode, from the multi-flash record in
// each of its layouts and from the older flash mode tag.
#include "MemoryTagSource.h"
#include "QelItemIDs.h"
#include "TestImgInfo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace {

constexpr UInt32 kFlashState = 0x80087;
constexpr UInt32 kMixedFlash = 0x800A8;

// A 44-byte multi-flash record built byte by byte, little-endian.
struct Record {
    std::vector<UInt8> bytes = std::vector<UInt8>(44);
    explicit Record(const char* version) { std::memcpy(bytes.data(), version, 4); }
    Record& U8(size_t at, UInt8 v) { bytes[at] = v; return *this; }
    Record& U16(size_t at, UInt16 v)
    {
        bytes[at] = static_cast<UInt8>(v & 0xFF);
        bytes[at + 1] = static_cast<UInt8>(v >> 8);
        return *this;
    }
    Record& F64(size_t at, double v)
    {
        UInt64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        for (size_t i = 0; i < 8; ++i)
            bytes[at + i] = static_cast<UInt8>(bits >> (8 * i));
        return *this;
    }
};

Record External(UInt16 mode) { return Record("0100").U16(14, mode); }
Record Optional(const char* version, UInt8 commander, UInt16 mode)
{
    return Record(version).U8(4, 1).U8(28, commander).U16(30, mode);
}
Record BuiltIn(const char* version, UInt8 commander, UInt16 mode)
{
    return Record(version).U8(4, 2).U8(20, commander).U16(22, mode);
}

// The text of a flash mode key, named by what follows "IDS_QEL_AUTO_FLASH_MODE_".
std::string Mode(const std::string& name) { return L(("IDS_QEL_AUTO_FLASH_MODE_" + name).c_str()); }
std::string Gn(double gn) { return LF("IDS_QEL_MIXED_QB_INFO_MANUAL_GN", gn); }
std::string Ev2(SInt32 p) { return LF("IDS_QEL_MIXED_QB_INFO_MANUAL_EV2", p); }
std::string Ev1(SInt32 p, SInt32 n, SInt32 d)
{
    return LF("IDS_QEL_MIXED_QB_INFO_MANUAL_EV1", p, n, d);
}

// nullopt: the item is absent; "": title only; otherwise the value.
void ExpectItem(const TestImgInfo& info, UInt32 id, const std::optional<std::string>& expected)
{
    EXPECT_EQ(info.Title(id).has_value(), expected.has_value()) << std::hex << id;
    if (expected) {
        EXPECT_EQ(info.Value(id), expected->empty() ? std::nullopt : expected) << std::hex << id;
    }
}

TEST(FlashSyncMode, CodeAndFlashState)
{
    const std::string blank = " ";
    struct Case {
        std::optional<UInt8> flashUsed;
        std::optional<SInt32> code;
        std::string expected;
    } cases[] = {
        {0, 32, L("IDS_QEL_FLASH_SYNC_OFF")},  // "off" wins over the flash state
        {std::nullopt, 32, L("IDS_QEL_FLASH_SYNC_OFF")},
        {1, 0, L("IDS_QEL_FLASH_SYNC_MODE_NORMAL")},
        {1, 3, L("IDS_QEL_FLASH_SYNC_MODE_REAR_SLOW")},
        {2, 17, L("IDS_QEL_FLASH_SYNC_MODE_RED_EYE_SLOW")},
        {1, 4, blank},
        {1, std::nullopt, blank},
        {0, 1, blank},
        {std::nullopt, 1, blank},  // missing flash state counts as unused here
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "code " << c.code.value_or(-1));
        MemoryTagSource src;
        if (c.flashUsed)
            src.Bytes(kFlashState, 257, {*c.flashUsed, 0});
        if (c.code)
            src.Int32(QelItem::kFlashSyncMode, *c.code);
        TestImgInfo info;
        info.GetFlashSyncMode(&src);
        EXPECT_EQ(info.Title(QelItem::kFlashSyncMode), L("IDS_QEL_FLASH_SYNC_MODE"));
        EXPECT_EQ(info.Value(QelItem::kFlashSyncMode), c.expected);
        EXPECT_TRUE(src.EveryErrorReleasedOnce());
    }
}

TEST(FlashControlMode, FromMultiFlashRecord)
{
    const std::string none = "";  // title only
    const std::optional<std::string> absent;
    const std::string bounceAndPanel = L("IDS_QEL_BOUNCE") + "/" + L("IDS_QEL_WIDE_PANEL");
    const std::string groupAAA = Mode("AA") + LF("IDS_QEL_MIXED_QB_INFO_FLASH_COMP", -0.5);
    const Record groups = Optional("0101", 1, 2).U16(8, 3).U8(14, 3);
    const double nan = std::nan("");
    struct Case {
        const char* name;
        std::optional<UInt8> flashUsed;
        std::optional<Record> record;
        std::optional<std::string> mode, bounce, groupA;
        std::optional<SInt32> metering = {}, legacy = {};
    } cases[] = {
        {"flash not used", 0, External(2), " ", absent, absent},
        {"flash state missing", {}, External(2), Mode("TTL"), none, absent},
        {"0100 GN 5.6", 1, External(5).F64(24, 5.6), Mode("M") + Gn(5.7), none, absent},
        {"0100 GN NaN", 1, External(5).F64(24, nan), Mode("M") + Gn(5.7), none, absent},
        {"0100 GN 5.60001", 1, External(5).F64(24, 5.60001), Mode("M") + Gn(5.60001), none,
         absent},
        {"0100 manual", 1, External(6).U8(16, 13), Mode("M") + Ev1(4, 1, 6), none, absent},
        {"0100 repeating", 1, External(7).U8(16, 48), Mode("RPT") + Ev2(256), none, absent},
        {"0100 code 8", 1, External(8), Mode("NONE"), none, absent},
        {"0100 groups", 1, External(1).U8(8, 1).U8(10, 1).U8(13, 1).U16(32, 3).U8(38, 3),
         Mode("TTL_BL"), bounceAndPanel, groupAAA},
        {"0100 group flag 2", 1, External(1).U8(13, 2).U16(32, 3), Mode("TTL_BL"), none, absent},
        {"0101 commander", 1, groups, Mode("OPTIONAL_TTL_COMDR"), none, groupAAA},
        {"0101 commander 2", 1, Record(groups).U8(28, 2), Mode("OPTIONAL_TTL_COMDR"), none,
         absent},
        {"0102 commander", 1, Record(groups).U8(3, '2'), Mode("OPTIONAL_TTL_COMDR"), none,
         groupAAA},
        {"0102 commander 2", 1, Record(groups).U8(3, '2').U8(28, 2), Mode("OPTIONAL_TTL_COMDR"),
         none, absent},
        {"optional GN, bounce", 1, Optional("0101", 0, 5).F64(36, 36.0).U8(25, 1),
         Mode("OPTIONAL_M") + Gn(36.0), L("IDS_QEL_BOUNCE"), absent},
        {"optional repeating, panel", 1, Optional("0102", 0, 7).U8(23, 1),
         Mode("OPTIONAL_RPT") + Ev2(1), L("IDS_QEL_WIDE_PANEL"), absent},
        {"optional 16-bit mode", 1, Optional("0101", 1, 0x0102), Mode("COMMANDER"), none, none},
        {"built-in spot", 1, BuiltIn("0101", 0, 1), Mode("BUILTIN_Z_TTL"), absent, absent, 3},
        {"built-in, no metering", 1, BuiltIn("0101", 0, 1), Mode("BUILTIN_Z_TTL_BL"), absent,
         absent},
        {"built-in commander", 1, BuiltIn("0102", 1, 1).U16(8, 1), Mode("BUILTIN_Z_TTL_COMDR"),
         absent, Mode("TTL"), 3},
        {"built-in repeating", 1, BuiltIn("0101", 1, 7).U8(24, 6), Mode("BUILTIN_RPT") + Ev2(2),
         absent, none},
        {"built-in manual, spot", 1, BuiltIn("0101", 0, 6).U8(24, 1),
         Mode("BUILTIN_M") + Ev1(1, 1, 6), absent, absent, 3},
        {"built-in 16-bit mode", 1, BuiltIn("0101", 0, 0x0106), Mode("NONE"), absent, absent},
        {"source 3", 1, Record("0101").U8(4, 3), Mode("OPTIONAL_A_COMDR"), absent, absent, {}, 24},
        {"version 0103", 1, External(2).U8(3, '3'), Mode("NONE"), absent, absent, {}, 25},
        {"no record", {}, {}, Mode("BUILTIN_RPT"), absent, absent, {}, 15},
        {"nothing readable", {}, {}, none, absent, absent},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryTagSource src;
        if (c.flashUsed)
            src.Bytes(kFlashState, 257, {*c.flashUsed, 0});
        if (c.record)
            src.Bytes(kMixedFlash, 271, c.record->bytes);
        if (c.metering)
            src.Int32(QelItem::kMeteringMode, *c.metering);
        if (c.legacy)
            src.Int32(QelItem::kFlashMode, *c.legacy);
        TestImgInfo info;
        info.GetMixedQBInfo(&src);
        EXPECT_EQ(info.Title(QelItem::kFlashMode), L("IDS_QEL_AUTO_FLASH_MODE"));
        ExpectItem(info, QelItem::kFlashMode, c.mode);
        ExpectItem(info, QelItem::kBounceAndWidePanel, c.bounce);
        ExpectItem(info, QelItem::kFlashGroupA, c.groupA);
        EXPECT_EQ(info.Title(QelItem::kFlashGroupC).has_value(), c.groupA.has_value());
        EXPECT_TRUE(src.EveryErrorReleasedOnce());
    }
}

TEST(FlashControlMode, LegacyCodesWithoutTitle)
{
    struct Case {
        std::optional<UInt8> flashUsed;
        std::optional<SInt32> code;
        std::optional<std::string> expected;
    } cases[] = {
        {1, 0, L("IDS_QEL_AUTO_FLASH_MODE_EXTERNAL")},
        {{}, 12, L("IDS_QEL_AUTO_FLASH_MODE_COMMANDER_AA")},
        {1, 23, L("IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_RPT_COMDR")},
        {1, 24, L("IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_A_COMDR")},
        {1, 25, L("IDS_QEL_AUTO_FLASH_MODE_NONE")},
        {1, -1, L("IDS_QEL_AUTO_FLASH_MODE_NONE")},
        {0, 4, " "},
        {1, {}, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "code " << c.code.value_or(-99));
        MemoryTagSource src;
        if (c.flashUsed)
            src.Bytes(kFlashState, 257, {*c.flashUsed, 0});
        if (c.code)
            src.Int32(QelItem::kFlashMode, *c.code);
        TestImgInfo info;
        info.GetFlashAutoMode(&src);
        EXPECT_FALSE(info.Title(QelItem::kFlashMode));
        EXPECT_EQ(info.Value(QelItem::kFlashMode), c.expected);
        EXPECT_TRUE(src.EveryErrorReleasedOnce());
    }
}

TEST(FlashItems, NullTagSourceStoresTitlesOnly)
{
    TestImgInfo info;
    info.GetFlashSyncMode(nullptr);
    info.GetMixedQBInfo(nullptr);
    info.GetAutoFlashComp(nullptr);
    info.GetFlashAutoMode(nullptr);
    EXPECT_EQ(info.Title(QelItem::kFlashSyncMode), L("IDS_QEL_FLASH_SYNC_MODE"));
    EXPECT_EQ(info.Title(QelItem::kFlashMode), L("IDS_QEL_AUTO_FLASH_MODE"));
    EXPECT_EQ(info.Title(QelItem::kFlashComp), L("IDS_QEL_AUTO_FLASH_COMP"));
    EXPECT_EQ(info.Dictionary().GetValueCount(), 0u);
}

}  // namespace
