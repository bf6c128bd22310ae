// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

#include <utility>

namespace {

constexpr UInt32 kDateTime = 0x132;
constexpr UInt32 kSubSecTimeOriginal = 0x9290;
constexpr const char* kUnknown = nullptr;  // the unknown-date text

struct DateCase {
    std::optional<std::string> original;
    std::optional<UInt32> originalSize;  // what the tag source reports, when not the text's
    std::optional<std::string> fileDate;
    std::optional<std::string> subSeconds;
    const char* shown;
};

const DateCase kDateCases[] = {
    {"2005:07:14 10:22:05", {}, {}, {}, "2005/07/14 10:22:05"},
    {"2005:07:14 10:22:05", {}, {}, "45", "2005/07/14 10:22:05.4"},
    {"2005:07:14 10:22:05", {}, {}, ".5", "2005/07/14 10:22:05.5"},
    {"2005:07:14 10:22:05", {}, {}, "5", "2005/07/14 10:22:05.0"},  // 50 ms
    {"2005:07:14 10:22:05", {}, {}, "", "2005/07/14 10:22:05"},
    {"2005:07:14 10:22:05", {}, {}, ".a7", "2005/07/14 10:22:05.7"},
    {"2005:07:14 10:22:05", {}, {}, "123", "2005/07/14 10:22:05.1"},
    {"5/7/14, 9.2", {}, {}, {}, "0005/07/14 09:02:00"},
    {"70000:-1:7 1:2:3", {}, {}, {}, "4464/65535/07 01:02:03"},  // 16 bits kept
    {"99999999999:1:1 0:0:0", {}, {}, {}, "65535/01/01 00:00:00"},  // saturates first
    {" : ", {}, {}, {}, "0000/00/00 00:00:00"},
    {{}, {}, "2001:02:03 04:05:06", ".25", "2001/02/03 04:05:06.2"},
    {"2005:07:14 10:22:05", 0, "2001:02:03 04:05:06", {}, kUnknown},  // empty: no fallback
    {{}, {}, {}, "45", kUnknown},
};

TEST(ShootingDateTest, PrintsDateAndTime)
{
    for (const DateCase& c : kDateCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kDateCases));
        MemoryTagSource tags;
        if (c.original)
            tags.Text(QelItem::kShootingDate, *c.original, c.originalSize);
        if (c.fileDate)
            tags.Text(kDateTime, *c.fileDate);
        if (c.subSeconds)
            tags.Text(kSubSecTimeOriginal, *c.subSeconds);
        TestImgInfo info;
        ExpectFormatted(info, &CQelImgInfo::GetShootingDate, tags, QelItem::kShootingDate,
                        L("IDS_QEL_DATE_TIME"), c.shown ? c.shown : L("IDS_QEL_DATE_TIME_UNKNOWN"));
    }
}

TEST(DateTimeRecords, PrintFixedLayout)
{
    TestImgInfo info;
    tagVxTESKDateTime when{2005, 7, 14, 10, 22, 5, 0};
    char out[32];
    EXPECT_EQ(info.DateToString(&when, out, sizeof out), 10);
    EXPECT_STREQ(out, "2005/07/14");
    for (auto [milliseconds, time] : {std::pair{0u, "10:22:05"}, {50u, "10:22:05.0"},
                                      {1234u, "10:22:05.12"}}) {
        when.millisecond = milliseconds;
        EXPECT_GT(info.TimeToString(&when, out, sizeof out), 0);
        EXPECT_STREQ(out, time);
    }
    EXPECT_EQ(info.DateToString(nullptr, out, sizeof out), -1);
    EXPECT_EQ(info.TimeToString(&when, nullptr, 32), -1);
}

}  // namespace
