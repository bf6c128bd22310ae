// SPDX-License-Identifier: MIT
// Lens description and focal length: whole numbers lose their ".0", G-type
// wins over D-type, and the lens type counts only when the camera knew it.
#include "TestImgInfo.h"

#include <array>
#include <cctype>
#include <cfloat>
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
        {{105, 105, 2.8, 2.8}, Type{0, 0, 1, 1, 1}, false, "105", "2.8", nullptr},
        {{10.5, 10.5, 2.8, 2.8}, Type{1}, false, "10.5", "2.8", nullptr},
        {{17.5, 55, 2, 4}, Type{1, 0, 1, 0, 0}, false, "17.5-55", "2-4", kTypeD},
        {{10, 20, 4, 4}, Type{1, 0, 1, 1, 0}, false, "10-20", "4", kTypeG},
        {{100, 300, 4.5, 5.6}, Type{1, 9, 0, 0, 1, 9, 9, 9}, true, "100-300", "4.5-5.6", nullptr},
    };
    for (const char* key : {"IDS_QEL_LENS_INFO_UNIT", "IDS_QEL_LENS_INFO_APERTURE_PREFIX"})
        ASSERT_NE(L(key), key) << "lens formats must come from the string table";
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
    struct Case { double millimetres; const char* text; } const cases[] = {
        {50.0, "50"}, {18.5, "18.5"}, {100.0, "100"}, {10.0, "10"},   {20.5, "20.5"},
        {0.0, "0"},   {10.96, "11"},  {-5.0, "-5"},   {1e20, "100000000000000000000"},
    };
    ASSERT_NE(L("IDS_QEL_FOCAL_LENGTH_UNIT"), "IDS_QEL_FOCAL_LENGTH_UNIT");
    for (const Case& c : cases) {
        MemoryTagSource tags;
        tags.Double(QelItem::kFocalLength, c.millimetres);
        TestImgInfo info;
        SCOPED_TRACE(c.millimetres);
        ExpectFormatted(info, &CQelImgInfo::GetFocalLength, tags, QelItem::kFocalLength,
                        L("IDS_QEL_FOCAL_LENGTH"), LF("IDS_QEL_FOCAL_LENGTH_UNIT", c.text));
    }
}

// A corrupt record may hold any double: the text is printed whole, never
// cut, and nothing goes through an integer on the way.
TEST(FocalLength, HugeAndNaNNumbersArePrintedWhole)
{
    MemoryTagSource tags;
    tags.Double(QelItem::kFocalLength, DBL_MAX);
    tags.Record(QelItem::kLensInfo, 256, Lens{NAN, NAN, -DBL_MAX, INFINITY});
    TestImgInfo info;
    info.GetFocalLength(&tags);
    info.GetLensInfo(&tags);

    std::string focal = info.Value(QelItem::kFocalLength).value_or("");
    size_t digits = 0;
    for (char ch : focal)
        digits += std::isdigit(static_cast<unsigned char>(ch)) ? 1 : 0;
    EXPECT_EQ(digits, 309u) << focal;  // DBL_MAX has 309 integer digits
    std::string lens = info.Value(QelItem::kLensInfo).value_or("");
    EXPECT_NE(lens.find("nan-nan"), std::string::npos) << lens;
    EXPECT_NE(lens.find("inf"), std::string::npos) << lens;
    EXPECT_TRUE(tags.EveryErrorReleasedOnce());
}

}  // namespace
