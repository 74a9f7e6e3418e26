// What a click changes, whichever gesture it belongs to: the current places, the colours, the
// characters, new entries, the selection, tiles that change their places. Functions on the working
// copy; the result names the views that are out of date.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

// The place of a tile in its pattern table.
constexpr Pos TilePlace(unsigned tile) {
    return {static_cast<int32_t>(tile & 15), static_cast<int32_t>(tile >> 4 & 15)};
}
// The tile at a place of a pattern table, columns and rows 0 to 15.
constexpr uint8_t TileNumber(Pos place) {
    return static_cast<uint8_t>(place.Y * 16 + place.X);
}

// The current tile and palette entry 0 to 15 of a side.
Views SetCurrentTile(WorkingCopy& copy, PatternTable table, Pos tile);
Views SetCurrentEntry(WorkingCopy& copy, PatternTable table, int entry);
// The side that the system palette acts on.
Views ActivatePalette(WorkingCopy& copy, PatternTable side);
// The sub-palette 0 to 3 of a side's current entry.
int CurrentPalette(const WorkingCopy& copy, PatternTable table);

// Cells 0 to 63 of the strips. The tile of a source character becomes the current one.
Views SetSourceCharacter(WorkingCopy& copy, int cell);
Views SetTargetCharacter(WorkingCopy& copy, int cell);
Views MapCharacter(WorkingCopy& copy, int cell, uint8_t tile);

// The quick replacements. The first maps the current source character to the tile and goes on to
// the next character; the second copies the current target character over the current tile and goes
// on to the next tile.
Views QuickMapCharacter(WorkingCopy& copy, Pos tile);
Views QuickReplaceTile(WorkingCopy& copy, PatternTable table);

// Puts the current tile on the screen at NameCellPos, which moves on to the next cell.
Views PlaceTile(WorkingCopy& copy, PatternTable table);

// A cell of the attribute table, columns 0 to 15, rows 0 to 14, becomes current, and with it the
// sub-palette that it has; or, painting, takes the current sub-palette.
Views SetAttributeCell(WorkingCopy& copy, Pos cell, bool paint);
// A quadrant (0 or 1 each) of the current attribute byte.
Views SetCurrentQuadrant(WorkingCopy& copy, Pos quadrant);

// An entry 0 to 15 becomes current, and what is current or selected on its side takes its
// sub-palette: the quadrant, or the selected sprites and parts of the cursor.
Views PickBkgEntry(WorkingCopy& copy, int entry);
Views PickSpriteEntry(WorkingCopy& copy, int entry);
// The colour of a pixel of the current tile becomes the current entry of that side, within its
// sub-palette, and the side the active one. Columns and rows 0 to 7.
Views PickTileColour(WorkingCopy& copy, PatternTable table, Pos pixel);
// A cell of the system palette, 16 by 4, gives the current entry of the active side its colour.
Views PickColour(WorkingCopy& copy, Pos cell);

// Pixels of a tile, or of the pair of tiles that a tall sprite shows, dragged within a pattern
// table. A move leaves the old place blank, and all that named the tile names the new place; a copy
// leaves the pixels where they were as well.
struct TileDrag {
    uint8_t from = 0;
    uint8_t to = 0;
    bool move = false;
    bool copy = false;
};
Views DragTile(WorkingCopy& copy, PatternTable table, TileDrag drag);
// From one table over a tile of the other.
Views DragTileAcross(WorkingCopy& copy, PatternTable from, uint8_t tile, uint8_t to);

}  // namespace bw
