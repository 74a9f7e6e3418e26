// What it costs to show a tile of a picture by a tile of the pattern table.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

#include "designer/import/colour_choice.h"
#include "designer/import/tile_pattern.h"

namespace bw {

// Costs are sums over the tiles of a picture: 64 pixels of 960 tiles stay below 2^31.
using TileCost = int32_t;
inline constexpr TileCost kEndless = std::numeric_limits<TileCost>::max();

// A tile, or several that are to become one: the cost of each colour index in each pixel.
struct PixelCosts {
    std::array<std::array<TileCost, kTilePixelCount>, 4> of{};

    void Add(const PixelCosts& other) {
        for (size_t index = 0; index < of.size(); ++index)
            for (size_t pixel = 0; pixel < kTilePixelCount; ++pixel)
                of[index][pixel] += other.of[index][pixel];
    }
    // The pattern of least cost.
    TilePattern Best() const;
    // What showing a pattern costs; any number over `limit` where it is more than that.
    TileCost With(const TilePattern& pattern, TileCost limit = kEndless) const;
};

std::vector<PixelCosts> CostsOfTiles(const Canvas& canvas, std::span<const PictureTile> tiles,
                                     const ColourChoice& choice);
// Of one tile in the sub-palette that `choice` gives its block.
PixelCosts CostsOfTile(const Canvas& canvas, const PictureTile& tile, const ColourChoice& choice);

}  // namespace bw
