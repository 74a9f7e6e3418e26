#include "designer/tools/attribute_tools.h"

#include <algorithm>
#include <array>

#include "designer/model/attribute_table.h"

namespace bw {
namespace {

constexpr size_t kQuadrants = 16;  // in a row and in a column of the attribute table
using QuadrantRow = std::array<uint8_t, kQuadrants>;
using QuadrantGrid = std::array<QuadrantRow, kQuadrants>;

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
