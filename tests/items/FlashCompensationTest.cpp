// Flash compensation: which compensation tags each camera family adds up,
// by flash control mode, selector record and multi-flash record.
#include "MemoryTagSource.h"
#include "QelItemIDs.h"
#include "TestImgInfo.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

using Step = std::array<SInt16, 3>;  // value, step numerator, step denominator

constexpr UInt32 kFlashState = 0x80087;
constexpr UInt32 kSelector = 0x80089;
constexpr UInt32 kMixedFlash = 0x800A8;
constexpr UInt32 kBase = 0x80012, kFirst = 0x80017, kSecond = 0x80018;

std::vector<UInt8> MixedFlash(const char* version)
{
    std::vector<UInt8> bytes(44);
    std::memcpy(bytes.data(), version, 4);
    return bytes;
}

TEST(FlashCompensation, FamiliesModesAndSources)
{
    const std::optional<Step> none;
    const Step plus1{3, 1, 3}, half{1, 1, 2}, third{-2, 1, 6}, twoThirds{2, 1, 3},
        minusTwoThirds{-2, 1, 3}, zero{0, 1, 3};
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
        {0x401, {1, 0}, 7, 1, nullptr, plus1, plus1, plus1, "+1.0"},
        {0x402, {1, 0}, 7, {}, nullptr, twoThirds, minusTwoThirds, none, "0"},
        {0x402, {1, 0}, 9, 0, nullptr, twoThirds, minusTwoThirds, half, "+1.2"},
        {0x402, {1, 0}, {}, {}, nullptr, none, plus1, half, "+0.5"},
        {0x105, {1, 0}, 9, 0, nullptr, none, none, half, " "},
        {0x105, {1, 0}, 9, 1, nullptr, plus1, plus1, half, "+1.5"},
        {0x107, {1, 0}, 7, 2, nullptr, none, plus1, half, "+1.0"},
        {0x107, {1, 0}, 10, 1, nullptr, none, plus1, half, "+0.5"},
        {0x105, {1, 0}, {}, 1, nullptr, plus1, plus1, half, "+0.5"},
        {0x403, {1, 0}, 9, 0, nullptr, plus1, plus1, half, " "},
        {0x403, {1, 0}, 5, 1, nullptr, plus1, plus1, half, "+1.5"},
        {0x403, {1, 0}, 11, 0, nullptr, plus1, plus1, half, " "},
        {0x403, {1, 0}, 8, 0, nullptr, plus1, half, half, "+1.5"},
        {0x404, {1, 0}, 11, 0, nullptr, plus1, plus1, half, "+1.0"},
        {0x405, {1, 0}, 5, 1, nullptr, zero, none, none, "0"},
        {0x406, {1, 0}, {}, 1, nullptr, plus1, plus1, half, " "},
        {0x406, {1, 0}, 7, 1, nullptr, third, plus1, half, "+0.7"},
        {0x999, {1, 0}, 7, 1, nullptr, plus1, plus1, half, " "},
        {0, {1, 0}, 7, 1, nullptr, plus1, plus1, half, " "},
        {0x104, {2, 0}, {}, {}, nullptr, plus1, none, none, " "},
        {0x104, {0, 0}, {}, {}, nullptr, plus1, none, none, " "},
        {0x104, {}, {}, {}, nullptr, plus1, none, none, " "},
        // 0x106 without an external unit's record follows 0x105.
        {0x106, {1, 1}, 9, 0, nullptr, plus1, plus1, half, "+1.0"},
        {0x106, {1, 1}, 3, 1, "0101", plus1, plus1, half, "+0.5"},
        {0x106, {1, 1}, 3, 0, "0100", plus1, plus1, half, "+1.5"},
        {0x106, {1, 1}, 9, 0, "0100", plus1, plus1, half, "+0.5"},
        {0x106, {1, 0}, 0, 0, "0100", plus1, plus1, half, "+0.5"},
        {0x106, {1, 1}, {}, 0, "0100", plus1, plus1, none, " "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << "kind 0x" << c.fileKind << std::dec
                                        << " mode " << c.mode.value_or(-1));
        MemoryTagSource src;
        if (!c.flash.empty())
            src.Bytes(kFlashState, 257, c.flash);
        if (c.mode)
            src.Int32(QelItem::kFlashMode, *c.mode);
        if (c.selector)
            src.Bytes(kSelector, 259, {0, 0, 0, 0, *c.selector});
        if (c.mixedFlashVersion)
            src.Bytes(kMixedFlash, 271, MixedFlash(c.mixedFlashVersion));
        const std::pair<UInt32, std::optional<Step>> steps[] = {
            {kBase, c.base}, {kFirst, c.first}, {kSecond, c.second}};
        for (const auto& [tag, step] : steps)
            if (step)
                src.ValueStep(tag, (*step)[0], (*step)[1], (*step)[2]);
        TestImgInfo info;
        info.Kinds(kDeviceSLR, c.fileKind);
        info.GetAutoFlashComp(&src);
        EXPECT_EQ(info.Title(QelItem::kFlashComp), L("IDS_QEL_AUTO_FLASH_COMP"));
        const std::string expected = std::strcmp(c.expected, " ") == 0
                                         ? std::string(" ")
                                         : LF("IDS_QEL_AUTO_FLASH_COMP_UNIT", c.expected);
        EXPECT_EQ(info.Value(QelItem::kFlashComp), expected);
        EXPECT_TRUE(src.EveryErrorReleasedOnce());
    }
}

}  // namespace
