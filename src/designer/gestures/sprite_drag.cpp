#include "designer/gestures/sprite_drag.h"

#include "designer/gestures/gesture_items.h"
#include "designer/gestures/gesture_places.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/selection_tools.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

constexpr Point WholeConsolePixels(Point at) {
    return {at.x & ~1, at.y & ~1};
}

}  // namespace

std::optional<SpriteDrag> SpriteDrag::TryPress(GestureContext& context, const PointerEvent& event) {
    auto drag = TryPressItem(context, event);
    return drag ? drag : TryPressTable(context, event);
}

std::optional<SpriteDrag> SpriteDrag::TryPressItem(GestureContext& context,
                                                   const PointerEvent& event) {
    WorkingCopy& copy = context.copy;
    if (!copy.DragText || !copy.Show_Sp_Tile ||
        !context.layout.IsOn(Control::kNameTable, event.at)) {
        return std::nullopt;
    }
    DesignStore& store = copy.Store();
    std::vector<TileItem>& sprites = store.SpriteTileList;
    const Point inScreen = context.layout.Relative(Control::kNameTable, event.at);
    for (size_t i = sprites.size(); i-- > 0;) {
        const ScreenRect rect = SpriteRect(sprites[i], store.BigSprite != 0);
        if (!rect.Holds(inScreen)) continue;
        SpriteDrag drag;
        drag.item_ = sprites[i];
        drag.hotSpot_ = drag.offset_ = WholeConsolePixels(rect.From(inScreen));
        drag.Move(context, event);
        // The first entry of the sub-palette here, the second one when a cursor is taken.
        context.Refresh(SetCurrentTile(copy, kSprites, TilePlace(drag.item_.Tile)) |
                        SetCurrentEntry(copy, kSprites, (drag.item_.Palette & 3) * 4) |
                        ActivatePalette(copy, kSprites) | View::kNameTable | View::kCheckBoxes);
        if (!event.ctrl) sprites.erase(sprites.begin() + static_cast<std::ptrdiff_t>(i));
        Deselect(store.BkgTileList);
        Deselect(store.ArrowTileList);
        return drag;
    }
    return std::nullopt;
}

std::optional<SpriteDrag> SpriteDrag::TryPressTable(GestureContext& context,
                                                    const PointerEvent& event) {
    const auto hit = context.layout.CellAt(Control::kSpriteTileList, event.at);
    if (!hit) return std::nullopt;
    const bool tall = context.copy.Store().BigSprite != 0;
    const int palette = CurrentPalette(context.copy, kSprites);
    // The sprite table's tiles have odd numbers in tall sprites.
    const int tile = TileNumber(hit->cell) | (tall ? 1 : 0);
    SpriteDrag drag;
    drag.item_ = {.X = hit->cell.X,
                  .Y = hit->cell.Y,
                  .Tile = static_cast<uint8_t>(tile),
                  .Palette = static_cast<uint8_t>(palette)};
    drag.fromTable_ = true;
    drag.offset_ = hit->rest;
    drag.hotSpot_ = WholeConsolePixels(hit->rest);
    drag.ghost_ = tall ? TallCellGhost(drag.item_.Tile, palette)
                       : CellGhost(kSprites, drag.item_.Tile, palette);
    drag.ghost_.ShowAt({event.at.x - hit->rest.x, event.at.y - hit->rest.y});
    context.memory.shownFlags = drag.item_.Flags;
    context.Refresh(SetCurrentTile(context.copy, kSprites, hit->cell) |
                    ActivatePalette(context.copy, kSprites) | View::kCheckBoxes);
    return drag;
}

void SpriteDrag::Move(GestureContext& context, const PointerEvent& event) {
    const bool tall = context.copy.Store().BigSprite != 0;
    ghost_ = SpriteGhost(item_, tall);
    // Puts the sprite's corner below the ghost's border.
    const auto snap = [&](Point corner) {
        ghost_.ShowAt({corner.x - kGhostBorder, corner.y - SpriteGhostBorder(tall)});
    };
    const DesignerLayout& layout = context.layout;
    const auto pixel = layout.CellAt(Control::kNameTable, kConsolePixels, event.at);
    if (pixel && !event.shift) {
        const Point origin = layout.Origin(Control::kNameTable);
        return snap({origin.x + pixel->cell.X * kScreenScale - hotSpot_.x,
                     origin.y + pixel->cell.Y * kScreenScale - hotSpot_.y});
    }
    if (pixel) {
        const Pos cell = NearestScreenCell(DraggedCorner(layout, event.at, hotSpot_));
        return snap(layout.Corner(Control::kNameTable, cell));
    }
    for (const PatternTable table : {kBkg, kSprites}) {
        if (const auto list = layout.CellAt(TileListOf(table), event.at)) {
            return snap(layout.Corner(TileListOf(table), list->cell));
        }
    }
    ghost_.ShowAt({event.at.x - offset_.x - kGhostBorder, event.at.y - offset_.y - kGhostBorder});
}

void SpriteDrag::Drop(GestureContext& context, const PointerEvent& event) {
    const DesignStore& store = context.copy.Store();
    if (context.layout.IsOn(Control::kNameTable, event.at)) {
        DropOnScreen(context, event);
    } else {
        RemoveItem(context.copy.Store().SpriteTileList, item_.Index);
    }
    DropOnTable(context, event, kSprites, item_.Tile, fromTable_);
    if (const auto list = context.layout.CellAt(Control::kBkgTileList, event.at)) {
        const int even = store.BigSprite != 0 ? item_.Tile & 0xFE : item_.Tile;
        context.Refresh(DragTileAcross(context.copy, kSprites, static_cast<uint8_t>(even),
                                       TileNumber(list->cell)));
    }
    context.Refresh(View::kNameTable);
}

void SpriteDrag::DropOnScreen(GestureContext& context, const PointerEvent& event) {
    std::vector<TileItem>& sprites = context.copy.Store().SpriteTileList;
    item_.Index = context.copy.nextSpriteIndex++;
    Pos place = DraggedTo(context.layout, event.at, hotSpot_, kScreenScale);
    if (event.shift) {
        const Pos cell = NearestScreenCell(DraggedCorner(context.layout, event.at, hotSpot_));
        place = {cell.X * kTilePixels, cell.Y * kTilePixels};
    }
    // The topmost line counts as the one below it, since a sprite shows a line below its Y byte.
    if (place.Y == 0) place.Y = 1;
    context.memory.shownFlags = item_.Flags;
    item_.X = place.X;
    item_.Y = place.Y - 1;
    // Beyond that the sprite is lost; an undo brings it back.
    if (sprites.size() < kMostSprites && place.X >= 0 && place.X <= 255 && place.Y >= 0 &&
        place.Y <= 239) {
        sprites.push_back(item_);
    }
}

}  // namespace bw
