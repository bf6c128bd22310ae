// SPDX-License-Identifier: MIT
// The display grid of each kind of device: which item stands in which cell.
// The host fills the grid column by column; 0 is an empty cell.
#include "CQelImgInfo.h"

namespace {

// Grids are written as they appear on screen, one line per row.
template <size_t Rows, size_t Cols>
using Grid = UInt32[Rows][Cols];

// Compact cameras.
constexpr Grid<6, 4> kCompactGrid = {
    {0x110, 0x920A, 0x80005, 0x80080},
    {0x9003, 0x8822, 0x80007, 0x80094},
    {0x80004, 0x9207, 0x8001F, 0x80006},
    {0x10000, 0x829A, 0x80086, 0x80095},
    {0x80003, 0x9204, 0x80008, 0},
    {0x80082, 0x80002, 0, 0},
};

// Digital SLRs: flash in column 4, location in column 5, the edit history
// down column 6 and the user comment alone in column 7.
constexpr Grid<10, 8> kSLRGrid = {
    {0x110, 0x920A, 0x800A9, 0x8008D, 0x80009, 0x30002, 0x7009E, 0x9286},
    {0x9003, 0x8822, 0x80005, 0x80081, 0x80012, 0x30004, 0x7009F, 0},
    {0x80004, 0x9207, 0x80007, 0x80092, 0x80008, 0x30006, 0x700A0, 0},
    {0x10000, 0x829A, 0x8001F, 0x800AA, 0x800A8, 0x30011, 0x700A1, 0},
    {0x80003, 0x9204, 0x80095, 0x80006, 0x700A8, 0x30007, 0x700A2, 0},
    {0x80084, 0x80002, 0x800B1, 0, 0x700A9, 0x80020, 0x700A3, 0},
    {0, 0, 0x800B0, 0, 0x700AA, 0, 0x700A4, 0},
    {0, 0, 0, 0, 0, 0, 0x700A5, 0},
    {0, 0, 0, 0, 0, 0, 0x700A6, 0},
    {0, 0, 0, 0, 0, 0, 0x700A7, 0},
};

// Movie clips of compact cameras.
constexpr Grid<6, 4> kMovieGrid = {
    {0x110, 0x920A, 0x80005, 0x80086},
    {0x9003, 0x8822, 0x80007, 0x80006},
    {0x80004, 0x9207, 0x80080, 0},
    {0x10000, 0x829A, 0, 0},
    {0x80003, 0x9204, 0, 0},
    {0x80082, 0x80002, 0, 0},
};

// Film scanners. Keep the order as it is: ROC above GEM above ICE, and the
// highlight above the gray threshold although its item number is higher.
constexpr Grid<6, 4> kScannerGrid = {
    {0x110, 0x90110, 0x90050, 0x90200},
    {0x9003, 0x90120, 0x90051, 0x90202},
    {0x90002, 0x90100, 0x90052, 0x90201},
    {0x10000, 0x90040, 0x90053, 0},
    {0x10002, 0, 0x90060, 0},
    {0x90041, 0, 0, 0},
};

// Other makers' cameras: no lens or converter cell, white balance alone in
// column 2.
constexpr Grid<6, 3> kOtherMakerGrid = {
    {0x110, 0x920A, 0x80005},
    {0x9003, 0x8822, 0},
    {0x80004, 0x9207, 0},
    {0x10000, 0x829A, 0},
    {0x80003, 0x9204, 0},
    {0, 0x80002, 0},
};

template <size_t Rows, size_t Cols>
UInt32 Cell(const Grid<Rows, Cols>& grid, UInt32 row, UInt32 column)
{
    if (column >= Cols || row >= Rows)
        return 0;
    return grid[row][column];
}

}  // namespace

UInt32 CQelImgInfo::_GetLayoutItem_MRX(UInt32 row, UInt32 column) const
{
    return Cell(kCompactGrid, row, column);
}

UInt32 CQelImgInfo::_GetLayoutItem_DSLR(UInt32 row, UInt32 column) const
{
    return Cell(kSLRGrid, row, column);
}

UInt32 CQelImgInfo::_GetLayoutItem_Movie(UInt32 row, UInt32 column) const
{
    return Cell(kMovieGrid, row, column);
}

UInt32 CQelImgInfo::_GetLayoutItem_SCAN(UInt32 row, UInt32 column) const
{
    return Cell(kScannerGrid, row, column);
}

UInt32 CQelImgInfo::_GetLayoutItem_Other(UInt32 row, UInt32 column) const
{
    return Cell(kOtherMakerGrid, row, column);
}

// Rows and columns answer differently for a device kind they do not know:
// six rows but no column, so such a grid shows nothing.
UInt32 CQelImgInfo::GetLayoutRows() const
{
    switch (m_deviceKind) {
    case kDeviceUnknown:
        return 0;
    case kDeviceSLR:
        return 10;
    default:
        return 6;
    }
}

UInt32 CQelImgInfo::GetLayoutCols() const
{
    switch (m_deviceKind) {
    case kDeviceCompact:
    case kDeviceCompactMovie:
    case kDeviceScanner:
        return 4;
    case kDeviceSLR:
        return 8;
    case kDeviceOtherMaker:
        return 3;
    default:
        return 0;
    }
}

UInt32 CQelImgInfo::GetLayoutItem(UInt32 row, UInt32 column)
{
    const UInt32 rows = GetLayoutRows();
    const UInt32 columns = GetLayoutCols();
    if (column >= columns || row >= rows)
        return 0;
    switch (m_deviceKind) {
    case kDeviceCompact:
        return _GetLayoutItem_MRX(row, column);
    case kDeviceSLR:
        return _GetLayoutItem_DSLR(row, column);
    case kDeviceCompactMovie:
        return _GetLayoutItem_Movie(row, column);
    case kDeviceScanner:
        return _GetLayoutItem_SCAN(row, column);
    case kDeviceOtherMaker:
        return _GetLayoutItem_Other(row, column);
    default:
        return 0;
    }
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
