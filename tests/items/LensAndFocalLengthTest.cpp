// SPDX-License-Identifier: MIT
// Lens description and focal length: whole numbers lose their ".0", G-type
// wins over D-type, and the lens type counts only when the camera knew it.
#include "TestImgInfo.h"

#include <array>
#include <cmath>

namespace {

constexpr UInt32 kLensType = 0x80083;
using Lens = std::array<double, 4>;  // focal range, then apertures
using Type = std::array<UInt8, 8>;
constexpr const char *kTypeG = "IDS_QEL_LENS_INFO_TYPE_G", *kTypeD = "IDS_QEL_LENS_INFO_TYPE_D";

TEST(LensInfo, DescribesTheLens)
{
    struct Case {
        Lens lens;
        std::optional<Type> type;
        bool stabilised;
        const char *focal, *aperture, *typeKey;  // typeKey null: no type text
    } const cases[] = {
        {{18, 55, 3.5, 5.6}, Type{1, 0, 0, 1, 1}, true, "18-55", "3.5-5.6", kTypeG},
        {{50, 50, 1.4, 1.4}, {}, false, "50", "1.4", nullptr},
        {{10.5, 10.5, 2.8, 2.8}, Type{1}, false, "10.5", "2.8", nullptr},
        {{17.5, 55, 2, 4}, Type{1, 0, 1, 0, 0}, false, "17.5-55", "2-4", kTypeD},
        {{10, 20, 4, 4}, Type{1, 0, 1, 1, 0}, false, "10-20", "4", kTypeG},
        {{100, 300, 4.5, 5.6}, Type{1, 9, 0, 0, 1, 9, 9, 9}, true, "100-300", "4.5-5.6", nullptr},
    };
    for (const Case& c : cases) {
        MemoryTagSource tags;
        tags.Record(QelItem::kLensInfo, 256, c.lens);
        if (c.type)
            tags.Record(kLensType, 261, *c.type);
        TestImgInfo info;
        info.Kinds(2, 1030).GetLensInfo(&tags);

        std::string expected = c.stabilised ? L("IDS_QEL_LENS_INFO_QV") : "";
        expected += LF("IDS_QEL_LENS_INFO_UNIT", c.focal) + " " +
                    LF("IDS_QEL_LENS_INFO_APERTURE_PREFIX", c.aperture);
        if (c.typeKey)
            expected += L(c.typeKey);
        EXPECT_EQ(info.Title(QelItem::kLensInfo), L("IDS_QEL_LENS_INFO"));
        EXPECT_EQ(info.Value(QelItem::kLensInfo), expected);
        EXPECT_TRUE(tags.EveryErrorReleasedOnce());
    }
}

TEST(FocalLength, DropsOnlyATrailingPointZero)
{
    std::vector<ItemCase> cases;
    for (auto [millimetres, text] : {std::pair{50.0, "50"}, {18.5, "18.5"}, {100.0, "100"}, {10.96, "11"},
                                     {1e20, "100000000000000000000"}})
        cases.push_back({text, &CQelImgInfo::GetFocalLength, QelItem::kFocalLength,
                         Dbl(QelItem::kFocalLength, millimetres), LF("IDS_QEL_FOCAL_LENGTH_UNIT", text)});
    ExpectItems(cases);
}

}  // namespace
