// Remote flash group lines with their compensation (reversed sixth-stops)
// and output-level texts, and the bounce and wide-panel line.
#include "QelItemIDs.h"
#include "TestImgInfo.h"

#include <gtest/gtest.h>

namespace {

std::string Comp(double ev) { return LF("IDS_QEL_MIXED_QB_INFO_FLASH_COMP", ev); }
std::string Ev2(SInt32 p) { return LF("IDS_QEL_MIXED_QB_INFO_MANUAL_EV2", p); }
std::string Ev1(SInt32 p, SInt32 n, SInt32 d)
{
    return LF("IDS_QEL_MIXED_QB_INFO_MANUAL_EV1", p, n, d);
}

TEST(FlashGroupLines, ModeAndLevelPerGroup)
{
    const std::string ttl = L("IDS_QEL_AUTO_FLASH_MODE_TTL"), m = L("IDS_QEL_AUTO_FLASH_MODE_M");
    const struct {
        UInt16 mode;
        UInt8 level;
        std::optional<std::string> expected;  // nullopt: title only
    } cases[] = {
        {1, 0, ttl},
        {1, 0xFA, ttl + Comp(1.0)},
        {1, 0x80, ttl + Comp(128 / 6.0)},
        {3, 3, L("IDS_QEL_AUTO_FLASH_MODE_AA") + Comp(-0.5)},
        {4, 0xF4, L("IDS_QEL_AUTO_FLASH_MODE_A") + Comp(2.0)},
        {6, 0, m + Ev2(1)},
        {6, 1, m + Ev1(1, 1, 6)},
        {6, 2, m + Ev1(1, 1, 3)},
        {6, 3, m + Ev1(1, 1, 2)},
        {6, 4, m + Ev1(1, 2, 3)},
        {6, 5, m + Ev1(1, 5, 6)},
        {6, 6, m + Ev2(2)},
        {6, 47, m + Ev1(128, 5, 6)},
        {6, 48, m + Ev2(256)},
        {6, 49, m},
        {7, 13, L("IDS_QEL_AUTO_FLASH_MODE_RPT") + Ev1(4, 1, 6)},
        {7, 255, L("IDS_QEL_AUTO_FLASH_MODE_RPT")},
        {0, 6, std::nullopt},
        {2, 6, std::nullopt},  // 2 is TTL only for the unit itself
        {5, 6, std::nullopt},
        {8, 6, std::nullopt},
        {0x0101, 6, std::nullopt},
    };
    const UInt32 groupItems[] = {QelItem::kFlashGroupA, QelItem::kFlashGroupB,
                                 QelItem::kFlashGroupC};
    const char* titles[] = {"IDS_QEL_MIXED_QB_INFO_GROUP_A", "IDS_QEL_MIXED_QB_INFO_GROUP_B",
                            "IDS_QEL_MIXED_QB_INFO_GROUP_C"};
    for (const auto& c : cases) {
        // Each group in turn carries the case; the other two stay unused.
        for (size_t g = 0; g < 3; ++g) {
            SCOPED_TRACE(testing::Message() << "mode " << c.mode << " level " << int(c.level)
                                            << " group " << g);
            UInt16 modes[3] = {};
            UInt8 levels[3] = {};
            modes[g] = c.mode;
            levels[g] = c.level;
            TestImgInfo info;
            info.GetMixedQBInfo_Group(modes[0], modes[1], modes[2], levels[0], levels[1],
                                      levels[2]);
            for (size_t other = 0; other < 3; ++other) {
                EXPECT_EQ(info.Title(groupItems[other]), L(titles[other]));
                EXPECT_EQ(info.Value(groupItems[other]), other == g ? c.expected : std::nullopt);
            }
        }
    }
}

TEST(FlashBounceAndWidePanel, OnlyOneMeansUsed)
{
    const std::string bounce = L("IDS_QEL_BOUNCE"), panel = L("IDS_QEL_WIDE_PANEL");
    const struct {
        UInt8 bounce;
        bool widePanel;
        std::optional<std::string> expected;
    } cases[] = {
        {1, true, bounce + "/" + panel}, {1, false, bounce}, {0, true, panel},
        {2, true, panel},                {2, false, std::nullopt}, {0, false, std::nullopt},
    };
    for (const auto& c : cases) {
        TestImgInfo info;
        info.GetMixedQBInfo_BounceAndWidePanel(c.bounce, c.widePanel);
        EXPECT_EQ(info.Title(QelItem::kBounceAndWidePanel), L("IDS_QEL_BOUNCE_AND_WIDE_PANEL"));
        EXPECT_EQ(info.Value(QelItem::kBounceAndWidePanel), c.expected)
            << int(c.bounce) << " " << c.widePanel;
    }
}

}  // namespace
