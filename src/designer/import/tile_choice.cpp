#include "designer/import/tile_choice.h"

#include <algorithm>
#include <map>

#include "designer/import/tile_merge.h"

namespace bw {
namespace {

// Patterns to choose from, and the tiles of a picture that show them.
class Assignment {
  public:
    Assignment(const Canvas& canvas, std::span<const PictureTile> tiles, const TileRoom& room,
               ColourChoice& choice)
        : canvas_(canvas), tiles_(tiles), room_(room), choice_(choice), shown_(tiles.size()) {
        Measure();
    }

    // After a change of the colours.
    void Measure() { costs_ = CostsOfTiles(canvas_, tiles_, choice_); }
    const std::vector<PixelCosts>& Costs() const { return costs_; }

    // The patterns besides the kept ones, as many as there is room for.
    void Offer(std::vector<TilePattern> patterns) {
        offered_ = std::move(patterns);
        offered_.resize(std::min(offered_.size(), room_.free.size()));
        newOnes_ = offered_.size();
        for (const TileRoom::Kept& kept : room_.kept)
            offered_.push_back(kept.pattern);
    }

    // Each tile shows the pattern of least cost. Gives the cost of all.
    int64_t Assign() {
        int64_t sum = 0;
        for (size_t tile = 0; tile < tiles_.size(); ++tile) {
            TileCost lowest = costs_[tile].With(offered_[shown_[tile]]);
            for (size_t number = 0; number < offered_.size(); ++number) {
                const TileCost cost = costs_[tile].With(offered_[number], lowest);
                if (cost >= lowest) continue;
                lowest = cost;
                shown_[tile] = number;
            }
            sum += lowest;
        }
        return sum;
    }

    // Each new pattern becomes the best for the tiles that show it; those that no tile shows go to
    // the tiles that are shown worst.
    void Adapt() {
        std::vector<PixelCosts> sums(newOnes_);
        std::vector<bool> used(newOnes_);
        for (size_t tile = 0; tile < tiles_.size(); ++tile) {
            if (shown_[tile] >= newOnes_) continue;
            sums[shown_[tile]].Add(costs_[tile]);
            used[shown_[tile]] = true;
        }
        std::vector<size_t> worst = WorstFirst();
        size_t next = 0;
        for (size_t number = 0; number < newOnes_; ++number) {
            if (used[number]) {
                offered_[number] = sums[number].Best();
            } else if (next < worst.size()) {
                offered_[number] = costs_[worst[next++]].Best();
            }
        }
    }

    // The best colours for the patterns as they are shown.
    void Refit() {
        std::vector<uint8_t> indices(canvas_.PixelCount());
        for (size_t tile = 0; tile < tiles_.size(); ++tile)
            for (size_t pixel = 0; pixel < kTilePixelCount; ++pixel)
                indices[tiles_[tile].pixels[pixel]] =
                    static_cast<uint8_t>(offered_[shown_[tile]].IndexAt(pixel));
        RefitColours(canvas_, indices, choice_);
        Measure();
    }

    // Each block in the sub-palette in which it costs least by the patterns there are.
    void ChoosePalettes() {
        for (size_t block = 0; block < choice_.paletteOf.size(); ++block) {
            std::vector<size_t> inside;
            for (size_t tile = 0; tile < tiles_.size(); ++tile)
                if (tiles_[tile].block == block) inside.push_back(tile);
            int64_t lowest = std::numeric_limits<int64_t>::max();
            uint8_t best = 0;
            for (uint8_t palette = 0; palette < kPaletteCount; ++palette) {
                choice_.paletteOf[block] = palette;
                int64_t cost = 0;
                for (const size_t tile : inside)
                    cost += LeastCost(CostsOfTile(canvas_, tiles_[tile], choice_));
                if (cost >= lowest) continue;
                lowest = cost;
                best = palette;
            }
            choice_.paletteOf[block] = best;
        }
        Measure();
    }

