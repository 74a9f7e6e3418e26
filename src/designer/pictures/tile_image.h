// Both pattern tables in every sub-palette at once: 512 by 256 pixels. All pictures of the designer
// are copied out of this one, so that a change of a colour costs one rebuild of a column.
#pragma once

#include <span>

#include "designer/model/design_store.h"
#include "designer/pictures/surface.h"

namespace bw {

inline constexpr int kTablePixels = 128;    // width and height of a pattern table
inline constexpr int kSubPaletteCount = 4;  // of each of the two palettes

// A run of sub-palettes: `count` from `first`.
struct SubPalettes {
    int first = 0;
    int count = kSubPaletteCount;
};

class TileImage {
  public:
    // Rebuilds the columns of the given sub-palettes, background table and sprite table apart.
    void Redraw(std::span<const uint8_t, kChrDataSize> chrData,
                std::span<const uint8_t, kPaletteSize> bkgPalette,
                std::span<const uint8_t, kPaletteSize> spritePalette, SubPalettes background,
                SubPalettes sprites);

    // The background table lies in the upper half, the sprite table in the lower; each sub-palette
    // has a column of 128 pixels.
    const Surface& Picture() const { return picture_; }

    // 8 by 8 pixels of tile `tile` in sub-palette 0 to 3.
    SourceRect BkgTile(uint8_t tile, int palette) const;
    SourceRect SpriteTile(uint8_t tile, int palette) const;

  private:
    Surface picture_{kSubPaletteCount * kTablePixels, 2 * kTablePixels};
};

// The font of the character mapping: a background table, 128 by 128 pixels, its index 1 white and
// all else black, whatever the palettes say.
Surface MakeFontImage(std::span<const uint8_t, kChrDataSize> chrData);

}  // namespace bw
