#include "designer/gestures/large_cursor_drag.h"

#include "designer/gestures/gesture_items.h"
#include "designer/gestures/gesture_places.h"
#include "designer/tools/cursor_tools.h"

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
    const Pos place = DraggedTo(context.layout, event.at, hotSpot_, kScreenScale);
    context.Refresh(PlaceLargeCursor(context.copy, place));
}

}  // namespace bw
