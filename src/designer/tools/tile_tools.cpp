#include "designer/tools/tile_tools.h"

#include <algorithm>
#include <array>

#include "designer/model/tiles.h"

namespace bw {
namespace {

constexpr size_t kRows = 8;

using Recoding = std::array<uint8_t, 4>;  // what becomes of each colour index

void Recode(Tile tile, const Recoding& to) {
    for (size_t row = 0; row < kRows; ++row) {
        const unsigned low = tile[row];
        const unsigned high = tile[row + kRows];
        unsigned newLow = 0;
        unsigned newHigh = 0;
        for (int bit = 7; bit >= 0; --bit) {
            const unsigned value = to[(high >> bit & 1) << 1 | (low >> bit & 1)];
            newLow = newLow << 1 | (value & 1);
            newHigh = newHigh << 1 | value >> 1;
        }
        tile[row] = static_cast<uint8_t>(newLow);
        tile[row + kRows] = static_cast<uint8_t>(newHigh);
    }
}

void ShiftRows(Tile tile, TileTool tool) {
    for (const auto plane : {tile.first<kRows>(), tile.last<kRows>()}) {
        switch (tool) {
            case TileTool::kPixelsLeft:
                for (uint8_t& row : plane)
                    row = static_cast<uint8_t>(row << 1);
                break;
            case TileTool::kPixelsRight:
                for (uint8_t& row : plane)
                    row = static_cast<uint8_t>(row >> 1);
                break;
            case TileTool::kPixelsUp:
                std::shift_left(plane.begin(), plane.end(), 1);
                plane.back() = 0;
                break;
            default:
                std::shift_right(plane.begin(), plane.end(), 1);
                plane.front() = 0;
        }
    }
}

void Apply(Tile tile, TileTool tool) {
    switch (tool) {
        case TileTool::kColoursLeft:
            return Recode(tile, {3, 0, 1, 2});
        case TileTool::kColoursRight:
            return Recode(tile, {1, 2, 3, 0});
        case TileTool::kColoursLeftButEmpty:
            return Recode(tile, {0, 3, 1, 2});
        case TileTool::kColoursRightButEmpty:
            return Recode(tile, {0, 2, 3, 1});
        case TileTool::kRemove1:
            return Recode(tile, {0, 0, 2, 3});
        case TileTool::kRemove2:
            return Recode(tile, {0, 1, 0, 3});
        case TileTool::kRemove3:
            return Recode(tile, {0, 1, 2, 0});
        case TileTool::kSwap1And2:
            return Recode(tile, {0, 2, 1, 3});
        case TileTool::kSwap1And3:
            return Recode(tile, {0, 3, 2, 1});
        case TileTool::kSwap2And3:
            return Recode(tile, {0, 1, 3, 2});
        case TileTool::kPixelsLeft:
        case TileTool::kPixelsRight:
        case TileTool::kPixelsUp:
        case TileTool::kPixelsDown:
            return ShiftRows(tile, tool);
    }
}

// The tile behind the last one of a table is the first one of what follows it: the sprite table, or
// behind that the default font. Copies reach it on purpose; the four tables count as one run.
Tile DestinationTile(DesignStore& store, PatternTable table, int number) {
    if (number < kTileCount) return TileAt(store, table, number);
    if (table == PatternTable::kBackground) return TileAt(store, PatternTable::kSprites, 0);
    return std::span(store.DefaultChrData).first<kTileBytes>();
}

}  // namespace

Views ApplyTileTool(WorkingCopy& copy, TileTool tool) {
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        const auto& selected = TileMarks(copy.Store(), table);
        for (int tile = 0; tile < kTileCount; ++tile)
            if (selected[static_cast<size_t>(tile)] != 0) {
                Apply(TileAt(copy.Store(), table, tile), tool);
            }
    }
    return TableViews(PatternTable::kBackground) | TableViews(PatternTable::kSprites);
}

Views CopySelectedTiles(WorkingCopy& copy, PatternTable from) {
    DesignStore& store = copy.Store();
    const PatternTable to =
        from == PatternTable::kBackground ? PatternTable::kSprites : PatternTable::kBackground;
    constexpr int kLastReached = kTileCount;  // one beyond the table, see DestinationTile
    int next = CurrentTile(copy, to);
    for (int tile = 0; tile < kTileCount && next <= kLastReached; ++tile) {
        if (TileMarks(store, from)[static_cast<size_t>(tile)] == 0) continue;
        std::ranges::copy(TileAt(store, from, tile), DestinationTile(store, to, next).begin());
        ++next;
    }
    return TableViews(to);
}

Views SwapPatternTables(WorkingCopy& copy) {
    std::ranges::swap_ranges(TableIn(copy.Store().ChrData, PatternTable::kBackground),
                             TableIn(copy.Store().ChrData, PatternTable::kSprites));
    return TableViews(PatternTable::kBackground) | TableViews(PatternTable::kSprites) |
           View::kBkgPalette | View::kSpritePalette | View::kAttribute;
}

Views ResetPatternTable(WorkingCopy& copy, PatternTable table) {
    std::ranges::copy(TableIn(copy.Store().DefaultChrData, table),
                      TableIn(copy.Store().ChrData, table).begin());
    return TableViews(table);
}

int CurrentColour(const WorkingCopy& copy, PatternTable table) {
    return (table == PatternTable::kBackground ? copy.BkgPalettePos : copy.SpPalettePos).X & 3;
}

Views SetCurrentPixel(WorkingCopy& copy, PatternTable table, Pos pixel) {
    const bool background = table == PatternTable::kBackground;
    (background ? copy.BkgPixelPos : copy.SpPixelPos) = pixel;
    return background ? View::kBkgTileEditor : View::kSpriteTileEditor;
}

Views PaintPixel(WorkingCopy& copy, PatternTable table, Pos pixel) {
    SetPixel(TileAt(copy.Store(), table, CurrentTile(copy, table)), pixel,
             CurrentColour(copy, table));
    return SetCurrentPixel(copy, table, pixel) | TableViews(table);
}

Views BlankSelectedTiles(WorkingCopy& copy) {
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        auto& selected = TileMarks(copy.Store(), table);
        for (int tile = 0; tile < kTileCount; ++tile)
            if (selected[static_cast<size_t>(tile)] != 0) {
                std::ranges::fill(TileAt(copy.Store(), table, tile), uint8_t{0});
            }
        selected.fill(0);
    }
    return TableViews(PatternTable::kBackground) | TableViews(PatternTable::kSprites);
}

}  // namespace bw
