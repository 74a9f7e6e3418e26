// Double clicks, the middle button and the Shift key.

#include <algorithm>

#include "designer/gestures/gesture_machine.h"
#include "designer/gestures/gesture_places.h"
#include "designer/tools/pointer_edits.h"

namespace bw {
namespace {

// Toggles the first item that `hit` holds for.
template <typename Hits>
bool ToggleFirst(std::vector<TileItem>& items, Hits hits) {
    const auto found = std::ranges::find_if(items, hits);
    if (found == items.end()) return false;
    found->Selected ^= TileItem::kSelected;
    return true;
}

void SetTileOfSelected(std::vector<TileItem>& items, uint8_t tile) {
    for (TileItem& item : items)
        if (item.IsSelected()) item.Tile = tile;
}

}  // namespace

Views GestureMachine::DoubleClick(PointerEvent event) {
    if (session_.Copy().QuickReplaceFromBkg) return {};
    Views before;
    if (captured_) before = Release(event);
    event = Start(event);
    captured_ = true;
    BeginStep();
    if (Copy().QuickAction && !shiftDown_) {
        PressQuickAction(event);
        return before | Done();
    }
    if (const auto source = layout_.CellAt(Control::kSourceStrip, event.at)) {
        Copy().MapSourcePos = source->cell;
        Refresh(View::kSourceStrip);
    }
    const Point inScreen = layout_.Relative(Control::kNameTable, event.at);
    const bool onScreen = layout_.IsOn(Control::kNameTable, event.at);
    if (onScreen && (ToggleCursor(inScreen) || ToggleItem(event, inScreen))) {
        Refresh(View::kNameTable | View::kCheckBoxes);
    } else {
        ExchangeTiles(event);
    }
    return before | Done();
}

bool GestureMachine::ToggleCursor(Point inScreen) {
    if (!Copy().Show_Cursor) return false;
    DesignStore& store = Copy().Store();
    const auto hits = [&](const TileItem& item) {
        return CursorRect(item, store.BigSprite != 0).Holds(inScreen);
    };
    if (Copy().document.BigCursor != 0) return ToggleFirst(store.ArrowTileList, hits);
    if (!hits(store.ArrowTile)) return false;
    store.ArrowTile.Selected ^= TileItem::kSelected;
    return true;
}

// Sprites are only reached while the background is shown: the switch is the gate to both lists.
// They are gripped at their Y byte, a line above where a press grips them.
bool GestureMachine::ToggleItem(const PointerEvent& event, Point inScreen) {
    if (!Copy().Show_Bg_Tile) return false;
    DesignStore& store = Copy().Store();
    const auto hits = [&](const TileItem& item) {
        return CursorRect(item, store.BigSprite != 0).Holds(inScreen);
    };
    if (ToggleFirst(store.SpriteTileList, hits)) return true;
    const auto hit = layout_.CellAt(Control::kNameTable, event.at);
    return hit && ToggleFirst(store.BkgTileList, [&](const TileItem& item) {
               return Pos{item.X, item.Y} == hit->cell;
           });
}

// Gives all that is selected another tile.
void GestureMachine::ExchangeTiles(const PointerEvent& event) {
    DesignStore& store = Copy().Store();
    if (const auto bkg = layout_.CellAt(Control::kBkgTileList, event.at)) {
        SetTileOfSelected(store.BkgTileList, TileNumber(bkg->cell));
        Refresh(View::kNameTable);
    }
    const auto sprite = layout_.CellAt(Control::kSpriteTileList, event.at);
    if (!sprite) return;
    const int tile = TileNumber(sprite->cell) | (store.BigSprite != 0 ? 1 : 0);
    SetTileOfSelected(store.SpriteTileList, static_cast<uint8_t>(tile));
    if (Copy().document.BigCursor != 0) {
        SetTileOfSelected(store.ArrowTileList, static_cast<uint8_t>(tile));
    } else if (store.ArrowTile.IsSelected()) {
        store.ArrowTile.Tile = static_cast<uint8_t>(tile);
    }
    Refresh(View::kNameTable);
}

// During a gesture it is a part of that gesture's step.
Views GestureMachine::MiddlePress() {
    const bool ownStep = !step_;
    if (ownStep) BeginStep();
    for (TileItem& arrow : Copy().Store().ArrowTileList)
        arrow.Selected |= TileItem::kSelected;
    Copy().Store().ArrowTile.Selected |= TileItem::kSelected;
    if (ownStep) CommitStep();
    return View::kNameTable | View::kCheckBoxes;
}

// During a gesture Shift means another thing: sprites snap to cells.
Views GestureMachine::ShiftKeyDown() {
    if (mode_ == MouseMode::kIdle) shiftDown_ = true;
    return {};
}

// Ends a rubber band at once; what it has selected stays selected.
Views GestureMachine::ShiftKeyUp() {
    shiftDown_ = false;
    if (!bandActive_) return {};
    bandActive_ = false;
    return kBandViews;
}

}  // namespace bw
