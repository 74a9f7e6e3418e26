// What several gestures do to the items on the screen and the tiles of the pattern tables.
#pragma once

#include <cstdint>
#include <vector>

#include "designer/gestures/gesture_context.h"

namespace bw {

// Removes the item with a number; one without a number, as a tile of a pattern table is, names
// none.
void RemoveItem(std::vector<TileItem>& items, uint32_t index);

// A cursor that was taken: its tile becomes current, and the second entry of its sub-palette.
Views SetCurrentCursor(WorkingCopy& copy, const TileItem& cursor);

// A tile dropped onto the pattern table that it belongs to. It moves there if it was taken from the
// table itself; with Ctrl its pixels stay behind as well.
void DropOnTable(GestureContext& context, const PointerEvent& event, PatternTable table,
                 uint8_t tile, bool fromTable);

}  // namespace bw
