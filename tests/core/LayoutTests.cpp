// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

#include <set>

namespace {

// Every kind, and kinds no file has: columns fill from the top without gaps,
// no item stands twice, nothing lies outside the reported size, and a kind
// the grids do not know shows nothing.
TEST(GridShape, ColumnsFillFromTheTopAndNothingLiesOutside)
{
    for (SInt32 kind : {0, 1, 2, 3, 4, 5, 7, -1}) {
        TestImgInfo info;
        info.Kinds(kind, 0);
        const UInt32 rows = info.GetLayoutRows(), cols = info.GetLayoutCols();
        EXPECT_EQ(rows == 0 || cols == 0, kind <= 0 || kind > 5) << kind;
        std::set<UInt32> items;
        for (UInt32 col = 0; col < 10; ++col) {
            bool ended = false;
            for (UInt32 row = 0; row < 12; ++row) {
                const UInt32 item = info.GetLayoutItem(row, col);
                ended = ended || item == 0;
                EXPECT_TRUE(item == 0 || (!ended && row < rows && col < cols)) << kind << ": " << row << "," << col;
                EXPECT_TRUE(item == 0 || items.insert(item).second) << "twice: " << item;
            }
        }
        EXPECT_EQ(info.GetLayoutItem(0xFFFFFFFF, 0), 0u);
    }
}

// Cells a host relies on: the ends of long columns and the orders users know.
TEST(GridCell, ItemInCell)
{
    const struct { SInt32 kind; UInt32 row, col, item; } cases[] = {
        {1, 1, 2, 0x80007}, {1, 1, 3, 0x80094}, {2, 9, 6, 0x700A7}, {2, 0, 7, 0x9286},
        {2, 5, 5, 0x80020}, {3, 1, 3, 0x80006}, {4, 2, 3, 0x90201}, {5, 0, 2, 0x80005},
    };
    for (const auto& c : cases) {
        TestImgInfo info;
        info.Kinds(c.kind, 0);
        EXPECT_EQ(info.GetLayoutItem(c.row, c.col), c.item) << c.kind << ": " << c.row << "," << c.col;
    }
}

TEST(LayoutText, EmptyCellClearsTheBuffer)
{
    TestImgInfo info;
    info.Kinds(kDeviceOtherMaker, 0);
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(info.GetLayoutString(1, 2, buffer, sizeof buffer, kCFStringEncodingASCII), 0u);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '\0'));
    EXPECT_EQ(info.CopyLayoutCFString(1, 2), nullptr);
}

}  // namespace
