#include "TestImgInfo.h"

#include <set>

namespace {

struct GridSize {
    SInt32 kind;
    UInt32 rows, cols, filledCells;
};

class GridShape : public testing::TestWithParam<GridSize> {};

// Columns are filled from the top without gaps, no item stands twice, and
// nothing lies outside the reported size.
TEST_P(GridShape, SizeAndFilledColumns)
{
    const GridSize& g = GetParam();
    TestImgInfo info;
    info.Kinds(g.kind, 0);
    EXPECT_EQ(info.GetLayoutRows(), g.rows);
    EXPECT_EQ(info.GetLayoutCols(), g.cols);
    std::set<UInt32> items;
    for (UInt32 col = 0; col < 10; ++col) {
        bool ended = false;
        for (UInt32 row = 0; row < 12; ++row) {
            const UInt32 item = info.GetLayoutItem(row, col);
            ended = ended || item == 0;
            EXPECT_TRUE(item == 0 || (!ended && row < g.rows && col < g.cols)) << row << "," << col;
            EXPECT_TRUE(item == 0 || items.insert(item).second) << "twice: " << item;
        }
    }
    EXPECT_EQ(items.size(), g.filledCells);
}

INSTANTIATE_TEST_SUITE_P(Layout, GridShape,
                         testing::Values(GridSize{0, 0, 0, 0}, GridSize{1, 6, 4, 21},
                                         GridSize{2, 10, 8, 48}, GridSize{3, 6, 4, 17},
                                         GridSize{4, 6, 4, 18}, GridSize{5, 6, 3, 12},
                                         GridSize{7, 6, 0, 0}, GridSize{-1, 6, 0, 0}));

struct CellCase {
    SInt32 kind;
    UInt32 row, col, item;
};

class GridCell : public testing::TestWithParam<CellCase> {};

TEST_P(GridCell, ItemInCell)
{
    TestImgInfo info;
    info.Kinds(GetParam().kind, 0);
    EXPECT_EQ(info.GetLayoutItem(GetParam().row, GetParam().col), GetParam().item);
}

INSTANTIATE_TEST_SUITE_P(
    Layout, GridCell,
    testing::Values(
        CellCase{1, 4, 2, 0x80008}, CellCase{1, 5, 2, 0}, CellCase{1, 3, 3, 0x80095},
        CellCase{1, 5, 0, 0x80082}, CellCase{2, 9, 6, 0x700A7}, CellCase{2, 0, 7, 0x9286},
        CellCase{2, 1, 7, 0}, CellCase{2, 5, 0, 0x80084}, CellCase{2, 6, 2, 0x800B0},
        CellCase{2, 3, 4, 0x800A8}, CellCase{2, 4, 4, 0x700A8}, CellCase{2, 5, 5, 0x80020},
        CellCase{3, 2, 2, 0x80080}, CellCase{3, 1, 3, 0x80006}, CellCase{4, 0, 1, 0x90110},
        CellCase{4, 1, 1, 0x90120}, CellCase{4, 2, 1, 0x90100}, CellCase{4, 1, 3, 0x90202},
        CellCase{4, 2, 3, 0x90201}, CellCase{4, 4, 0, 0x10002}, CellCase{5, 5, 1, 0x80002},
        CellCase{5, 0, 2, 0x80005}, CellCase{5, 0xFFFFFFFF, 0, 0}));

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
