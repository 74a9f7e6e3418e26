#include "designer/import/colour_choice.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace bw {
namespace {

using SubPalette = ColourChoice::SubPalette;
using BlockCosts = std::array<Cost, kBlockPixels>;  // the least so far in each pixel

Cost Less(Cost one, Cost other) {
    return one < other ? one : other;
}

// What a block costs where each pixel shows the best of `least` and a shade.
int64_t CostWith(const Cost* least, const Cost* shade) {
    int32_t sum = 0;
    for (size_t pixel = 0; pixel < kBlockPixels; ++pixel)
        sum += Less(least[pixel], shade[pixel]);
    return sum;
}

void Add(BlockCosts& least, const Cost* shade) {
    for (size_t pixel = 0; pixel < kBlockPixels; ++pixel)
        least[pixel] = Less(least[pixel], shade[pixel]);
}

int64_t BlockCost(const Canvas& canvas, size_t block, Shade backdrop, const SubPalette& palette) {
    const Cost* shade0 = canvas.BlockCosts(backdrop, block);
    const Cost* shade1 = canvas.BlockCosts(palette[0], block);
    const Cost* shade2 = canvas.BlockCosts(palette[1], block);
    const Cost* shade3 = canvas.BlockCosts(palette[2], block);
    int32_t sum = 0;
    for (size_t pixel = 0; pixel < kBlockPixels; ++pixel)
        sum += Less(Less(shade0[pixel], shade1[pixel]), Less(shade2[pixel], shade3[pixel]));
    return sum;
}

BlockCosts CostsOf(const Canvas& canvas, size_t block, Shade shade) {
    BlockCosts costs;
    std::copy_n(canvas.BlockCosts(shade, block), kBlockPixels, costs.begin());
    return costs;
}

// The three colours that do most for a block, one after the other.
SubPalette PaletteFor(const Canvas& canvas, size_t block, Shade backdrop) {
    BlockCosts least = CostsOf(canvas, block, backdrop);
    SubPalette palette{};
    for (Shade& entry : palette) {
        int64_t lowest = std::numeric_limits<int64_t>::max();
        for (size_t shade = 0; shade < kShadeCount; ++shade) {
            const int64_t cost =
                CostWith(least.data(), canvas.BlockCosts(static_cast<Shade>(shade), block));
            if (cost >= lowest) continue;
            lowest = cost;
            entry = static_cast<Shade>(shade);
        }
        Add(least, canvas.BlockCosts(entry, block));
    }
    std::ranges::sort(palette);
    return palette;
}

// Four out of many sub-palettes for one backdrop: each block's own are the ones to choose from.
class PalettePick {
  public:
    PalettePick(const Canvas& canvas, Shade backdrop) : blocks_(canvas.Blocks().size()) {
        for (size_t block = 0; block < blocks_; ++block)
            offered_.push_back(PaletteFor(canvas, block, backdrop));
        std::ranges::sort(offered_);
        offered_.erase(std::ranges::unique(offered_).begin(), offered_.end());
        costs_.reserve(offered_.size() * blocks_);
        for (const SubPalette& palette : offered_)
            for (size_t block = 0; block < blocks_; ++block)
                costs_.push_back(BlockCost(canvas, block, backdrop, palette));
    }

    // The best for each place in turn, until nothing gets better.
    int64_t Pick(std::array<SubPalette, kPaletteCount>& picked) {
        std::array<size_t, kPaletteCount> numbers{};
        int64_t cost = std::numeric_limits<int64_t>::max();
        for (size_t taken = 1; taken <= kPaletteCount; ++taken)
            cost = PickOne(numbers, taken - 1, taken);
        for (int64_t before = 0; before != cost;) {
            before = cost;
            for (size_t place = 0; place < kPaletteCount; ++place)
                cost = PickOne(numbers, place, kPaletteCount);
        }
        for (size_t place = 0; place < kPaletteCount; ++place)
            picked[place] = offered_[numbers[place]];
        return cost;
    }

