#include "designer/gestures/double_click.h"

#include <algorithm>

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

// What is gripped at its Y byte: for sprites that is a line above where a press grips them.
auto GrippedAt(const DesignStore& store, Point inScreen) {
    return [tall = store.BigSprite != 0, inScreen](const TileItem& item) {
        return CursorRect(item, tall).Holds(inScreen);
    };
}

bool ToggleCursor(WorkingCopy& copy, Point inScreen) {
    if (!copy.Show_Cursor) return false;
    DesignStore& store = copy.Store();
    const auto hits = GrippedAt(store, inScreen);
    if (copy.document.BigCursor != 0) return ToggleFirst(store.ArrowTileList, hits);
    if (!hits(store.ArrowTile)) return false;
    store.ArrowTile.Selected ^= TileItem::kSelected;
    return true;
}

// Sprites are only reached while the background is shown: the switch is the gate to both lists.
bool ToggleItem(WorkingCopy& copy, Point inScreen, Pos cell) {
    if (!copy.Show_Bg_Tile) return false;
    DesignStore& store = copy.Store();
    return ToggleFirst(store.SpriteTileList, GrippedAt(store, inScreen)) ||
           ToggleFirst(store.BkgTileList, [&](const TileItem& item) {
               return Pos{item.X, item.Y} == cell;
           });
}

// Gives all that is selected another tile.
void ExchangeTiles(GestureContext& context, Point at) {
    DesignStore& store = context.copy.Store();
    if (const auto bkg = context.layout.CellAt(Control::kBkgTileList, at)) {
        SetTileOfSelected(store.BkgTileList, TileNumber(bkg->cell));
        context.Refresh(View::kNameTable);
    }
    const auto sprite = context.layout.CellAt(Control::kSpriteTileList, at);
    if (!sprite) return;
    const int tile = TileNumber(sprite->cell) | (store.BigSprite != 0 ? 1 : 0);
    SetTileOfSelected(store.SpriteTileList, static_cast<uint8_t>(tile));
    if (context.copy.document.BigCursor != 0) {
        SetTileOfSelected(store.ArrowTileList, static_cast<uint8_t>(tile));
    } else if (store.ArrowTile.IsSelected()) {
        store.ArrowTile.Tile = static_cast<uint8_t>(tile);
    }
    context.Refresh(View::kNameTable);
}

}  // namespace

void SelectByDoubleClick(GestureContext& context, const PointerEvent& event) {
    WorkingCopy& copy = context.copy;
    if (const auto source = context.layout.CellAt(Control::kSourceStrip, event.at)) {
        copy.MapSourcePos = source->cell;
        context.Refresh(View::kSourceStrip);
    }
    const Point inScreen = context.layout.Relative(Control::kNameTable, event.at);
    const auto screen = context.layout.CellAt(Control::kNameTable, event.at);
    if (screen && (ToggleCursor(copy, inScreen) || ToggleItem(copy, inScreen, screen->cell))) {
        context.Refresh(View::kNameTable | View::kCheckBoxes);
    } else {
        ExchangeTiles(context, event.at);
    }
}

}  // namespace bw
