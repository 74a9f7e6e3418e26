#include "designer/import/exact_colours.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <map>
#include <utility>

#include "designer/import/tile_pattern.h"

namespace bw {
namespace {

constexpr size_t kMostColours = 1 + kPaletteCount * kPaletteColours;
using ColourSet = uint16_t;  // a bit for each colour of the picture

struct PictureColours {
    std::vector<uint32_t> colours;    // those of most pixels first
    std::vector<size_t> counts;       // how many pixels have them
    std::vector<uint8_t> colourOf;    // of each pixel; 0 where it is clear
    std::vector<ColourSet> inBlocks;  // of each block
};

// Nothing if there are too many.
std::optional<PictureColours> ColoursOf(const Canvas& canvas) {
    std::map<uint32_t, size_t> counts;
    for (size_t pixel = 0; pixel < canvas.PixelCount(); ++pixel) {
        if (canvas.IsClear(pixel)) continue;
        ++counts[canvas.Pixels()[pixel]];
        if (counts.size() > kMostColours) return std::nullopt;
    }
    PictureColours found;
    for (const auto& [colour, count] : counts)
        found.colours.push_back(colour);
    std::ranges::stable_sort(found.colours, std::greater(),
                             [&](uint32_t colour) { return counts[colour]; });
    for (const uint32_t colour : found.colours)
        found.counts.push_back(counts[colour]);
    found.colourOf.resize(canvas.PixelCount());
    found.inBlocks.resize(canvas.Blocks().size());
    for (size_t pixel = 0; pixel < canvas.PixelCount(); ++pixel) {
        if (canvas.IsClear(pixel)) continue;
        const auto place = std::ranges::find(found.colours, canvas.Pixels()[pixel]);
        const auto number = static_cast<uint8_t>(place - found.colours.begin());
        found.colourOf[pixel] = number;
        found.inBlocks[pixel / kBlockPixels] |= static_cast<ColourSet>(1u << number);
    }
    return found;
}

// Gives each worker, a row of `costs`, a job of its own, a column, at the least cost of all: the
// Hungarian method with potentials, in the form of Jonker and Volgenant's shortest paths. There are
// at least as many jobs as workers.
std::vector<size_t> Assign(const std::vector<std::vector<int64_t>>& costs, size_t jobs) {
    constexpr int64_t kFar = std::numeric_limits<int64_t>::max() / 4;
    const size_t workers = costs.size();
    std::vector<int64_t> rowPrice(workers + 1);
    std::vector<int64_t> jobPrice(jobs + 1);
    std::vector<size_t> workerOf(jobs + 1);  // from 1 on; 0: free. Job 0 is where a search starts
    for (size_t worker = 1; worker <= workers; ++worker) {
        std::vector<int64_t> distance(jobs + 1, kFar);
        std::vector<size_t> from(jobs + 1);
        std::vector<bool> seen(jobs + 1);
        size_t job = 0;
        workerOf[0] = worker;
        do {
            seen[job] = true;
            size_t next = 0;
            int64_t step = kFar;
            for (size_t other = 1; other <= jobs; ++other) {
                if (seen[other]) continue;
                const size_t row = workerOf[job];
                const int64_t way = costs[row - 1][other - 1] - rowPrice[row] - jobPrice[other];
                if (way < distance[other]) {
                    distance[other] = way;
                    from[other] = job;
                }
                if (distance[other] < step) {
                    step = distance[other];
                    next = other;
                }
            }
            for (size_t other = 0; other <= jobs; ++other) {
                if (seen[other]) {
                    rowPrice[workerOf[other]] += step;
                    jobPrice[other] -= step;
                } else {
                    distance[other] -= step;
                }
            }
            job = next;
        } while (workerOf[job] != 0);
        for (; job != 0; job = from[job])
            workerOf[job] = workerOf[from[job]];
    }
    std::vector<size_t> jobOf(workers);
    for (size_t job = 1; job <= jobs; ++job)
        if (workerOf[job] != 0) jobOf[workerOf[job] - 1] = job - 1;
    return jobOf;
}

// A shade for each colour, no two alike.
std::vector<Shade> MatchShades(const PictureColours& picture) {
    std::vector<std::vector<int64_t>> costs;
    for (size_t colour = 0; colour < picture.colours.size(); ++colour) {
        const Lab lab = LabOf(picture.colours[colour]);
        auto& row = costs.emplace_back();
        for (const ShownColour& shown : ShownColours())
            row.push_back(CostOf(lab, shown.lab) * static_cast<int64_t>(picture.counts[colour]));
    }
    std::vector<Shade> shades;
    for (const size_t shade : Assign(costs, kShadeCount))
        shades.push_back(static_cast<Shade>(shade));
    return shades;
}

// Those sets of a picture without its backdrop that no other one holds; the largest first. Nothing
// if one is too large.
std::optional<std::vector<ColourSet>> SetsToPlace(const PictureColours& picture,
                                                  ColourSet backdrop) {
    std::vector<ColourSet> sets;
    for (const ColourSet block : picture.inBlocks) {
        const auto set = static_cast<ColourSet>(block & ~backdrop);
        if (std::popcount(set) > static_cast<int>(kPaletteColours)) return std::nullopt;
        if (std::ranges::find(sets, set) == sets.end()) sets.push_back(set);
    }
    std::vector<ColourSet> largest;
    for (const ColourSet set : sets) {
        const bool held = std::ranges::any_of(
            sets, [&](ColourSet other) { return other != set && (other & set) == set; });
        if (!held) largest.push_back(set);
    }
    std::ranges::stable_sort(largest, std::greater(),
                             [](ColourSet set) { return std::popcount(set); });
    return largest;
}

// Tries the ways to lay the colours of all blocks into four sub-palettes.
class Packing {
  public:
    Packing(const Canvas& canvas, const PictureColours& picture, std::optional<Shade> fixedBackdrop,
            size_t tileLimit)
        : canvas_(canvas), fixedBackdrop_(fixedBackdrop), tileLimit_(tileLimit), picture_(picture) {
        best_.shades.reserve(canvas.PixelCount());
        shades_ = MatchShades(picture);
        for (const uint8_t colour : picture.colourOf)
            best_.shades.push_back(shades_[colour]);
        tiles_ = TilesOf(canvas);
    }

