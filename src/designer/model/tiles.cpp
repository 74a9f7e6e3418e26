#include "designer/model/tiles.h"

#include <algorithm>

namespace bw {

std::span<uint8_t, kPatternTableSize> TableIn(std::array<uint8_t, kChrDataSize>& data,
                                              PatternTable table) {
    const std::span<uint8_t, kChrDataSize> both(data);
    if (table == PatternTable::kBackground) return both.first<kPatternTableSize>();
    return both.last<kPatternTableSize>();
}

Tile TileAt(DesignStore& store, PatternTable table, int number) {
    return Tile(TableIn(store.ChrData, table)
                    .subspan(static_cast<size_t>(number) * kTileBytes, kTileBytes));
}

ConstTile TileAt(const DesignStore& store, PatternTable table, int number) {
    const size_t start = table == PatternTable::kBackground ? 0 : kPatternTableSize;
    return ConstTile(std::span(store.ChrData)
                         .subspan(start + static_cast<size_t>(number) * kTileBytes, kTileBytes));
}

ConstTile FontTile(const DesignStore& store, int number) {
    return ConstTile(std::span(store.DefaultChrData)
                         .subspan(static_cast<size_t>(number) * kTileBytes, kTileBytes));
}

bool IsBlank(ConstTile tile) {
    return std::ranges::all_of(tile, [](uint8_t byte) { return byte == 0; });
}

std::array<uint8_t, 256>& TileMarks(DesignStore& store, PatternTable table) {
    return table == PatternTable::kBackground ? store.BkgTileSelected : store.SpriteTileSelected;
}

const std::array<uint8_t, 256>& TileMarks(const DesignStore& store, PatternTable table) {
    return table == PatternTable::kBackground ? store.BkgTileSelected : store.SpriteTileSelected;
}

int PixelOf(ConstTile tile, Pos pixel) {
    const auto row = static_cast<size_t>(pixel.Y);
    const int shift = kTilePixels - 1 - pixel.X;
    return (tile[row + kTilePixels] >> shift & 1) * 2 + (tile[row] >> shift & 1);
}

void SetPixel(Tile tile, Pos pixel, int colour) {
    const auto row = static_cast<size_t>(pixel.Y);
    const int mask = 0x80 >> pixel.X;
    const auto set = [&](uint8_t& byte, bool on) {
        byte = static_cast<uint8_t>(on ? byte | mask : byte & ~mask);
    };
    set(tile[row], (colour & 1) != 0);
    set(tile[row + kTilePixels], (colour & 2) != 0);
}

int FirstBlankTile(const DesignStore& store, PatternTable table, int first) {
    int tile = first;
    while (tile < kTileCount && !IsBlank(TileAt(store, table, tile)))
        ++tile;
    return tile;
}

int CurrentTile(const WorkingCopy& copy, PatternTable table) {
    const Pos& place = table == PatternTable::kBackground ? copy.BkgTilePos : copy.SpTilePos;
    const int64_t number = int64_t{place.Y} * 16 + place.X;
    return static_cast<int>(std::clamp<int64_t>(number, 0, kTileCount - 1));
}

Views TableViews(PatternTable table) {
    return table == PatternTable::kBackground
               ? View::kBkgTiles | View::kBkgTileList | View::kBkgTileEditor | View::kNameTable
               : View::kSpriteTiles | View::kSpriteTileList | View::kSpriteTileEditor |
                     View::kNameTable;
}

}  // namespace bw