    TileChoice Result() const {
        TileChoice result;
        std::map<TilePattern, uint8_t> numbers;
        for (const TileRoom::Kept& kept : room_.kept)
            numbers.emplace(kept.pattern, kept.number);  // the first of equal ones
        for (const size_t shown : shown_) {
            const TilePattern& pattern = offered_[shown];
            auto place = numbers.find(pattern);
            if (place == numbers.end()) {
                const uint8_t number = room_.free[result.drawn.size()];
                result.drawn.push_back({.number = number, .pattern = pattern});
                place = numbers.emplace(pattern, number).first;
            }
            result.shown.push_back(pattern);
            result.numbers.push_back(place->second);
        }
        return result;
    }

  private:
    TileCost LeastCost(const PixelCosts& costs) const {
        TileCost lowest = kEndless;
        for (const TilePattern& pattern : offered_)
            lowest = std::min(lowest, costs.With(pattern, lowest));
        return lowest;
    }

    std::vector<size_t> WorstFirst() const {
        std::vector<int64_t> excess;
        std::vector<size_t> order;
        for (size_t tile = 0; tile < tiles_.size(); ++tile) {
            excess.push_back(int64_t{costs_[tile].With(offered_[shown_[tile]])} -
                             costs_[tile].With(costs_[tile].Best()));
            order.push_back(tile);
        }
        std::ranges::stable_sort(order, std::greater(), [&](size_t tile) { return excess[tile]; });
        return order;
    }

    const Canvas& canvas_;
    std::span<const PictureTile> tiles_;
    const TileRoom& room_;
    ColourChoice& choice_;
    std::vector<PixelCosts> costs_;     // of each tile
    std::vector<TilePattern> offered_;  // the new ones, then the kept ones
    size_t newOnes_ = 0;
    std::vector<size_t> shown_;  // of each tile a place in offered_
};

// The patterns that aren't among the kept ones.
size_t CountNew(const std::vector<TilePattern>& patterns, const TileRoom& room) {
    return static_cast<size_t>(std::ranges::count_if(patterns, [&](const TilePattern& pattern) {
        return std::ranges::find(room.kept, pattern, &TileRoom::Kept::pattern) == room.kept.end();
    }));
}

}  // namespace

TileChoice ChooseTiles(const Canvas& canvas, std::span<const PictureTile> tiles,
                       const TileRoom& room, bool mayRefit, ColourChoice& choice,
                       const std::atomic<bool>& stop) {
    constexpr int kMostRounds = 4;
    Assignment assignment(canvas, tiles, room, choice);
    std::vector<TilePattern> patterns =
        MergeTiles(assignment.Costs(), std::numeric_limits<size_t>::max(), stop);
    if (CountNew(patterns, room) <= room.free.size()) {
        std::erase_if(patterns,
                      [&](const TilePattern& pattern) { return CountNew({pattern}, room) == 0; });
        assignment.Offer(std::move(patterns));
        assignment.Assign();
        return assignment.Result();
    }
    if (!room.free.empty()) {
        assignment.Offer(MergeTiles(assignment.Costs(), room.free.size(), stop));
    } else {
        assignment.Offer({});
    }
    int64_t cost = assignment.Assign();
    for (int round = 0; round < kMostRounds && !stop; ++round) {
        assignment.Adapt();
        if (mayRefit) assignment.Refit();
        const int64_t better = assignment.Assign();
        if (better >= cost) break;
        cost = better;
    }
    return assignment.Result();
}

TileChoice ChooseKeptTiles(const Canvas& canvas, std::span<const PictureTile> tiles,
                           const TileRoom& room, bool mayRefit, ColourChoice& choice,
                           const std::atomic<bool>& stop) {
    constexpr int kRounds = 2;
    Assignment assignment(canvas, tiles, room, choice);
    assignment.Offer({});
    for (int round = 0; round < (mayRefit ? kRounds : 1) && !stop; ++round) {
        assignment.ChoosePalettes();
        assignment.Assign();
        if (mayRefit) assignment.Refit();
    }
    return assignment.Result();
}

}  // namespace bw
