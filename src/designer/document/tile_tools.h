// Commands that change the pixels of the pattern tables. Each is one step of the history; the
// caller opens and closes it. The result names the views that are out of date.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "designer/document/views.h"
#include "designer/document/working_copy.h"

namespace bw {

using Tile = std::span<uint8_t, kTileBytes>;
using ConstTile = std::span<const uint8_t, kTileBytes>;

// A tile of the pattern tables; `number` is 0 to 255.
Tile TileAt(DesignStore& store, PatternTable table, int number);
ConstTile TileAt(const DesignStore& store, PatternTable table, int number);
// A character of the default font: a tile of the default background table.
ConstTile FontTile(const DesignStore& store, int number);
bool IsBlank(ConstTile tile);

// The marks on a table's tiles: non-zero, selected.
std::array<uint8_t, 256>& TileMarks(DesignStore& store, PatternTable table);
const std::array<uint8_t, 256>& TileMarks(const DesignStore& store, PatternTable table);

// The first blank tile from `first` on; kTileCount if there is none.
int FirstBlankTile(const DesignStore& store, PatternTable table, int first);

// The number of the tile in use, 0 for a cursor off the table's start.
int TileInUse(const WorkingCopy& copy, PatternTable table);

enum class TileTool {
    kColoursLeft,           // pixel 1 to 0, 2 to 1, 3 to 2, 0 to 3
    kColoursRight,          // 0 to 1, 1 to 2, 2 to 3, 3 to 0
    kColoursLeftButEmpty,   // 2 to 1, 3 to 2, 1 to 3; 0 stays
    kColoursRightButEmpty,  // 1 to 2, 2 to 3, 3 to 1; 0 stays
    kRemove1,               // pixels of this index become 0
    kRemove2,
    kRemove3,
    kSwap1And2,
    kSwap1And3,
    kSwap2And3,
    kPixelsLeft,  // a pixel's step; what leaves the tile is lost
    kPixelsRight,
    kPixelsUp,
    kPixelsDown,
};

// On every selected tile of both tables.
Views ApplyTileTool(WorkingCopy& copy, TileTool tool);

// The selected tiles of `from` to the other table, one behind the other from its tile in use on.
Views CopySelectedTiles(WorkingCopy& copy, PatternTable from);

// Both tables change places.
Views SwapPatternTables(WorkingCopy& copy);

// The table as the default tile set has it.
Views ResetPatternTable(WorkingCopy& copy, PatternTable table);

// Gives a pixel of the tile in use the colour index of the palette entry in use; `pixel` is 0 to 7
// each and becomes the pixel in use.
Views PaintPixel(WorkingCopy& copy, PatternTable table, Pos pixel);

// Blanks the selected tiles of both tables and deselects them.
Views BlankSelectedTiles(WorkingCopy& copy);

// What a change of a table's pixels makes out of date.
Views TableViews(PatternTable table);

}  // namespace bw
