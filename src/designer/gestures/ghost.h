// The picture of a tile or sprite that the mouse drags through the designer's window, as plain
// values that a window can show above its views.
#pragma once

#include <cstdint>
#include <vector>

#include "designer/model/working_copy.h"
#include "designer/pictures/surface.h"
#include "designer/pictures/tile_image.h"

namespace bw {

struct GhostTile {
    PatternTable table = PatternTable::kBackground;
    uint8_t tile = 0;
    int palette = 0;  // 0 to 3
    Point at;         // in the ghost, where the tile takes 16 by 16 pixels
    bool mirrorX = false;
    bool mirrorY = false;

    bool operator==(const GhostTile&) const = default;
};

struct Ghost {
    bool shown = false;
    Point at;  // client pixels of the designer's window
    int width = 0;
    int height = 0;
    std::vector<GhostTile> tiles;
    bool framed = false;  // a selected sprite

    void ShowAt(Point corner) {
        at = corner;
        shown = true;
    }

    bool operator==(const Ghost&) const = default;
};

inline constexpr int kGhostBorder = 1;  // pixels around a tile that isn't in its list any more

// As it leaves its list: the cell alone, or for tall sprites the pair of tiles one above the other.
Ghost CellGhost(PatternTable table, uint8_t tile, int palette);
Ghost TallCellGhost(uint8_t tile, int palette);
// On the way: 18 by 18 pixels, tall sprites 18 by 36.
Ghost BkgGhost(uint8_t tile, int palette);
Ghost SpriteGhost(const TileItem& sprite, bool tall);

// How far below the ghost's top its sprite begins.
constexpr int SpriteGhostBorder(bool tall) {
    return tall ? 2 : 1;
}

// On black, in the colours of the tile image.
Surface DrawGhost(const Ghost& ghost, const TileImage& tiles);

}  // namespace bw
