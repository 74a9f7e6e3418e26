// The pixels of a tile as two planes of bits, and how the tiles of a picture come by them.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <vector>

#include "designer/import/canvas.h"
#include "designer/import/colour_choice.h"
#include "designer/model/tiles.h"

namespace bw {

struct TilePattern {
    uint64_t low = 0;  // bit 63 is the top left pixel, bit 0 the bottom right one
    uint64_t high = 0;

    size_t IndexAt(size_t pixel) const {
        return (low >> (63 - pixel) & 1) | (high >> (63 - pixel) & 1) << 1;
    }
    void SetIndex(size_t pixel, size_t index) {
        low |= uint64_t{index & 1} << (63 - pixel);
        high |= uint64_t{index >> 1} << (63 - pixel);
    }
    auto operator<=>(const TilePattern&) const = default;
};

TilePattern PatternOf(ConstTile tile);
void WritePattern(const TilePattern& pattern, Tile tile);

// A tile of the screen that the picture shows something in.
struct PictureTile {
    Pos cell;                                        // column and row on the screen
    size_t block = 0;                                // among the canvas's
    std::array<uint32_t, kTilePixelCount> pixels{};  // their places on the canvas
};

// All tiles with a pixel that isn't clear, row by row.
std::vector<PictureTile> TilesOf(const Canvas& canvas);

// A tile with the colour index of least cost in each pixel; the lower of equal ones, and 0 where it
// is clear.
TilePattern ClosestPattern(const Canvas& canvas, const ColourChoice& choice,
                           const PictureTile& tile);

// Reorders the colours of the sub-palettes so that tiles that differ only in their colours become
// the same. Gives the number of different tiles.
size_t ShareByOrder(const Canvas& canvas, std::span<const PictureTile> tiles, ColourChoice& choice);

}  // namespace bw
