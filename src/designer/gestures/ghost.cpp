#include "designer/gestures/ghost.h"

#include <utility>

#include "designer/pictures/marks.h"
#include "designer/pictures/small_views.h"

namespace bw {
namespace {

constexpr int kGhostSize = kListCell + 2 * kGhostBorder;
constexpr int kTallGhostHeight = 2 * kGhostSize;

Ghost OfSize(int width, int height, std::vector<GhostTile> tiles) {
    Ghost ghost;
    ghost.width = width;
    ghost.height = height;
    ghost.tiles = std::move(tiles);
    return ghost;
}

}  // namespace

Ghost CellGhost(PatternTable table, uint8_t tile, int palette) {
    return OfSize(kListCell, kListCell, {{table, tile, palette, {0, 0}}});
}

Ghost TallCellGhost(uint8_t tile, int palette) {
    const auto upper = static_cast<uint8_t>(tile & 0xFE);
    const auto lower = static_cast<uint8_t>(tile | 1);
    return OfSize(kGhostSize, kTallGhostHeight,
                  {{PatternTable::kSprites, upper, palette, {1, 1}},
                   {PatternTable::kSprites, lower, palette, {1, 1 + kListCell}}});
}

Ghost BkgGhost(uint8_t tile, int palette) {
    return OfSize(kGhostSize, kGhostSize,
                  {{PatternTable::kBackground, tile, palette, {kGhostBorder, kGhostBorder}}});
}

Ghost SpriteGhost(const TileItem& sprite, bool tall) {
    const bool mirrorX = (sprite.Flags & TileItem::kFlipHorizontally) != 0;
    const bool mirrorY = (sprite.Flags & TileItem::kFlipVertically) != 0;
    // The console takes the table of a tall sprite from the tile's low bit.
    const bool fromBkg = tall && (sprite.Tile & 1) == 0;
    const PatternTable table = fromBkg ? PatternTable::kBackground : PatternTable::kSprites;
    const int top = SpriteGhostBorder(tall);
    const auto part = [&](uint8_t tile, int y) {
        return GhostTile{table, tile, sprite.Palette & 3, {kGhostBorder, y}, mirrorX, mirrorY};
    };
    Ghost ghost;
    if (tall) {
        const auto even = static_cast<uint8_t>(sprite.Tile & 0xFE);
        const auto odd = static_cast<uint8_t>(sprite.Tile | 1);
        ghost =
            OfSize(kGhostSize, kTallGhostHeight,
                   {part(mirrorY ? odd : even, top), part(mirrorY ? even : odd, top + kListCell)});
    } else {
        ghost = OfSize(kGhostSize, kGhostSize, {part(sprite.Tile, top)});
    }
    ghost.framed = (sprite.Selected & 1) != 0;
    return ghost;
}

Surface DrawGhost(const Ghost& ghost, const TileImage& tiles) {
    Surface picture(ghost.width, ghost.height);
    for (const GhostTile& part : ghost.tiles) {
        const SourceRect source = part.table == PatternTable::kBackground
                                      ? tiles.BkgTile(part.tile, part.palette)
                                      : tiles.SpriteTile(part.tile, part.palette);
        Copy(picture, part.at, source,
             {.scale = kListCell / kTilePixels, .mirrorX = part.mirrorX, .mirrorY = part.mirrorY});
    }
    if (ghost.framed) DrawFrame(picture, {0, 0}, {ghost.width - 1, ghost.height - 1}, kCyan);
    return picture;
}

}  // namespace bw
