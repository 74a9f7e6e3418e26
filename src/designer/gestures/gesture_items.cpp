#include "designer/gestures/gesture_items.h"

#include <algorithm>

#include "designer/gestures/gesture_places.h"
#include "designer/tools/pointer_edits.h"

namespace bw {

void RemoveItem(std::vector<TileItem>& items, uint32_t index) {
    if (index == TileItem().Index) return;
    const auto found = std::ranges::find(items, index, &TileItem::Index);
    if (found != items.end()) items.erase(found);
}

Views SetCurrentCursor(WorkingCopy& copy, const TileItem& cursor) {
    return SetCurrentTile(copy, PatternTable::kSprites, TilePlace(cursor.Tile)) |
           SetCurrentEntry(copy, PatternTable::kSprites, (cursor.Palette & 3) * 4 + 1);
}

void DropOnTable(GestureContext& context, const PointerEvent& event, PatternTable table,
                 uint8_t tile, bool fromTable) {
    const auto hit = context.layout.CellAt(TileListOf(table), event.at);
    if (!hit) return;
    context.Refresh(DragTile(
        context.copy, table,
        {.from = tile, .to = TileNumber(hit->cell), .move = fromTable, .copy = event.ctrl}));
}

}  // namespace bw
