// SPDX-License-Identifier: MIT
// Flash sync mode, flash control mode and remote flash groups, from the
// multi-flash record in each of its layouts and from the older flash mode tag,
// and which compensation tags each camera family adds up.
#include "TestImgInfo.h"

#include <array>
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
    Record& U16(size_t at, UInt16 v) { return U8(at, v & 0xFF).U8(at + 1, v >> 8); }
    Record& F64(size_t at, double v) { std::memcpy(&bytes[at], &v, 8); return *this; }
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
std::string Ev1(SInt32 p, SInt32 n, SInt32 d) { return LF("IDS_QEL_MIXED_QB_INFO_MANUAL_EV1", p, n, d); }

// nullopt: the item is absent; "": title only; otherwise the value.
void ExpectItem(const TestImgInfo& info, UInt32 id, const std::optional<std::string>& expected)
{
    EXPECT_EQ(info.Title(id).has_value(), expected.has_value()) << std::hex << id;
    EXPECT_EQ(info.Value(id), expected && !expected->empty() ? expected : std::nullopt) << std::hex << id;
}

// The sync mode (titled) and the older flash mode tag (untitled) by code and flash state.
TEST(FlashCodes, CodeAndFlashState)
{
    const auto sync = &CQelImgInfo::GetFlashSyncMode, legacy = &CQelImgInfo::GetFlashAutoMode;
    struct Case {
        void (CQelImgInfo::*formatter)(IVandelTagControl*);
        std::optional<UInt8> flashUsed;
        std::optional<SInt32> code;
        const char* expected;
    } const cases[] = {
        {sync, 0, 32, "IDS_QEL_FLASH_SYNC_OFF"},  // "off" wins over the flash state
        {sync, 1, 0, "IDS_QEL_FLASH_SYNC_MODE_NORMAL"},
        {sync, 1, 3, "IDS_QEL_FLASH_SYNC_MODE_REAR_SLOW"},
        {sync, 2, 17, "IDS_QEL_FLASH_SYNC_MODE_RED_EYE_SLOW"}, {sync, 1, 4, " "},
        {sync, 0, 1, " "},
        {sync, {}, 1, " "},  // missing flash state counts as unused here
        {legacy, {}, 12, "IDS_QEL_AUTO_FLASH_MODE_COMMANDER_AA"},
        {legacy, 1, 23, "IDS_QEL_AUTO_FLASH_MODE_OPTIONAL_RPT_COMDR"},
        {legacy, 0, 4, " "}, {legacy, 1, {}, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "code " << c.code.value_or(-99));
        const UInt32 item = c.formatter == sync ? QelItem::kFlashSyncMode : QelItem::kFlashMode;
        MemoryTagSource src;
        if (c.flashUsed)
            src.Bytes(kFlashState, 257, {*c.flashUsed, 0});
        src.Int32(item, c.code);
        TestImgInfo info;
        ExpectFormatted(info, c.formatter, src, item,
                        Shown(c.formatter == sync ? "IDS_QEL_FLASH_SYNC_MODE" : nullptr),
                        Shown(c.expected));
    }
}