  private:
    // The best sub-palette for a place beside the others of the first `taken` places.
    int64_t PickOne(std::array<size_t, kPaletteCount>& numbers, size_t place, size_t taken) const {
        std::vector<int64_t> others(blocks_, std::numeric_limits<int64_t>::max());
        for (size_t other = 0; other < taken; ++other) {
            for (size_t block = 0; other != place && block < blocks_; ++block)
                others[block] = std::min(others[block], costs_[numbers[other] * blocks_ + block]);
        }
        int64_t lowest = std::numeric_limits<int64_t>::max();
        for (size_t offered = 0; offered < offered_.size(); ++offered) {
            int64_t cost = 0;
            for (size_t block = 0; block < blocks_; ++block)
                cost += std::min(others[block], costs_[offered * blocks_ + block]);
            if (cost >= lowest) continue;
            lowest = cost;
            numbers[place] = offered;
        }
        return lowest;
    }

    size_t blocks_;
    std::vector<SubPalette> offered_;
    std::vector<int64_t> costs_;  // of each offered one a run of all blocks
};

int64_t TotalCost(const Canvas& canvas, const ColourChoice& choice) {
    int64_t cost = 0;
    for (size_t block = 0; block < choice.paletteOf.size(); ++block)
        cost += BlockCost(canvas, block, choice.backdrop, choice.palettes[choice.paletteOf[block]]);
    return cost;
}

// Replaces one colour by the shade that costs least beside the others: `rest` says what the block
// costs without it, for the blocks that show it.
template <typename Rest>
Shade BestShade(const Canvas& canvas, const std::vector<size_t>& blocks, const Rest& rest) {
    std::vector<int64_t> costs(kShadeCount);
    for (const size_t block : blocks) {
        const BlockCosts least = rest(block);
        for (size_t shade = 0; shade < kShadeCount; ++shade)
            costs[shade] +=
                CostWith(least.data(), canvas.BlockCosts(static_cast<Shade>(shade), block));
    }
    return static_cast<Shade>(std::ranges::min_element(costs) - costs.begin());
}

void ImprovePalette(const Canvas& canvas, size_t palette, ColourChoice& choice) {
    std::vector<size_t> blocks;
    for (size_t block = 0; block < choice.paletteOf.size(); ++block)
        if (choice.paletteOf[block] == palette) blocks.push_back(block);
    if (blocks.empty()) return;
    SubPalette& colours = choice.palettes[palette];
    for (size_t entry = 0; entry < kPaletteColours; ++entry) {
        colours[entry] = BestShade(canvas, blocks, [&](size_t block) {
            BlockCosts least = CostsOf(canvas, block, choice.backdrop);
            for (size_t other = 0; other < kPaletteColours; ++other)
                if (other != entry) Add(least, canvas.BlockCosts(colours[other], block));
            return least;
        });
    }
}

void ImproveBackdrop(const Canvas& canvas, ColourChoice& choice) {
    std::vector<size_t> blocks(choice.paletteOf.size());
    std::iota(blocks.begin(), blocks.end(), size_t{0});
    choice.backdrop = BestShade(canvas, blocks, [&](size_t block) {
        const SubPalette& colours = choice.palettes[choice.paletteOf[block]];
        BlockCosts least = CostsOf(canvas, block, colours[0]);
        Add(least, canvas.BlockCosts(colours[1], block));
        Add(least, canvas.BlockCosts(colours[2], block));
        return least;
    });
}

// Colour by colour, until nothing gets better.
void Improve(const Canvas& canvas, ColourChoice& choice, const std::atomic<bool>& stop) {
    constexpr int kMostRounds = 12;
    int64_t cost = TotalCost(canvas, choice);
    for (int round = 0; round < kMostRounds && !stop; ++round) {
        for (size_t palette = 0; palette < kPaletteCount; ++palette)
            ImprovePalette(canvas, palette, choice);
        if (!choice.backdropStays) ImproveBackdrop(canvas, choice);
        ChoosePalettesOfBlocks(canvas, choice);
        const int64_t better = TotalCost(canvas, choice);
        if (better >= cost) return;
        cost = better;
    }
}

// The shades that are closest to the most pixels, that of the most first.
std::vector<Shade> CommonShades(const Canvas& canvas, size_t most) {
    std::vector<size_t> counts(kShadeCount);
    for (size_t pixel = 0; pixel < canvas.PixelCount(); ++pixel)
        if (!canvas.IsClear(pixel)) ++counts[canvas.Closest(pixel)];
    std::vector<Shade> shades(kShadeCount);
    std::iota(shades.begin(), shades.end(), Shade{0});
    std::ranges::stable_sort(shades, std::greater(), [&](Shade shade) { return counts[shade]; });
    shades.resize(most);
    return shades;
}

}  // namespace

