// SPDX-License-Identifier: MIT
#include "TestImgInfo.h"

#include <set>

namespace {

struct GridSize { SInt32 kind; UInt32 rows, cols, filledCells; };

const GridSize kGridShapeCases[] = {
    {0, 0, 0, 0}, {1, 6, 4, 21}, {2, 10, 8, 48}, {3, 6, 4, 17}, {4, 6, 4, 18}, {5, 6, 3, 12},
    {7, 6, 0, 0}, {-1, 6, 0, 0},
};

// Columns are filled from the top without gaps, no item stands twice, and
// nothing lies outside the reported size.
TEST(GridShape, SizeAndFilledColumns)
{
    for (const auto& c : kGridShapeCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kGridShapeCases));
        TestImgInfo info;
        info.Kinds(c.kind, 0);
        EXPECT_EQ(info.GetLayoutRows(), c.rows);
        EXPECT_EQ(info.GetLayoutCols(), c.cols);
        std::set<UInt32> items;
        for (UInt32 col = 0; col < 10; ++col) {
            bool ended = false;
            for (UInt32 row = 0; row < 12; ++row) {
                const UInt32 item = info.GetLayoutItem(row, col);
                ended = ended || item == 0;
                EXPECT_TRUE(item == 0 || (!ended && row < c.rows && col < c.cols)) << row << "," << col;
                EXPECT_TRUE(item == 0 || items.insert(item).second) << "twice: " << item;
            }
        }
        EXPECT_EQ(items.size(), c.filledCells);
    }
}

struct CellCase { SInt32 kind; UInt32 row, col, item; };

const CellCase kGridCellCases[] = {
    {1, 4, 2, 0x80008}, {1, 5, 2, 0}, {1, 3, 3, 0x80095},
    {1, 5, 0, 0x80082}, {2, 9, 6, 0x700A7}, {2, 0, 7, 0x9286},
    {2, 1, 7, 0}, {2, 5, 0, 0x80084}, {2, 6, 2, 0x800B0},
    {2, 3, 4, 0x800A8}, {2, 4, 4, 0x700A8}, {2, 5, 5, 0x80020},
    {3, 2, 2, 0x80080}, {3, 1, 3, 0x80006}, {4, 0, 1, 0x90110},
    {4, 1, 1, 0x90120}, {4, 2, 1, 0x90100}, {4, 1, 3, 0x90202},
    {4, 2, 3, 0x90201}, {4, 4, 0, 0x10002}, {5, 5, 1, 0x80002},
    {5, 0, 2, 0x80005}, {5, 0xFFFFFFFF, 0, 0},
};

TEST(GridCell, ItemInCell)
{
    for (const auto& c : kGridCellCases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - kGridCellCases));
        TestImgInfo info;
        info.Kinds(c.kind, 0);
        EXPECT_EQ(info.GetLayoutItem(c.row, c.col), c.item);
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