    std::optional<ExactColours> Find() {
        const Canvas exact = canvas_.Recoloured(best_.shades);
        exact_ = &exact;
        best_.tiles = std::numeric_limits<size_t>::max();
        // The last one has a backdrop that doesn't show.
        for (size_t backdrop = 0; backdrop <= picture_.colours.size() && !Done(); ++backdrop) {
            if (fixedBackdrop_ && backdrop != ColourOf(*fixedBackdrop_)) continue;
            backdrop_ = backdrop;
            const auto sets = SetsToPlace(picture_, BackdropSet());
            if (!sets) continue;
            sets_ = *sets;
            bins_.fill(0);
            Place(0);
        }
        if (best_.tiles == std::numeric_limits<size_t>::max()) return std::nullopt;
        return std::move(best_);
    }

  private:
    // Counting the tiles of a way takes about a millisecond.
    static constexpr int kMostTried = 40;
    // Sets that don't fit are found out early; this ends the search of what only looks like one.
    static constexpr int kMostSteps = 20'000;

    bool Done() const {
        return best_.tiles <= tileLimit_ || tried_ >= kMostTried || steps_ >= kMostSteps;
    }

    // An empty sub-palette first: colours that take turns in the same tiles have one each.
    void Place(size_t next) {
        ++steps_;
        if (Done()) return;
        if (next == sets_.size()) return Try();
        std::array<size_t, kPaletteCount> bins{0, 1, 2, 3};
        std::ranges::stable_sort(bins, {}, [&](size_t bin) { return std::popcount(bins_[bin]); });
        bool emptySeen = false;
        for (const size_t bin : bins) {
            const ColourSet before = bins_[bin];
            if (before == 0 && std::exchange(emptySeen, true)) continue;  // all empty ones are one
            const auto together = static_cast<ColourSet>(before | sets_[next]);
            if (std::popcount(together) > static_cast<int>(kPaletteColours)) continue;
            bins_[bin] = together;
            Place(next + 1);
            bins_[bin] = before;
        }
    }

    void Try() {
        ++tried_;
        ColourChoice choice;
        choice.backdrop =
            backdrop_ < shades_.size() ? shades_[backdrop_] : fixedBackdrop_.value_or(FreeShade());
        for (size_t palette = 0; palette < kPaletteCount; ++palette) {
            choice.palettes[palette].fill(choice.backdrop);
            size_t entry = 0;
            for (size_t colour = 0; colour < picture_.colours.size(); ++colour)
                if ((bins_[palette] >> colour & 1) != 0)
                    choice.palettes[palette][entry++] = shades_[colour];
        }
        for (const ColourSet block : picture_.inBlocks) {
            const auto holds = [&](ColourSet bin) { return (block & ~BackdropSet() & ~bin) == 0; };
            choice.paletteOf.push_back(
                static_cast<uint8_t>(std::ranges::find_if(bins_, holds) - bins_.begin()));
        }
        SortByContrast(choice);
        const size_t tiles = ShareByOrder(*exact_, tiles_, choice);
        if (tiles >= best_.tiles) return;
        best_.tiles = tiles;
        best_.choice = choice;
    }

    ColourSet BackdropSet() const {
        return static_cast<ColourSet>(backdrop_ < shades_.size() ? 1u << backdrop_ : 0);
    }
    // The number of the picture's colour that has this shade; that of none where no one has.
    size_t ColourOf(Shade shade) const {
        return static_cast<size_t>(std::ranges::find(shades_, shade) - shades_.begin());
    }
    // Black, or the first shade that the picture doesn't show.
    Shade FreeShade() const {
        Shade shade = 0;
        while (std::ranges::find(shades_, shade) != shades_.end())
            ++shade;
        return shade;
    }

    const Canvas& canvas_;
    const Canvas* exact_ = nullptr;
    std::optional<Shade> fixedBackdrop_;
    size_t tileLimit_;
    const PictureColours& picture_;
    std::vector<Shade> shades_;  // of the picture's colours
    std::vector<PictureTile> tiles_;
    size_t backdrop_ = 0;
    std::vector<ColourSet> sets_;
    std::array<ColourSet, kPaletteCount> bins_{};
    int tried_ = 0;
    int steps_ = 0;
    ExactColours best_;
};

}  // namespace

std::optional<ExactColours> FindExactColours(const Canvas& canvas, std::optional<Shade> backdrop,
                                             size_t tileLimit) {
    const auto picture = ColoursOf(canvas);
    if (!picture || picture->colours.empty()) return std::nullopt;
    return Packing(canvas, *picture, backdrop, tileLimit).Find();
}

}  // namespace bw
