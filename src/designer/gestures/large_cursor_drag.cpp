#include "designer/gestures/large_cursor_drag.h"

#include "designer/gestures/gesture_items.h"
#include "designer/gestures/gesture_places.h"

namespace bw {

std::optional<LargeCursorDrag> LargeCursorDrag::TryPress(GestureContext& context,
                                                         const PointerEvent& event) {
    WorkingCopy& copy = context.copy;
    DesignStore& store = copy.Store();
    const bool shown = copy.Show_Cursor && copy.document.BigCursor != 0;
    if (!shown || !context.layout.IsOn(Control::kNameTable, event.at)) return std::nullopt;
    const Point inScreen = context.layout.Relative(Control::kNameTable, event.at);
    for (const TileItem& arrow : store.ArrowTileList) {
        const ScreenRect rect = CursorRect(arrow, store.BigSprite != 0);
        if (!rect.Holds(inScreen)) continue;
        context.Refresh(SetCurrentCursor(copy, arrow));
        return LargeCursorDrag(rect.From(inScreen));
    }
    store.ArrowTile.Selected &= ~TileItem::kSelected;
    context.Refresh(View::kNameTable | View::kCheckBoxes);
    return std::nullopt;
}

void LargeCursorDrag::Move(GestureContext& context, const PointerEvent& event) {
    DesignStore& store = context.copy.Store();
    if (store.ArrowTileList.empty()) return;
    TileItem& anchor = store.ArrowTileList[0];
    const Pos place = DraggedTo(context.layout, event.at, hotSpot_, kScreenScale);
    anchor.X = place.X;
    anchor.Y = place.Y;
    SpreadLargeCursor(store);
    const Pos cursor = CursorOnScreen({anchor.X + kCursorInArrows.X, anchor.Y + kCursorInArrows.Y});
    store.ArrowTile.X = cursor.X;
    store.ArrowTile.Y = cursor.Y;
    context.Refresh(View::kNameTable);
}

}  // namespace bw
