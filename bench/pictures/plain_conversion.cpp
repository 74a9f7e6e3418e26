#include "pictures/plain_conversion.h"

#include <algorithm>
#include <map>

#include "designer/import/console_colours.h"

namespace bw::bench {
namespace {

constexpr size_t kWidth = 256;
using Palette = std::array<Shade, 4>;     // the backdrop first
using Pattern = std::array<uint8_t, 64>;  // colour indices
using Counts = std::array<size_t, kShadeCount>;

size_t Place(size_t column, size_t row, size_t side, size_t pixel) {
    return (row * side + pixel / side) * kWidth + column * side + pixel % side;
}

Shade MostFrequent(Counts& counts) {
    const auto most = std::ranges::max_element(counts);
    *most = 0;
    return static_cast<Shade>(most - counts.begin());
}

class PlainConverter {
  public:
    explicit PlainConverter(const Picture& picture) {
        for (const uint32_t colour : picture.pixels) {
            labs_.push_back(LabOf(colour));
            shades_.push_back(ClosestShade(labs_.back()));
            ++all_[shades_.back()];
        }
        backdrop_ = MostFrequent(all_);
        screen_.resize(labs_.size());
    }

    std::vector<Colour> Convert() {
        for (size_t block = 0; block < 240; ++block)
            offered_.push_back(OwnPalette(block % 16, block / 16));
        std::vector<Palette> first;
        for (const Palette& palette : offered_)
            if (std::ranges::find(first, palette) == first.end() && first.size() < 4)
                first.push_back(palette);
        for (size_t tile = 0; tile < 960; ++tile)
            ShowTile(tile % 32, tile / 32, ClosestPalette(tile % 32 / 2, tile / 64, first));
        return screen_;
    }

  private:
    Palette OwnPalette(size_t column, size_t row) const {
        Counts counts{};
        for (size_t pixel = 0; pixel < 256; ++pixel)
            ++counts[shades_[Place(column, row, 16, pixel)]];
        counts[backdrop_] = 0;
        Palette palette{backdrop_, MostFrequent(counts), MostFrequent(counts),
                        MostFrequent(counts)};
        std::ranges::sort(palette.begin() + 1, palette.end());
        return palette;
    }

    float Error(size_t place, Shade shade) const {
        return Distance(labs_[place], ShownColours()[shade].lab);
    }
    uint8_t ClosestIndex(size_t place, const Palette& palette) const {
        const auto closest =
            std::ranges::min_element(palette, {}, [&](Shade shade) { return Error(place, shade); });
        return static_cast<uint8_t>(closest - palette.begin());
    }

    Palette ClosestPalette(size_t column, size_t row, const std::vector<Palette>& palettes) const {
        return *std::ranges::min_element(palettes, {}, [&](const Palette& palette) {
            double error = 0;
            for (size_t pixel = 0; pixel < 256; ++pixel) {
                const size_t place = Place(column, row, 16, pixel);
                error += Error(place, palette[ClosestIndex(place, palette)]);
            }
            return error;
        });
    }

    void ShowTile(size_t column, size_t row, const Palette& palette) {
        Pattern pattern{};
        for (size_t pixel = 0; pixel < 64; ++pixel)
            pattern[pixel] = ClosestIndex(Place(column, row, 8, pixel), palette);
        const bool known = std::ranges::find(patterns_, pattern) != patterns_.end();
        if (!known && patterns_.size() < 256) patterns_.push_back(pattern);
        if (!known && patterns_.back() != pattern) {
            pattern = *std::ranges::min_element(patterns_, {}, [&](const Pattern& other) {
                double error = 0;
                for (size_t pixel = 0; pixel < 64; ++pixel)
                    error += Error(Place(column, row, 8, pixel), palette[other[pixel]]);
                return error;
            });
        }
        for (size_t pixel = 0; pixel < 64; ++pixel)
            screen_[Place(column, row, 8, pixel)] = ShownColours()[palette[pattern[pixel]]].colour;
    }

    std::vector<Lab> labs_;
    std::vector<Shade> shades_;
    Counts all_{};
    Shade backdrop_ = 0;
    std::vector<Palette> offered_;
    std::vector<Pattern> patterns_;
    std::vector<Colour> screen_;
};

}  // namespace

std::vector<Colour> PlainScreen(const Picture& picture) {
    return PlainConverter(picture).Convert();
}

double MeanError(const Picture& picture, const std::vector<Colour>& screen) {
    double sum = 0;
    for (size_t pixel = 0; pixel < screen.size(); ++pixel)
        sum += Distance(LabOf(picture.pixels[pixel]), LabOf(screen[pixel]));
    return sum * 100 / static_cast<double>(screen.size());
}

}  // namespace bw::bench
