#include "designer/import/tile_costs.h"

#include <algorithm>

namespace bw {

TilePattern PixelCosts::Best() const {
    TilePattern pattern;
    for (size_t pixel = 0; pixel < kTilePixelCount; ++pixel) {
        size_t best = 0;
        for (size_t index = 1; index < of.size(); ++index)
            if (of[index][pixel] < of[best][pixel]) best = index;
        pattern.SetIndex(pixel, best);
    }
    return pattern;
}

TileCost PixelCosts::With(const TilePattern& pattern, TileCost limit) const {
    TileCost cost = 0;
    for (size_t row = 0; row < kTilePixelCount && cost <= limit; row += kSideTilePixels)
        for (size_t pixel = row; pixel < row + kSideTilePixels; ++pixel)
            cost += of[pattern.IndexAt(pixel)][pixel];
    return cost;
}

PixelCosts CostsOfTile(const Canvas& canvas, const PictureTile& tile, const ColourChoice& choice) {
    // As much as black for white: what is clear shows the backdrop.
    constexpr auto kWrongInClear = static_cast<TileCost>(kCostUnit);
    PixelCosts costs;
    for (size_t index = 0; index < costs.of.size(); ++index) {
        const Cost* shade = canvas.Costs(choice.ShadeIn(tile.block, index));
        for (size_t pixel = 0; pixel < kTilePixelCount; ++pixel) {
            const size_t place = tile.pixels[pixel];
            const bool wrong = index != 0 && canvas.IsClear(place);
            costs.of[index][pixel] = wrong ? kWrongInClear : shade[place];
        }
    }
    return costs;
}

std::vector<PixelCosts> CostsOfTiles(const Canvas& canvas, std::span<const PictureTile> tiles,
                                     const ColourChoice& choice) {
    std::vector<PixelCosts> costs;
    costs.reserve(tiles.size());
    for (const PictureTile& tile : tiles)
        costs.push_back(CostsOfTile(canvas, tile, choice));
    return costs;
}

}  // namespace bw
