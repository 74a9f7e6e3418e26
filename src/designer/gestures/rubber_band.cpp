#include "designer/gestures/rubber_band.h"

#include <algorithm>

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

}  // namespace

RubberBands StartBands(const DesignerLayout& layout, Point at) {
    RubberBands bands;
    MoveBands(bands, layout, at);
    for (RubberBand* band : {&bands.nameTable, &bands.bkgTiles, &bands.spriteTiles})
        band->press = band->current;
    return bands;
}

void MoveBands(RubberBands& bands, const DesignerLayout& layout, Point at) {
    bands.nameTable.current = layout.Relative(Control::kNameTable, at);
    bands.bkgTiles.current = layout.Relative(Control::kBkgTileList, at);
    bands.spriteTiles.current = layout.Relative(Control::kSpriteTileList, at);
}

void SelectInBands(WorkingCopy& copy, const RubberBands& bands, bool add) {
    DesignStore& store = copy.Store();
    if (copy.Show_Bg_Tile) SelectItems(store.BkgTileList, bands.nameTable, kNameCell, add);
    if (copy.Show_Sp_Tile) SelectItems(store.SpriteTileList, bands.nameTable, kScreenScale, add);
    SelectTiles(store.BkgTileSelected, bands.bkgTiles, add);
    SelectTiles(store.SpriteTileSelected, bands.spriteTiles, add);
}

}  // namespace bw
