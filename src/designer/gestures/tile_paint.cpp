#include "designer/gestures/tile_paint.h"

#include "designer/gestures/gesture_places.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/tile_tools.h"

namespace bw {

std::optional<TilePaint> TilePaint::TryPress(GestureContext& context, const PointerEvent& event) {
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        if (!context.layout.IsOn(EditorOf(table), event.at)) continue;
        TilePaint paint(table);
        paint.Move(context, event);
        context.Refresh(ActivatePalette(context.copy, table));
        return paint;
    }
    return std::nullopt;
}

void TilePaint::Move(GestureContext& context, const PointerEvent& event) {
    if (const auto pixel = context.layout.CellAt(EditorOf(table_), event.at)) {
        context.Refresh(PaintPixel(context.copy, table_, pixel->cell));
    }
}

}  // namespace bw
