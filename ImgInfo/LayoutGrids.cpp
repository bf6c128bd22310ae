// SPDX-License-Identifier: MIT
// The display grid of each kind of device: which item stands in which cell.
// The host fills the grid column by column; 0 is an empty cell.
#include "CQelImgInfo.h"
#include "KeyTables.h"

namespace {

// Grids are written as they appear on screen, one line per row.

// Compact cameras.
constexpr UInt32 kCompactGrid[] = {
    0x110, 0x920A, 0x80005, 0x80080,
    0x9003, 0x8822, 0x80007, 0x80094,
    0x80004, 0x9207, 0x8001F, 0x80006,
    0x10000, 0x829A, 0x80086, 0x80095,
    0x80003, 0x9204, 0x80008, 0,
    0x80082, 0x80002, 0, 0,
};

// Digital SLRs: flash in column 4, location in column 5, the edit history
// down column 6 and the user comment alone in column 7.
constexpr UInt32 kSLRGrid[] = {
    0x110, 0x920A, 0x800A9, 0x8008D, 0x80009, 0x30002, 0x7009E, 0x9286,
    0x9003, 0x8822, 0x80005, 0x80081, 0x80012, 0x30004, 0x7009F, 0,
    0x80004, 0x9207, 0x80007, 0x80092, 0x80008, 0x30006, 0x700A0, 0,
    0x10000, 0x829A, 0x8001F, 0x800AA, 0x800A8, 0x30011, 0x700A1, 0,
    0x80003, 0x9204, 0x80095, 0x80006, 0x700A8, 0x30007, 0x700A2, 0,
    0x80084, 0x80002, 0x800B1, 0, 0x700A9, 0x80020, 0x700A3, 0,
    0, 0, 0x800B0, 0, 0x700AA, 0, 0x700A4, 0,
    0, 0, 0, 0, 0, 0, 0x700A5, 0,
    0, 0, 0, 0, 0, 0, 0x700A6, 0,
    0, 0, 0, 0, 0, 0, 0x700A7, 0,
};

// Movie clips of compact cameras.
constexpr UInt32 kMovieGrid[] = {
    0x110, 0x920A, 0x80005, 0x80086,
    0x9003, 0x8822, 0x80007, 0x80006,
    0x80004, 0x9207, 0x80080, 0,
    0x10000, 0x829A, 0, 0,
    0x80003, 0x9204, 0, 0,
    0x80082, 0x80002, 0, 0,
};

// Film scanners: ROC above GEM above ICE, and the highlight above the gray
// threshold although its item number is higher, as the scanner's own
// software lists its settings.
constexpr UInt32 kScannerGrid[] = {
    0x110, 0x90110, 0x90050, 0x90200,
    0x9003, 0x90120, 0x90051, 0x90202,
    0x90002, 0x90100, 0x90052, 0x90201,
    0x10000, 0x90040, 0x90053, 0,
    0x10002, 0, 0x90060, 0,
    0x90041, 0, 0, 0,
};

// Other makers' cameras: no lens or converter cell, white balance alone in
// column 2.
constexpr UInt32 kOtherMakerGrid[] = {
    0x110, 0x920A, 0x80005,
    0x9003, 0x8822, 0,
    0x80004, 0x9207, 0,
    0x10000, 0x829A, 0,
    0x80003, 0x9204, 0,
    0, 0x80002, 0,
};

struct Grid {
    SInt32 deviceKind;
    qel::Table<UInt32> cells;  // row after row
    UInt32 rows;
    UInt32 cols;
};

constexpr Grid kGrids[] = {
    {kDeviceUnknown, {}, 0, 0},
    {kDeviceCompact, kCompactGrid, 6, 4},
    {kDeviceSLR, kSLRGrid, 10, 8},
    {kDeviceCompactMovie, kMovieGrid, 6, 4},
    {kDeviceScanner, kScannerGrid, 6, 4},
    {kDeviceOtherMaker, kOtherMakerGrid, 6, 3},
};
// A device kind no file is classified as: six rows but no column, so such a
// grid shows nothing.
constexpr Grid kNoGrid = {-1, {}, 6, 0};

constexpr bool EveryGridFilled()
{
    for (const Grid& grid : kGrids)
        if (!grid.cells.empty() && grid.cells.count != size_t{grid.rows} * grid.cols)
            return false;
    return true;
}
static_assert(EveryGridFilled(), "a grid holds a cell for every row and column");

const Grid& GridOf(SInt32 deviceKind)
{
    const Grid* grid = qel::FindRow(kGrids, &Grid::deviceKind, deviceKind);
    return grid ? *grid : kNoGrid;
}

}  // namespace

UInt32 CQelImgInfo::GetLayoutRows() const
{
    return GridOf(m_deviceKind).rows;
}

UInt32 CQelImgInfo::GetLayoutCols() const
{
    return GridOf(m_deviceKind).cols;
}

UInt32 CQelImgInfo::GetLayoutItem(UInt32 row, UInt32 column)
{
    const Grid& grid = GridOf(m_deviceKind);
    if (grid.cells.empty() || column >= grid.cols || row >= grid.rows)
        return 0;
    return grid.cells.begin()[row * grid.cols + column];
}

// An empty cell hands item 0 on; the export answers it with nothing.
UInt32 CQelImgInfo::GetLayoutString(UInt32 row, UInt32 column, char* buffer, UInt32 bufferSize,
                                    CFStringEncoding encoding)
{
    return GetInfoString(GetLayoutItem(row, column), buffer, bufferSize, encoding);
}

UInt32 CQelImgInfo::GetLayoutStringLength(UInt32 row, UInt32 column, CFStringEncoding encoding)
{
    return GetInfoStringLength(GetLayoutItem(row, column), encoding);
}

CFStringRef CQelImgInfo::CopyLayoutCFString(UInt32 row, UInt32 column)
{
    return CopyInfoCFString(GetLayoutItem(row, column));
}
