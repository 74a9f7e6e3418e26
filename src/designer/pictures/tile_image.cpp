#include "designer/pictures/tile_image.h"

#include <array>

#include "designer/model/system_palette.h"

namespace bw {
namespace {

constexpr Colour kBlack = 0x000000;
constexpr Colour kWhite = 0xFFFFFF;
// A black that a black transparency key doesn't match.
constexpr Colour kOpaqueBlack = 0x000001;

using SubPalette = std::array<Colour, 4>;
using TileRow = std::array<uint8_t, kTilePixels>;

// The pixel values 0 to 3 of row `row` of a tile.
TileRow DecodeRow(std::span<const uint8_t> tile, size_t row) {
    const unsigned low = tile[row];
    const unsigned high = tile[row + 8];
    TileRow values;
    for (unsigned column = 0; column < values.size(); ++column) {
        const unsigned bit = 7 - column;
        values[column] = static_cast<uint8_t>((high >> bit & 1) << 1 | (low >> bit & 1));
    }
    return values;
}

// Draws a table once for each of the palettes, side by side with the first at `corner`.
void DrawTable(Surface& picture, Point corner, std::span<const uint8_t> table,
               std::span<const SubPalette> palettes) {
    for (int tile = 0; tile < kTileCount; ++tile) {
        const auto bytes = table.subspan(static_cast<size_t>(tile) * kTileBytes, kTileBytes);
        const Point place{corner.x + tile % kTilesInRow * kTilePixels,
                          corner.y + tile / kTilesInRow * kTilePixels};
        for (int row = 0; row < kTilePixels; ++row) {
            const TileRow values = DecodeRow(bytes, static_cast<size_t>(row));
            Colour* pixels = picture.From({place.x, place.y + row});
            for (const SubPalette& palette : palettes) {
                for (size_t column = 0; column < values.size(); ++column)
                    pixels[column] = palette[values[column]];
                pixels += kTablePixels;
            }
        }
    }
}

SubPalette ColoursOf(std::span<const uint8_t, kPaletteSize> palette, int number) {
    SubPalette colours;
    for (size_t index = 0; index < colours.size(); ++index)
        colours[index] = SystemColour(palette[static_cast<size_t>(number) * 4 + index]);
    return colours;
}

SourceRect TileAt(const Surface& picture, int top, uint8_t tile, int palette) {
    const Point place{palette * kTablePixels + tile % kTilesInRow * kTilePixels,
                      top + tile / kTilesInRow * kTilePixels};
    return {picture, place, kTilePixels, kTilePixels};
}

}  // namespace

void TileImage::Redraw(std::span<const uint8_t, kChrDataSize> chrData,
                       std::span<const uint8_t, kPaletteSize> bkgPalette,
                       std::span<const uint8_t, kPaletteSize> spritePalette, SubPalettes background,
                       SubPalettes sprites) {
    std::array<SubPalette, kSubPaletteCount> colours;
    const auto draw = [&](SubPalettes range, int top, std::span<const uint8_t> table) {
        DrawTable(picture_, {range.first * kTablePixels, top}, table,
                  std::span(colours).first(static_cast<size_t>(range.count)));
    };
    for (int i = 0; i < background.count; ++i)
        colours[static_cast<size_t>(i)] = ColoursOf(bkgPalette, background.first + i);
    draw(background, 0, chrData.first<kPatternTableSize>());
    for (int i = 0; i < sprites.count; ++i) {
        SubPalette& palette = colours[static_cast<size_t>(i)];
        palette = ColoursOf(spritePalette, sprites.first + i);
        for (size_t index = 1; index < palette.size(); ++index)
            if (palette[index] == kBlack) palette[index] = kOpaqueBlack;
    }
    draw(sprites, kTablePixels, chrData.last<kPatternTableSize>());
}

SourceRect TileImage::BkgTile(uint8_t tile, int palette) const {
    return TileAt(picture_, 0, tile, palette);
}

SourceRect TileImage::SpriteTile(uint8_t tile, int palette) const {
    return TileAt(picture_, kTablePixels, tile, palette);
}

Surface MakeFontImage(std::span<const uint8_t, kChrDataSize> chrData) {
    Surface font(kTablePixels, kTablePixels);
    constexpr SubPalette kInk = {kBlack, kWhite, kBlack, kBlack};
    DrawTable(font, {0, 0}, chrData.first<kPatternTableSize>(), std::span(&kInk, 1));
    return font;
}

}  // namespace bw
