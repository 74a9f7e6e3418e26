#include "designer/import/dithering.h"

#include <algorithm>
#include <limits>

namespace bw {
namespace {

// Bayer's matrix: of 16 equal steps from one colour to the other those below a pixel's number show
// the first. It repeats within a tile, so that equal shades give equal tiles.
constexpr std::array<std::array<float, 4>, 4> kSteps{
    {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}}};

// Two colours that look much different make a coarse pattern. That counts as an error too, most in
// an even mixture.
constexpr float kCoarseness = 0.3F;

struct Mixture {
    Shade first = 0;
    Shade second = 0;
    float part = 0;  // of the second, 0 to 1
    float error = std::numeric_limits<float>::max();
};

Mixture Mix(const Lab& wanted, Shade first, Shade second) {
    const Lab& from = ShownColours()[first].lab;
    const Lab& to = ShownColours()[second].lab;
    const Lab way{to.L - from.L, to.a - from.a, to.b - from.b};
    const float length = way.L * way.L + way.a * way.a + way.b * way.b;
    float part = 0;
    if (length > 0) {
        part = ((wanted.L - from.L) * way.L + (wanted.a - from.a) * way.a +
                (wanted.b - from.b) * way.b) /
               length;
        part = std::clamp(part, 0.0F, 1.0F);
    }
    const Lab mixed{from.L + part * way.L, from.a + part * way.a, from.b + part * way.b};
    const float coarse = kCoarseness * 4 * part * (1 - part) * Distance(from, to);
    return {
        .first = first, .second = second, .part = part, .error = Distance(wanted, mixed) + coarse};
}

}  // namespace

std::vector<Shade> Dither(const Canvas& canvas, const ColourChoice& choice) {
    std::vector<Shade> shades(canvas.PixelCount());
    for (size_t pixel = 0; pixel < shades.size(); ++pixel) {
        if (canvas.IsClear(pixel)) continue;
        const size_t block = pixel / kBlockPixels;
        Mixture best;
        for (size_t first = 0; first < kPaletteColours; ++first)
            for (size_t second = first + 1; second <= kPaletteColours; ++second) {
                const Mixture mixture = Mix(canvas.LabAt(pixel), choice.ShadeIn(block, first),
                                            choice.ShadeIn(block, second));
                if (mixture.error < best.error) best = mixture;
            }
        const size_t x = pixel % kBlockSide;
        const size_t y = pixel % kBlockPixels / kBlockSide;
        const bool second = best.part * 16 > kSteps[y % 4][x % 4] + 0.5F;
        shades[pixel] = second ? best.second : best.first;
    }
    return shades;
}

}  // namespace bw
