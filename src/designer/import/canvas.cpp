#include "designer/import/canvas.h"

#include <algorithm>
#include <cmath>

namespace bw {
namespace {

constexpr int kBlockColumns = kScreenColumns / 2;

// The tiles from `first` on that `pixels` pixels touch, of `limit` on the screen.
int TilesTouched(int first, uint32_t pixels, int limit) {
    const uint32_t tiles = pixels / kTilePixels + (pixels % kTilePixels != 0 ? 1 : 0);
    return static_cast<int>(std::min(tiles, static_cast<uint32_t>(limit - first)));
}

}  // namespace

Canvas::Canvas(const Picture& picture, Pos at)
    : area_{.column = at.X,
            .row = at.Y,
            .columns = TilesTouched(at.X, picture.width, kScreenColumns),
            .rows = TilesTouched(at.Y, picture.height, kScreenRows)} {
    for (int row = area_.row / 2; row <= (area_.row + area_.rows - 1) / 2; ++row)
        for (int column = area_.column / 2; column <= (area_.column + area_.columns - 1) / 2;
             ++column) {
            blockAt_[static_cast<size_t>(row * kBlockColumns + column)] =
                static_cast<int16_t>(blocks_.size());
            blocks_.push_back({column, row});
        }
    pixels_.assign(blocks_.size() * kBlockPixels, kTransparentPixel);
    const int left = area_.column * kTilePixels;
    const int top = area_.row * kTilePixels;
    const int width = static_cast<int>(
        std::min(picture.width, static_cast<uint32_t>(area_.columns * kTilePixels)));
    const int height =
        static_cast<int>(std::min(picture.height, static_cast<uint32_t>(area_.rows * kTilePixels)));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels_[PlaceOf(left + x, top + y)] =
                picture.pixels[static_cast<size_t>(y) * picture.width + static_cast<size_t>(x)];
    Measure();
}

Canvas Canvas::Recoloured(std::span<const Shade> shades) const {
    Canvas other;
    other.area_ = area_;
    other.blocks_ = blocks_;
    other.blockAt_ = blockAt_;
    other.pixels_ = pixels_;
    for (size_t pixel = 0; pixel < pixels_.size(); ++pixel)
        if (!IsClear(pixel)) other.pixels_[pixel] = ShownColours()[shades[pixel]].colour;
    other.Measure();
    return other;
}

size_t Canvas::PlaceOf(int x, int y) const {
    const size_t block =
        static_cast<size_t>(blockAt_[static_cast<size_t>(y / kBlockSide * kBlockColumns) +
                                     static_cast<size_t>(x / kBlockSide)]);
    return block * kBlockPixels + static_cast<size_t>(y % kBlockSide * kBlockSide + x % kBlockSide);
}

void Canvas::Measure() {
    const size_t count = pixels_.size();
    labs_.resize(count);
    for (size_t pixel = 0; pixel < count; ++pixel) {
        const bool same = pixel != 0 && pixels_[pixel] == pixels_[pixel - 1];
        labs_[pixel] = same ? labs_[pixel - 1] : LabOf(pixels_[pixel]);
    }
    costs_.resize(kShadeCount * count);
    closest_.assign(count, 0);
    std::vector<Cost> least(count, INT16_MAX);
    for (size_t shade = 0; shade < kShadeCount; ++shade) {
        const Lab& lab = ShownColours()[shade].lab;
        Cost* costs = costs_.data() + shade * count;
        for (size_t pixel = 0; pixel < count; ++pixel) {
            costs[pixel] = IsClear(pixel) ? Cost{0} : CostOf(labs_[pixel], lab);
            if (costs[pixel] >= least[pixel]) continue;
            least[pixel] = costs[pixel];
            closest_[pixel] = static_cast<Shade>(shade);
        }
    }
}

}  // namespace bw
