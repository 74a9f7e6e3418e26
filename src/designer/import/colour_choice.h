// Which colours a picture gets: the backdrop, four sub-palettes of three, and one of these for each
// block of 16 by 16 pixels.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <vector>

#include "designer/import/canvas.h"

namespace bw {

inline constexpr size_t kPaletteColours = 3;  // beside the backdrop
inline constexpr size_t kPaletteCount = 4;

struct ColourChoice {
    using SubPalette = std::array<Shade, kPaletteColours>;

    Shade backdrop = 0;
    bool backdropStays = false;  // it isn't to be chosen
    std::array<SubPalette, kPaletteCount> palettes{};
    std::vector<uint8_t> paletteOf;  // of each block of the canvas

    // The shade of colour index 0 to 3 in a block.
    Shade ShadeIn(size_t block, size_t index) const {
        return index == 0 ? backdrop : palettes[paletteOf[block]][index - 1];
    }
};

// Gives each block the sub-palette that costs least.
void ChoosePalettesOfBlocks(const Canvas& canvas, ColourChoice& choice);

// The colours that show the picture at the least cost that is found, with this backdrop or, without
// one, any. Without an end worth having once `stop` is set.
ColourChoice ChooseColours(const Canvas& canvas, std::optional<Shade> backdrop,
                           const std::atomic<bool>& stop);

// Gives each entry the shade that costs least for the pixels that show it; `indices` has a colour
// index for each pixel.
void RefitColours(const Canvas& canvas, std::span<const uint8_t> indices, ColourChoice& choice);

// Puts the colours of each sub-palette in an order: those farthest from the backdrop first, since
// letters are drawn in the first.
void SortByContrast(ColourChoice& choice);

}  // namespace bw