void ChoosePalettesOfBlocks(const Canvas& canvas, ColourChoice& choice) {
    choice.paletteOf.resize(canvas.Blocks().size());
    for (size_t block = 0; block < choice.paletteOf.size(); ++block) {
        int64_t lowest = std::numeric_limits<int64_t>::max();
        for (size_t palette = 0; palette < kPaletteCount; ++palette) {
            const int64_t cost =
                BlockCost(canvas, block, choice.backdrop, choice.palettes[palette]);
            if (cost >= lowest) continue;
            lowest = cost;
            choice.paletteOf[block] = static_cast<uint8_t>(palette);
        }
    }
}

ColourChoice ChooseColours(const Canvas& canvas, std::optional<Shade> backdrop,
                           const std::atomic<bool>& stop) {
    constexpr size_t kBackdropsTried = 3;
    ColourChoice best;
    int64_t lowest = std::numeric_limits<int64_t>::max();
    for (const Shade tried :
         backdrop ? std::vector{*backdrop} : CommonShades(canvas, kBackdropsTried)) {
        if (stop) return best;
        ColourChoice choice{.backdrop = tried,
                            .backdropStays = backdrop.has_value(),
                            .palettes = {},
                            .paletteOf = {}};
        const int64_t cost = PalettePick(canvas, tried).Pick(choice.palettes);
        if (cost >= lowest) continue;
        lowest = cost;
        best = choice;
    }
    ChoosePalettesOfBlocks(canvas, best);
    Improve(canvas, best, stop);
    SortByContrast(best);
    return best;
}

void RefitColours(const Canvas& canvas, std::span<const uint8_t> indices, ColourChoice& choice) {
    constexpr size_t kEntries = 1 + kPaletteCount * kPaletteColours;
    std::array<std::vector<uint32_t>, kEntries> pixels;  // that show each entry
    for (size_t pixel = 0; pixel < canvas.PixelCount(); ++pixel) {
        if (canvas.IsClear(pixel)) continue;
        const size_t palette = choice.paletteOf[pixel / kBlockPixels];
        const size_t index = indices[pixel];
        pixels[index == 0 ? 0 : palette * kPaletteColours + index].push_back(
            static_cast<uint32_t>(pixel));
    }
    for (size_t entry = 0; entry < kEntries; ++entry) {
        if (pixels[entry].empty() || (entry == 0 && choice.backdropStays)) continue;
        int64_t lowest = std::numeric_limits<int64_t>::max();
        Shade& colour =
            entry == 0
                ? choice.backdrop
                : choice.palettes[(entry - 1) / kPaletteColours][(entry - 1) % kPaletteColours];
        for (size_t shade = 0; shade < kShadeCount; ++shade) {
            const Cost* costs = canvas.Costs(static_cast<Shade>(shade));
            int64_t cost = 0;
            for (const uint32_t pixel : pixels[entry])
                cost += costs[pixel];
            if (cost >= lowest) continue;
            lowest = cost;
            colour = static_cast<Shade>(shade);
        }
    }
}

void SortByContrast(ColourChoice& choice) {
    const auto lightness = [](Shade shade) { return ShownColours()[shade].lab.L; };
    for (SubPalette& palette : choice.palettes) {
        std::ranges::stable_sort(palette, std::greater(), [&](Shade shade) {
            return std::abs(lightness(shade) - lightness(choice.backdrop));
        });
    }
}

}  // namespace bw
