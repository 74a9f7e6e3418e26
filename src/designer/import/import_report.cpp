#include "designer/import/import_report.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <set>

#include "designer/pictures/marks.h"

namespace bw {
namespace {

constexpr Colour kLossFrame = 0xD02070;

// Black, red, yellow, white: brighter for a larger error, which is white from 0.3 of black and
// white's on.
Colour HeatOf(float error) {
    constexpr float kFull = 0.3F;
    const float heat = std::min(error / kFull, 1.0F) * 3;
    const auto channel = [&](float from) {
        return static_cast<Colour>(std::lround(std::clamp(heat - from, 0.0F, 1.0F) * 255));
    };
    return channel(0) << 16 | channel(1) << 8 | channel(2);
}

class Description {
  public:
    Description(const Canvas& picture, const Canvas& wanted, const ColourChoice& colours,
                ImportResult& result)
        : picture_(picture),
          wanted_(wanted),
          colours_(colours),
          result_(result),
          shown_(wanted.PixelCount()) {
        std::ranges::fill(shown_, colours.backdrop);
    }

    void Show(std::span<const PictureTile> tiles, const TileChoice& chosen) {
        for (size_t tile = 0; tile < tiles.size(); ++tile)
            for (size_t pixel = 0; pixel < kTilePixelCount; ++pixel)
                shown_[tiles[tile].pixels[pixel]] =
                    colours_.ShadeIn(tiles[tile].block, chosen.shown[tile].IndexAt(pixel));
        result_.tiles = std::set(chosen.numbers.begin(), chosen.numbers.end()).size();
    }

    void FindLosses() {
        for (size_t block = 0; block < wanted_.Blocks().size(); ++block) {
            std::bitset<kShadeCount> closest;
            std::bitset<kShadeCount> shown;
            for (size_t i = 0; i < kBlockPixels; ++i) {
                const size_t pixel = block * kBlockPixels + i;
                shown.set(shown_[pixel]);
                if (!wanted_.IsClear(pixel)) closest.set(wanted_.Closest(pixel));
            }
            if ((closest & ~shown).any()) result_.lossyBlocks.push_back(wanted_.Blocks()[block]);
        }
    }

    void Draw() {
        const TileArea& area = result_.area;
        const int left = area.column * kTilePixels;
        const int top = area.row * kTilePixels;
        const Surface plain(area.columns * kTilePixels, area.rows * kTilePixels);
        result_.original = result_.result = result_.error = plain;
        double sum = 0;
        size_t count = 0;
        for (int y = 0; y < plain.Height(); ++y)
            for (int x = 0; x < plain.Width(); ++x) {
                const size_t pixel = wanted_.PlaceOf(left + x, top + y);
                const ShownColour& shown = ShownColours()[shown_[pixel]];
                result_.original.At({x, y}) = result_.result.At({x, y}) = shown.colour;
                if (wanted_.IsClear(pixel)) continue;
                const float error = Distance(wanted_.LabAt(pixel), shown.lab);
                result_.original.At({x, y}) = picture_.Pixels()[pixel];
                result_.error.At({x, y}) = HeatOf(error);
                sum += error;
                ++count;
            }
        result_.meanError = count == 0 ? 0 : sum * 100 / static_cast<double>(count);
        for (const Point& block : result_.lossyBlocks) {
            const Point corner{block.x * kBlockSide - left, block.y * kBlockSide - top};
            DrawFrame(result_.error, corner, {corner.x + kBlockSide - 1, corner.y + kBlockSide - 1},
                      kLossFrame, Stroke::kDotted);
        }
    }

  private:
    const Canvas& picture_;
    const Canvas& wanted_;
    const ColourChoice& colours_;
    ImportResult& result_;
    std::vector<Shade> shown_;  // of each pixel
};

}  // namespace

void DescribeImport(const Canvas& picture, const Canvas& wanted, std::span<const PictureTile> tiles,
                    const TileChoice& chosen, const ColourChoice& colours, ImportResult& result) {
    Description description(picture, wanted, colours, result);
    description.Show(tiles, chosen);
    description.FindLosses();
    description.Draw();
}

}  // namespace bw
