#include "designer/gestures/cursor_drag.h"

#include "designer/gestures/gesture_items.h"
#include "designer/gestures/gesture_places.h"
#include "designer/tools/cursor_tools.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/selection_tools.h"

namespace bw {

std::optional<CursorDrag> CursorDrag::TryPress(GestureContext& context, const PointerEvent& event) {
    WorkingCopy& copy = context.copy;
    DesignStore& store = copy.Store();
    const bool shown = copy.Show_Cursor && copy.document.BigCursor == 0;
    if (!shown || !context.layout.IsOn(Control::kNameTable, event.at)) return std::nullopt;
    context.Refresh(View::kNameTable | View::kCheckBoxes);
    const Point inScreen = context.layout.Relative(Control::kNameTable, event.at);
    const ScreenRect rect = CursorRect(store.ArrowTile, store.BigSprite != 0);
    if (!rect.Holds(inScreen)) {
        store.ArrowTile.Selected &= ~TileItem::kSelected;
        return std::nullopt;
    }
    DeselectItems(store);
    context.Refresh(SetCurrentCursor(copy, store.ArrowTile));
    context.Refresh(ActivatePalette(copy, PatternTable::kSprites));
    return CursorDrag(rect.From(inScreen));
}

void CursorDrag::Move(GestureContext& context, const PointerEvent& event) {
    const Pos place = DraggedTo(context.layout, event.at, hotSpot_, kScreenScale);
    context.Refresh(PlaceSmallCursor(context.copy, place));
}

}  // namespace bw