TEST(FlashControlMode, FromMultiFlashRecord)
{
    const std::string none = "";  // title only
    const std::optional<std::string> absent;
    const std::string bounceAndPanel = L("IDS_QEL_BOUNCE") + "/" + L("IDS_QEL_WIDE_PANEL");
    const std::string groupAAA = Mode("AA") + LF("IDS_QEL_MIXED_QB_INFO_FLASH_COMP", -0.5);
    const Record groups = Optional("0101", 1, 2).U16(8, 3).U8(14, 3);
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
        {"0100 manual", 1, External(6).U8(16, 13), Mode("M") + Ev1(4, 1, 6), none, absent},
        {"0100 groups", 1, External(1).U8(8, 1).U8(10, 1).U8(13, 1).U16(32, 3).U8(38, 3),
         Mode("TTL_BL"), bounceAndPanel, groupAAA},
        {"0101 commander", 1, groups, Mode("OPTIONAL_TTL_COMDR"), none, groupAAA},
        {"0102 commander 2", 1, Record(groups).U8(3, '2').U8(28, 2), Mode("OPTIONAL_TTL_COMDR"),
         none, absent},
        {"optional GN, bounce", 1, Optional("0101", 0, 5).F64(36, 36.0).U8(25, 1),
         Mode("OPTIONAL_M") + Gn(36.0), L("IDS_QEL_BOUNCE"), absent},
        {"optional 16-bit mode", 1, Optional("0101", 1, 0x0102), Mode("COMMANDER"), none, none},
        {"built-in spot", 1, BuiltIn("0101", 0, 1), Mode("BUILTIN_Z_TTL"), absent, absent, 3},
        {"built-in commander", 1, BuiltIn("0102", 1, 1).U16(8, 1), Mode("BUILTIN_Z_TTL_COMDR"),
         absent, Mode("TTL"), 3},
        {"built-in repeating", 1, BuiltIn("0101", 1, 7).U8(24, 6), Mode("BUILTIN_RPT") + Ev2(2),
         absent, none},
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
        src.Int32(QelItem::kMeteringMode, c.metering);
        src.Int32(QelItem::kFlashMode, c.legacy);
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

// Which compensation tags each family adds up, by flash control mode,
// selector record and multi-flash record.
constexpr UInt32 kSelector = 0x80089;
constexpr UInt32 kBase = 0x80012, kFirst = 0x80017, kSecond = 0x80018;
using Step = std::array<SInt16, 3>;  // value, step numerator, step denominator

TEST(FlashCompensation, FamiliesModesAndSources)
{
    const std::optional<Step> none;
    const Step plus1{3, 1, 3}, half{1, 1, 2}, third{-2, 1, 6}, twoThirds{2, 1, 3},
        minusTwoThirds{-2, 1, 3};
    struct Case {
        SInt32 fileKind;
        std::vector<UInt8> flash;  // flash used, second flash; empty: no tag
        std::optional<SInt32> mode;
        std::optional<UInt8> selector;       // byte 4 of the selector record
        const char* mixedFlashVersion;       // null: no record
        std::optional<Step> base, first, second;
        const char* expected;  // the number text, or " "
    } cases[] = {
        {0x104, {1, 0}, {}, {}, nullptr, third, plus1, plus1, "-0.3"},
        {0x402, {1, 0}, 9, 0, nullptr, twoThirds, minusTwoThirds, half, "+1.2"},
        {0x105, {1, 0}, 9, 0, nullptr, none, none, half, " "},
        {0x107, {1, 0}, 10, 1, nullptr, none, plus1, half, "+0.5"},
        {0x403, {1, 0}, 9, 0, nullptr, plus1, plus1, half, " "},
        {0x403, {1, 0}, 5, 1, nullptr, plus1, plus1, half, "+1.5"},
        {0x404, {1, 0}, 11, 0, nullptr, plus1, plus1, half, "+1.0"},
        {0x406, {1, 0}, 7, 1, nullptr, third, plus1, half, "+0.7"},
        {0x999, {1, 0}, 7, 1, nullptr, plus1, plus1, half, " "},
        {0x104, {2, 0}, {}, {}, nullptr, plus1, none, none, " "},
        // 0x106 without an external unit's record follows 0x105.
        {0x106, {1, 1}, 9, 0, nullptr, plus1, plus1, half, "+1.0"},
        {0x106, {1, 1}, 3, 1, "0101", plus1, plus1, half, "+0.5"},
        {0x106, {1, 1}, 3, 0, "0100", plus1, plus1, half, "+1.5"},
        {0x106, {1, 0}, 0, 0, "0100", plus1, plus1, half, "+0.5"},
        {0x106, {1, 1}, {}, 0, "0100", plus1, plus1, none, " "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << "kind 0x" << c.fileKind << std::dec
                                        << " mode " << c.mode.value_or(-1));
        MemoryTagSource src;
        if (!c.flash.empty())
            src.Bytes(kFlashState, 257, c.flash);
        src.Int32(QelItem::kFlashMode, c.mode);
        if (c.selector)
            src.Bytes(kSelector, 259, {0, 0, 0, 0, *c.selector});
        if (c.mixedFlashVersion)
            src.Bytes(kMixedFlash, 271, Record(c.mixedFlashVersion).bytes);
        const std::pair<UInt32, std::optional<Step>> steps[] = {
            {kBase, c.base}, {kFirst, c.first}, {kSecond, c.second}};
        for (const auto& [tag, step] : steps)
            if (step)
                src.ValueStep(tag, (*step)[0], (*step)[1], (*step)[2]);
        TestImgInfo info;
        ExpectFormatted(info.Kinds(kDeviceSLR, c.fileKind), &CQelImgInfo::GetAutoFlashComp, src,
                        QelItem::kFlashComp, L("IDS_QEL_AUTO_FLASH_COMP"),
                        std::string(c.expected) == " " ? " " : LF("IDS_QEL_AUTO_FLASH_COMP_UNIT", c.expected));
    }
}

std::string Comp(double ev) { return LF("IDS_QEL_MIXED_QB_INFO_FLASH_COMP", ev); }

TEST(FlashGroupLines, ModeAndLevelPerGroup)
{
    const std::string ttl = L("IDS_QEL_AUTO_FLASH_MODE_TTL"), m = L("IDS_QEL_AUTO_FLASH_MODE_M");
    const struct {
        UInt16 mode;
        UInt8 level;
        std::optional<std::string> expected;  // nullopt: title only
    } cases[] = {
        {1, 0, ttl}, {1, 0x80, ttl + Comp(128 / 6.0)},
        {4, 0xF4, L("IDS_QEL_AUTO_FLASH_MODE_A") + Comp(2.0)}, {6, 0, m + Ev2(1)},
        {6, 5, m + Ev1(1, 5, 6)}, {6, 47, m + Ev1(128, 5, 6)}, {6, 48, m + Ev2(256)}, {6, 49, m},
        {7, 13, L("IDS_QEL_AUTO_FLASH_MODE_RPT") + Ev1(4, 1, 6)},
        {7, 255, L("IDS_QEL_AUTO_FLASH_MODE_RPT")},
        {2, 6, std::nullopt},  // 2 is TTL only for the unit itself
        {0x0101, 6, std::nullopt},
    };
    // Group B carries the case; A and C stay unused but titled.
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.mode << "/" << int(c.level));
        TestImgInfo info;
        info.GetMixedQBInfo_Group(0, c.mode, 0, 0, c.level, 0);
        EXPECT_EQ(info.Value(QelItem::kFlashGroupB), c.expected);
        EXPECT_EQ(info.Title(QelItem::kFlashGroupB), L("IDS_QEL_MIXED_QB_INFO_GROUP_B"));
        EXPECT_EQ(info.Title(QelItem::kFlashGroupC), L("IDS_QEL_MIXED_QB_INFO_GROUP_C"));
        EXPECT_EQ(info.Value(QelItem::kFlashGroupA), std::nullopt);
        EXPECT_EQ(info.Value(QelItem::kFlashGroupC), std::nullopt);
    }
}

}  // namespace
