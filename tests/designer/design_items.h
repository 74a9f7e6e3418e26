// What the designer's tests say in short: its tables, items on the screen, the pixels of tiles.
#pragma once

#include <algorithm>

#include <gmock/gmock.h>

#include "designer/model/tiles.h"

namespace bw {

inline constexpr PatternTable kBkg = PatternTable::kBackground;
inline constexpr PatternTable kSp = PatternTable::kSprites;

MATCHER_P3(Item, x, y, tile, "") {
    return arg.X == x && arg.Y == y && arg.Tile == tile;
}
MATCHER_P2(At, x, y, "") {
    return arg.X == x && arg.Y == y;
}

inline void FillTile(DesignStore& store, PatternTable table, int tile, int byte) {
    std::ranges::fill(TileAt(store, table, tile), static_cast<uint8_t>(byte));
}
inline void FillTable(DesignStore& store, PatternTable table, int byte) {
    std::ranges::fill(TableIn(store.ChrData, table), static_cast<uint8_t>(byte));
}
// A byte of a tile that FillTile has filled.
inline int ByteOf(const DesignStore& store, PatternTable table, int tile) {
    return TileAt(store, table, tile)[15];
}

}  // namespace bw
