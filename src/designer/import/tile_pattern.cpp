#include "designer/import/tile_pattern.h"

#include <algorithm>
#include <limits>

namespace bw {
namespace {

// The pixels of a tile with colour index 1, 2 and 3.
using Masks = std::array<uint64_t, kPaletteColours>;
// Where each of the three colours goes.
using Order = std::array<uint8_t, kPaletteColours>;
constexpr std::array<Order, 6> kOrders{
    {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}}};

TilePattern Ordered(const Masks& masks, const Order& order) {
    Masks placed{};
    for (size_t colour = 0; colour < kPaletteColours; ++colour)
        placed[order[colour]] = masks[colour];
    return {.low = placed[0] | placed[2], .high = placed[1] | placed[2]};
}

// Counts different patterns; emptied without being cleared.
class PatternCounter {
  public:
    void Start() {
        ++round_;
        count_ = 0;
    }
    void Add(const TilePattern& pattern) {
        constexpr uint64_t kSpread = 0x9E3779B97F4A7C15;  // odd, near 2^64 / the golden ratio
        uint64_t slot = ((pattern.low * kSpread) ^ (pattern.high + kSpread)) * kSpread >> 53;
        while (slots_[slot].round == round_ && slots_[slot].pattern != pattern)
            slot = (slot + 1) % slots_.size();
        if (slots_[slot].round == round_) return;
        slots_[slot] = {.pattern = pattern, .round = round_};
        ++count_;
    }
    size_t Count() const { return count_; }

  private:
    struct Slot {
        TilePattern pattern;
        int round = 0;
    };
    std::vector<Slot> slots_ = std::vector<Slot>(2048);  // twice a screen's tiles, 11 bits
    int round_ = 0;
    size_t count_ = 0;
};

// The tiles of a picture in every order of their colours.
class OrderSearch {
  public:
    OrderSearch(const Canvas& canvas, std::span<const PictureTile> tiles,
                const ColourChoice& choice) {
        for (const PictureTile& tile : tiles) {
            const TilePattern pattern = ClosestPattern(canvas, choice, tile);
            const Masks masks{pattern.low & ~pattern.high, pattern.high & ~pattern.low,
                              pattern.low & pattern.high};
            auto& forms = forms_[choice.paletteOf[tile.block]].emplace_back();
            for (size_t order = 0; order < kOrders.size(); ++order)
                forms[order] = Ordered(masks, kOrders[order]);
        }
    }

    size_t Count(const std::array<size_t, kPaletteCount>& orders) {
        counter_.Start();
        for (size_t palette = 0; palette < kPaletteCount; ++palette)
            for (const auto& forms : forms_[palette])
                counter_.Add(forms[orders[palette]]);
        return counter_.Count();
    }
    bool IsUsed(size_t palette) const { return !forms_[palette].empty(); }

  private:
    std::array<std::vector<std::array<TilePattern, kOrders.size()>>, kPaletteCount> forms_;
    PatternCounter counter_;
};

}  // namespace

TilePattern PatternOf(ConstTile tile) {
    TilePattern pattern;
    for (size_t row = 0; row < kSideTilePixels; ++row) {
        pattern.low = pattern.low << 8 | tile[row];
        pattern.high = pattern.high << 8 | tile[row + kSideTilePixels];
    }
    return pattern;
}

void WritePattern(const TilePattern& pattern, Tile tile) {
    for (size_t row = 0; row < kSideTilePixels; ++row) {
        tile[row] = static_cast<uint8_t>(pattern.low >> (56 - 8 * row));
        tile[row + kSideTilePixels] = static_cast<uint8_t>(pattern.high >> (56 - 8 * row));
    }
}

std::vector<PictureTile> TilesOf(const Canvas& canvas) {
    std::vector<PictureTile> tiles;
    const TileArea& area = canvas.Area();
    for (int row = area.row; row < area.row + area.rows; ++row)
        for (int column = area.column; column < area.column + area.columns; ++column) {
            PictureTile tile{.cell = {column, row}, .block = 0, .pixels = {}};
            bool shows = false;
            for (size_t pixel = 0; pixel < kTilePixelCount; ++pixel) {
                const size_t place =
                    canvas.PlaceOf(column * kTilePixels + static_cast<int>(pixel % 8),
                                   row * kTilePixels + static_cast<int>(pixel / 8));
                tile.pixels[pixel] = static_cast<uint32_t>(place);
                shows |= !canvas.IsClear(place);
            }
            tile.block = tile.pixels[0] / kBlockPixels;
            if (shows) tiles.push_back(tile);
        }
    return tiles;
}

TilePattern ClosestPattern(const Canvas& canvas, const ColourChoice& choice,
                           const PictureTile& tile) {
    TilePattern pattern;
    for (size_t pixel = 0; pixel < kTilePixelCount; ++pixel) {
        size_t closest = 0;
        for (size_t index = 1; index <= kPaletteColours; ++index) {
            const auto cost = [&](size_t of) {
                return canvas.Costs(choice.ShadeIn(tile.block, of))[tile.pixels[pixel]];
            };
            if (cost(index) < cost(closest)) closest = index;
        }
        pattern.SetIndex(pixel, closest);
    }
    return pattern;
}

size_t ShareByOrder(const Canvas& canvas, std::span<const PictureTile> tiles,
                    ColourChoice& choice) {
    OrderSearch search(canvas, tiles, choice);
    std::array<size_t, kPaletteCount> orders{};
    std::array<size_t, kPaletteCount> best{};
    size_t least = search.Count(orders);
    // Only how they lie towards each other matters, so the first one stays.
    const auto last = [&](size_t palette) { return search.IsUsed(palette) ? kOrders.size() : 1; };
    for (orders[1] = 0; orders[1] < last(1); ++orders[1])
        for (orders[2] = 0; orders[2] < last(2); ++orders[2])
            for (orders[3] = 0; orders[3] < last(3); ++orders[3]) {
                const size_t count = search.Count(orders);
                if (count >= least) continue;
                least = count;
                best = orders;
            }
    for (size_t palette = 0; palette < kPaletteCount; ++palette) {
        const ColourChoice::SubPalette before = choice.palettes[palette];
        for (size_t colour = 0; colour < kPaletteColours; ++colour)
            choice.palettes[palette][kOrders[best[palette]][colour]] = before[colour];
    }
    return least;
}

}  // namespace bw
