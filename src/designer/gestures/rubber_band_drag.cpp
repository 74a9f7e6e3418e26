#include "designer/gestures/rubber_band_drag.h"

#include <algorithm>

#include "designer/gestures/gesture_places.h"
#include "designer/pictures/name_table_picture.h"
#include "designer/pictures/small_views.h"

namespace bw {
namespace {

// Positions come from files and may be any number, so the arithmetic is wider than they are.
bool Touches(const RubberBand& band, int64_t left, int64_t top) {
    const auto [leftmost, rightmost] = std::minmax(band.press.x, band.current.x);
    const auto [topmost, lowest] = std::minmax(band.press.y, band.current.y);
    return left <= rightmost && left + kNameCell > leftmost && top <= lowest &&
           top + kNameCell > topmost;
}

// `scale`: pixels of the view for a step of the items' positions.
void SelectItems(std::vector<TileItem>& items, const RubberBand& band, int scale, bool add) {
    for (TileItem& item : items) {
        if (Touches(band, int64_t{item.X} * scale, int64_t{item.Y} * scale)) {
            item.Selected |= TileItem::kSelected;
        } else if (!add) {
            item.Selected &= ~TileItem::kSelected;
        }
    }
}

void SelectTiles(std::array<uint8_t, 256>& selected, const RubberBand& band, bool add) {
    for (size_t tile = 0; tile < selected.size(); ++tile) {
        const auto column = static_cast<int64_t>(tile % kTilesInRow);
        const auto row = static_cast<int64_t>(tile / kTilesInRow);
        if (Touches(band, column * kListCell, row * kListCell)) {
            selected[tile] = 1;
        } else if (!add) {
            selected[tile] = 0;
        }
    }
}

void SelectInBands(WorkingCopy& copy, const RubberBands& bands, bool add) {
    DesignStore& store = copy.Store();
    if (copy.Show_Bg_Tile) SelectItems(store.BkgTileList, bands.nameTable, kNameCell, add);
    if (copy.Show_Sp_Tile) SelectItems(store.SpriteTileList, bands.nameTable, kScreenScale, add);
    SelectTiles(store.BkgTileSelected, bands.bkgTiles, add);
    SelectTiles(store.SpriteTileSelected, bands.spriteTiles, add);
}

// A band that begins and ends at `at`, in pixels of a control's picture.
RubberBand BandAt(const DesignerLayout& layout, Control control, Point at) {
    const Point place = layout.Relative(control, at);
    return {place, place};
}

}  // namespace

std::optional<RubberBandDrag> RubberBandDrag::TryPress(GestureContext& context,
                                                       const PointerEvent& event) {
    if (!context.bandKey) return std::nullopt;
    RubberBandDrag drag;
    drag.bands_ = {BandAt(context.layout, Control::kNameTable, event.at),
                   BandAt(context.layout, Control::kBkgTileList, event.at),
                   BandAt(context.layout, Control::kSpriteTileList, event.at)};
    context.Refresh(kBandViews);
    return drag;
}

void RubberBandDrag::Move(GestureContext& context, const PointerEvent& event) {
    bands_.nameTable.current = context.layout.Relative(Control::kNameTable, event.at);
    bands_.bkgTiles.current = context.layout.Relative(Control::kBkgTileList, event.at);
    bands_.spriteTiles.current = context.layout.Relative(Control::kSpriteTileList, event.at);
    SelectInBands(context.copy, bands_, event.ctrl);
    context.Refresh(kBandViews | View::kCheckBoxes);
}

}  // namespace bw
