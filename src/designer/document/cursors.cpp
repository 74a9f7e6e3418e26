#include "designer/document/cursors.h"

#include <algorithm>
#include <array>

namespace bw {
namespace {

constexpr size_t kQuadrants = 16;  // in a row and in a column of the attribute table
using QuadrantRow = std::array<uint8_t, kQuadrants>;
using QuadrantGrid = std::array<QuadrantRow, kQuadrants>;

int QuadrantShift(Pos quadrant) {
    return (quadrant.X & 1) * 2 + (quadrant.Y & 1) * 4;
}

QuadrantGrid Unpack(const std::array<uint8_t, kAttributeSize>& attributes) {
    QuadrantGrid grid{};
    for (size_t y = 0; y < kQuadrants; ++y)
        for (size_t x = 0; x < kQuadrants; ++x)
            grid[y][x] = static_cast<uint8_t>(
                QuadrantPalette(attributes[y / 2 * 8 + x / 2],
                                {static_cast<int32_t>(x % 2), static_cast<int32_t>(y % 2)}));
    return grid;
}

std::array<uint8_t, kAttributeSize> Pack(const QuadrantGrid& grid) {
    std::array<uint8_t, kAttributeSize> attributes{};
    for (size_t y = 0; y < kQuadrants; ++y)
        for (size_t x = 0; x < kQuadrants; ++x) {
            uint8_t& byte = attributes[y / 2 * 8 + x / 2];
            byte = WithQuadrantPalette(
                byte, {static_cast<int32_t>(x % 2), static_cast<int32_t>(y % 2)}, grid[y][x]);
        }
    return attributes;
}

}  // namespace

int QuadrantPalette(uint8_t attribute, Pos quadrant) {
    return attribute >> QuadrantShift(quadrant) & 3;
}

uint8_t WithQuadrantPalette(uint8_t attribute, Pos quadrant, int palette) {
    const int shift = QuadrantShift(quadrant);
    return static_cast<uint8_t>((attribute & ~(3 << shift)) | (palette & 3) << shift);
}

Views SynchroniseCursors(WorkingCopy& copy) {
    const int64_t place = copy.AttrBytePos.X + int64_t{copy.AttrBytePos.Y} * 8;
    if (place >= 0 && place < static_cast<int64_t>(kAttributeSize)) {
        copy.CurrentAttribute = copy.Store().Attributes[static_cast<size_t>(place)];
    }
    copy.AttrQuadrantPos = {copy.AttrCellPos.X & 1, copy.AttrCellPos.Y & 1};
    copy.BkgPalettePos.X = 4 * QuadrantPalette(copy.CurrentAttribute, copy.AttrQuadrantPos) + 1;
    const uint8_t colour = copy.Store().BkgPalette[static_cast<size_t>(copy.BkgPalettePos.X)];
    copy.SystemPalettePos = {colour & 15, colour >> 4};
    // The background's tiles are shown in the sub-palette in use.
    return View::kAttribute | View::kBkgPalette | View::kSystemPalette | View::kBkgTileList |
           View::kBkgTileEditor | View::kSourceStrip;
}

Views ShiftAttributes(WorkingCopy& copy, Direction direction) {
    QuadrantGrid grid = Unpack(copy.Store().Attributes);
    switch (direction) {
        case Direction::kLeft:
            for (QuadrantRow& row : grid) {
                std::shift_left(row.begin(), row.end(), 1);
                row.back() = 0;
            }
            break;
        case Direction::kRight:
            for (QuadrantRow& row : grid) {
                std::shift_right(row.begin(), row.end(), 1);
                row.front() = 0;
            }
            break;
        case Direction::kUp: {
            const QuadrantRow last = grid.back();
            std::shift_left(grid.begin(), grid.end(), 1);
            grid[kQuadrants - 2].fill(0);
            grid.back() = last;
            break;
        }
        case Direction::kDown:
            std::shift_right(grid.begin(), grid.end(), 1);
            grid.front().fill(0);
    }
    copy.Store().Attributes = Pack(grid);
    return View::kNameTable | SynchroniseCursors(copy);
}

}  // namespace bw
