// Commands that change the pixels of the pattern tables. Each is one step of the undo history, for
// EditSession::Run. The result names the views that are out of date.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

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

// The selected tiles of `from` to the other table, one behind the other from its current tile on.
Views CopySelectedTiles(WorkingCopy& copy, PatternTable from);

// Both tables change places.
Views SwapPatternTables(WorkingCopy& copy);

// The table as the default tile set has it.
Views ResetPatternTable(WorkingCopy& copy, PatternTable table);

// The colour index 0 to 3 of a side's current palette entry, and its current pixel, which is 0 to 7
// each. The latter is no step.
int CurrentColour(const WorkingCopy& copy, PatternTable table);
Views SetCurrentPixel(WorkingCopy& copy, PatternTable table, Pos pixel);

// Gives a pixel of the current tile that colour index; it becomes the current pixel.
Views PaintPixel(WorkingCopy& copy, PatternTable table, Pos pixel);

// Blanks the selected tiles of both tables and deselects them.
Views BlankSelectedTiles(WorkingCopy& copy);

}  // namespace bw
