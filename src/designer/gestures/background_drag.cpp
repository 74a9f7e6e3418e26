#include "designer/gestures/background_drag.h"

#include "designer/gestures/gesture_items.h"
#include "designer/gestures/gesture_places.h"
#include "designer/model/attribute_table.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/selection_tools.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

}  // namespace

std::optional<BackgroundDrag> BackgroundDrag::TryPress(GestureContext& context,
                                                       const PointerEvent& event) {
    auto drag = TryPressItem(context, event);
    return drag ? drag : TryPressTable(context, event);
}

std::optional<BackgroundDrag> BackgroundDrag::TryPressItem(GestureContext& context,
                                                           const PointerEvent& event) {
    WorkingCopy& copy = context.copy;
    const auto hit = context.layout.CellAt(Control::kNameTable, event.at);
    if (!copy.DragText || !copy.Show_Bg_Tile || !hit) return std::nullopt;
    DesignStore& store = copy.Store();
    std::vector<TileItem>& items = store.BkgTileList;
    for (size_t i = items.size(); i-- > 0;) {
        if (Pos{items[i].X, items[i].Y} != hit->cell) continue;
        BackgroundDrag drag;
        drag.item_ = items[i];
        drag.offset_ = hit->rest;
        drag.Move(context, event);
        context.Refresh(SetCurrentTile(copy, kBkg, TilePlace(drag.item_.Tile)) |
                        ActivatePalette(copy, kBkg) | View::kNameTable | View::kCheckBoxes);
        if (!event.ctrl) items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
        Deselect(store.SpriteTileList);
        Deselect(store.ArrowTileList);
        return drag;
    }
    return std::nullopt;
}

std::optional<BackgroundDrag> BackgroundDrag::TryPressTable(GestureContext& context,
                                                            const PointerEvent& event) {
    const auto hit = context.layout.CellAt(Control::kBkgTileList, event.at);
    if (!hit) return std::nullopt;
    const int palette = CurrentPalette(context.copy, kBkg);
    BackgroundDrag drag;
    drag.item_ = {.X = hit->cell.X,
                  .Y = hit->cell.Y,
                  .Tile = TileNumber(hit->cell),
                  .Palette = static_cast<uint8_t>(palette)};
    drag.fromTable_ = true;
    drag.offset_ = hit->rest;
    drag.ghost_ = CellGhost(kBkg, drag.item_.Tile, palette);
    drag.ghost_.ShowAt({event.at.x - hit->rest.x, event.at.y - hit->rest.y});
    context.Refresh(SetCurrentTile(context.copy, kBkg, hit->cell) |
                    ActivatePalette(context.copy, kBkg));
    return drag;
}

// In the colours that the tile would have where the pointer is.
void BackgroundDrag::Move(GestureContext& context, const PointerEvent& event) {
    const auto show = [&](int palette, Point at) {
        ghost_ = BkgGhost(item_.Tile, palette);
        ghost_.ShowAt({at.x - kGhostBorder, at.y - kGhostBorder});
    };
    const auto snap = [&](Control control, Pos cell, int palette) {
        show(palette, context.layout.Corner(control, cell));
    };
    if (const auto strip = context.layout.CellAt(Control::kSourceStrip, event.at)) {
        return snap(Control::kSourceStrip, strip->cell, 0);
    }
    if (const auto screen = context.layout.CellAt(Control::kNameTable, event.at)) {
        const auto [column, row] = screen->cell;
        return snap(Control::kNameTable, screen->cell,
                    AttributePalette(context.copy.Store().Attributes, column, row));
    }
    for (const PatternTable table : {kBkg, kSprites}) {
        if (const auto list = context.layout.CellAt(TileListOf(table), event.at)) {
            return snap(TileListOf(table), list->cell, CurrentPalette(context.copy, table));
        }
    }
    show(ghost_.tiles.empty() ? 0 : ghost_.tiles.front().palette,
         {event.at.x - offset_.x, event.at.y - offset_.y});
}

// Each view tests for itself whether the drop is its own.
void BackgroundDrag::Drop(GestureContext& context, const PointerEvent& event) {
    if (const auto strip = context.layout.CellAt(Control::kSourceStrip, event.at)) {
        context.Refresh(MapCharacter(context.copy, strip->cell.X, item_.Tile));
    }
    DropOnScreen(context, event.at);
    DropOnTable(context, event, kBkg, item_.Tile, fromTable_);
    if (const auto list = context.layout.CellAt(Control::kSpriteTileList, event.at)) {
        context.Refresh(DragTileAcross(context.copy, kBkg, item_.Tile, TileNumber(list->cell)));
    }
    context.Refresh(View::kNameTable);
}

void BackgroundDrag::DropOnScreen(GestureContext& context, Point at) {
    DesignStore& store = context.copy.Store();
    const auto hit = context.layout.CellAt(Control::kNameTable, at);
    if (!hit) {
        // With Ctrl a copy was dragged, which has the original's number: dropped elsewhere it takes
        // the original along.
        RemoveItem(store.BkgTileList, item_.Index);
        return;
    }
    item_.Index = context.copy.nextBkgIndex++;
    item_.X = hit->cell.X;
    item_.Y = hit->cell.Y;
    item_.Palette =
        static_cast<uint8_t>(AttributePalette(store.Attributes, hit->cell.X, hit->cell.Y));
    store.BkgTileList.push_back(item_);
}

}  // namespace bw
