// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

namespace {

constexpr UInt32 kFineTuning = 0x8000B;
constexpr SInt32 kKept = 7;  // a list position left by an earlier file

struct WhiteBalanceRecord { UInt32 mode; SInt32 colorTemperature; };

struct BalanceCase {
    std::optional<WhiteBalanceRecord> record;
    std::optional<SInt32> fineTuning;
    SInt32 fileKind;
    std::string (*expected)();  // null: no value
    SInt32 listIndex;
};

const BalanceCase kBalanceCases[] = {
    {{{0, 0}}, 0, 0, [] { return L("IDS_QEL_WB_AUTO"); }, kKept},
    {{{6, 0}}, -3, 0, [] { return L("IDS_QEL_WB_CLOUDY") + " -3"; }, 5},
    {{{8, 5000}}, 1, 0, [] { return LF("IDS_QEL_WB_COLOR_TEMP", 5000) + " +1"; }, kKept},
    {{{39, 0}}, {}, 1028, [] { return L("IDS_QEL_WB_PRESET") + " d-2"; }, kKept},
    {{{71, 0}}, {}, 260, [] { return L("IDS_QEL_WB_PRESET") + " d-4"; }, kKept},
    {{{39, 0}}, {}, 0, [] { return L("IDS_QEL_WB_PRESET") + " 2"; }, kKept},
    {{{55, 0}}, -1, 264, [] { return L("IDS_QEL_WB_PRESET") + " 3 -1"; }, kKept},
    {{{24, 0}}, 2, 0, [] { return std::string("? +2"); }, kKept},
    {{{87, 0}}, {}, 1028, [] { return std::string("?"); }, kKept},  // slot 5 is no slot
    {{}, 3, 0, nullptr, kKept},
};

TEST(WhiteBalanceTest, ValueAndListIndex)
{
    for (const BalanceCase& c : kBalanceCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kBalanceCases));
        MemoryTagSource tags;
        if (c.record)
            tags.Record(QelItem::kWhiteBalance, 266, *c.record);
        tags.Int32(kFineTuning, c.fineTuning);
        TestImgInfo info;
        info.m_wbListIndex = kKept;
        ExpectFormatted(info.Kinds(2, c.fileKind), &CQelImgInfo::GetWhiteBalance, tags,
                        QelItem::kWhiteBalance, L("IDS_QEL_WB"),
                        c.expected ? std::optional(c.expected()) : std::nullopt);
        EXPECT_EQ(info.m_wbListIndex, c.listIndex);
    }
}

}  // namespace
