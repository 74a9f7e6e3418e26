#include "designer/gestures/tile_paint.h"

#include <algorithm>

#include "designer/gestures/gesture_places.h"
#include "designer/model/tiles.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/tile_shapes.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

// The pixel of the editor that is nearest to the pointer.
Pos NearestPixel(const DesignerLayout& layout, Control editor, Point at) {
    const Point inside = layout.Relative(editor, at);
    const Point cell = layout.Relative(editor, layout.Corner(editor, {1, 1}));
    return {std::clamp(inside.x / cell.x, 0, kTilePixels - 1),
            std::clamp(inside.y / cell.y, 0, kTilePixels - 1)};
}

}  // namespace

TilePaint::TilePaint(const WorkingCopy& copy, PatternTable table, Pos pixel)
    : table_(table), shape_(copy.tileShape), from_(pixel) {
    std::ranges::copy(TileAt(copy.Store(), table, CurrentTile(copy, table)), before_.begin());
}

std::optional<TilePaint> TilePaint::TryPress(GestureContext& context, const PointerEvent& event) {
    for (const PatternTable table : {PatternTable::kBackground, PatternTable::kSprites}) {
        const auto pixel = context.layout.CellAt(EditorOf(table), event.at);
        if (!pixel) continue;
        TilePaint paint(context.copy, table, pixel->cell);
        if (paint.shape_ == TileShape::kFill) {
            context.Refresh(FillTileArea(context.copy, table, pixel->cell));
        }
        paint.Move(context, event);
        context.Refresh(ActivatePalette(context.copy, table));
        return paint;
    }
    return std::nullopt;
}

void TilePaint::Move(GestureContext& context, const PointerEvent& event) {
    if (shape_ != TileShape::kPencil) return DragShape(context, event);
    if (const auto pixel = context.layout.CellAt(EditorOf(table_), event.at)) {
        context.Refresh(PaintPixel(context.copy, table_, pixel->cell));
    }
}

void TilePaint::Drop(GestureContext& context, const PointerEvent& event) {
    DragShape(context, event);
}

void TilePaint::DragShape(GestureContext& context, const PointerEvent& event) {
    if (shape_ != TileShape::kLine && shape_ != TileShape::kRectangle) return;
    WorkingCopy& copy = context.copy;
    std::ranges::copy(before_, TileAt(copy.Store(), table_, CurrentTile(copy, table_)).begin());
    const ShapeDrag drag{.from = from_,
                         .to = NearestPixel(context.layout, EditorOf(table_), event.at),
                         .filled = event.ctrl};
    context.Refresh(shape_ == TileShape::kLine ? DrawTileLine(copy, table_, drag)
                                               : DrawTileRectangle(copy, table_, drag));
}

}  // namespace bw
