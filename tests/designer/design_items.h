// What the designer's tests say in short: its tables, items on the screen, the pixels of tiles.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

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
// A byte of each of some tiles that FillTile has filled.
inline std::vector<int> BytesOf(const DesignStore& store, PatternTable table,
                                const std::vector<int>& tiles) {
    std::vector<int> bytes;
    for (const int tile : tiles)
        bytes.push_back(TileAt(store, table, tile)[15]);
    return bytes;
}
// The colour indices of a tile's pixels, row by row.
inline std::string Text(ConstTile tile) {
    std::string text;
    for (size_t row = 0; row < 8; ++row)
        for (int bit = 7; bit >= 0; --bit)
            text +=
                static_cast<char>('0' + (tile[row + 8] >> bit & 1) * 2 + (tile[row] >> bit & 1));
    return text;
}
// The tiles of items, those of the selected as negative numbers.
inline std::vector<int> Tiles(const std::vector<TileItem>& items) {
    std::vector<int> tiles;
    for (const TileItem& item : items)
        tiles.push_back(item.IsSelected() ? -item.Tile : item.Tile);
    return tiles;
}

}  // namespace bw
