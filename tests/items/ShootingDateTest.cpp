// SPDX-License-Identifier: MIT
// The shooting date: the original date, else the file's date, as numbers
// printed again, with tenths of a second from the sub-second text.
#include "TestImgInfo.h"

namespace {

constexpr UInt32 kDateTime = 0x132, kSubSecTimeOriginal = 0x9290;

Tags Date(std::optional<std::string> original, std::optional<std::string> subSeconds = {},
          std::optional<std::string> fileDate = {}, std::optional<UInt32> originalSize = {})
{
    return [=](MemoryTagSource& t) {
        if (original)
            t.Text(QelItem::kShootingDate, *original, originalSize);
        if (fileDate)
            t.Text(kDateTime, *fileDate);
        if (subSeconds)
            t.Text(kSubSecTimeOriginal, *subSeconds);
    };
}

TEST(ShootingDateTest, PrintsDateAndTime)
{
    const auto date = &CQelImgInfo::GetShootingDate;
    const UInt32 id = QelItem::kShootingDate;
    const std::string when = "2005:07:14 10:22:05", unknown = L("IDS_QEL_DATE_TIME_UNKNOWN");
    ExpectItems({
        {"plain", date, id, Date(when), "2005/07/14 10:22:05"},
        {"a fraction", date, id, Date(when, ".5"), "2005/07/14 10:22:05.5"},
        {"one digit is hundredths", date, id, Date(when, "5"), "2005/07/14 10:22:05.0"},
        {"stray letters dropped", date, id, Date(when, ".a7"), "2005/07/14 10:22:05.7"},
        {"any delimiters", date, id, Date("5/7/14, 9.2"), "0005/07/14 09:02:00"},
        {"16 bits kept", date, id, Date("70000:-1:7 1:2:3"), "4464/65535/07 01:02:03"},
        {"the file's date", date, id, Date({}, ".25", "2001:02:03 04:05:06"), "2001/02/03 04:05:06.2"},
        {"empty: no fallback", date, id, Date(when, {}, "2001:02:03 04:05:06", 0), unknown},
        {"no date", date, id, Date({}, "45"), unknown},
    });
}

}  // namespace
