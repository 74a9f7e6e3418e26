#include "designer/tools/selection_tools.h"

#include <algorithm>
#include <limits>

#include "designer/model/tiles.h"
#include "designer/tools/cursor_tools.h"
#include "designer/tools/list_tools.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

// Where things on the screen may stand, both ends included.
struct Bounds {
    Pos first;
    Pos last;
};
constexpr Bounds kCells{{0, 0}, {kScreenColumns - 1, kScreenRows - 1}};
constexpr Bounds kCursorPlaces{{0, kFirstSpriteY}, {kLastSpriteX, kLastSpriteY}};
// At the last line of the cursor a sprite is below the screen already.
constexpr Bounds kSpritePlaces{{0, kFirstSpriteY}, {kLastSpriteX, kLastSpriteY - 1}};

bool AnySelected(const std::vector<TileItem>& items) {
    return std::ranges::any_of(items, &TileItem::IsSelected);
}

bool CursorSelected(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    return copy.document.BigCursor != 0 ? AnySelected(store.ArrowTileList)
                                        : store.ArrowTile.IsSelected();
}

// The item that stands for the cursor in use; the large one follows its first part.
const TileItem& CursorItem(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    return copy.document.BigCursor != 0 ? store.ArrowTileList.front() : store.ArrowTile;
}

// As many of `steps` as leave a place within its bounds; one that lies outside doesn't count.
int Allowed(int steps, int32_t at, int32_t first, int32_t last, int size) {
    if (at < first || at > last) return steps;
    return std::clamp(steps, -((at - first) / size), (last - at) / size);
}

void Limit(Point& steps, const TileItem& item, const Bounds& bounds, int size) {
    steps.x = Allowed(steps.x, item.X, bounds.first.X, bounds.last.X, size);
    steps.y = Allowed(steps.y, item.Y, bounds.first.Y, bounds.last.Y, size);
}

Pos Moved(const TileItem& item, Point steps, int size) {
    const auto sum = [size](int32_t place, int by) {
        using Range = std::numeric_limits<int32_t>;
        return static_cast<int32_t>(
            std::clamp(place + int64_t{by} * size, int64_t{Range::min()}, int64_t{Range::max()}));
    };
    return {sum(item.X, steps.x), sum(item.Y, steps.y)};
}

void MoveSelected(std::vector<TileItem>& items, Point steps, int size) {
    for (TileItem& item : items) {
        if (!item.IsSelected()) continue;
        const Pos to = Moved(item, steps, size);
        item.X = to.X;
        item.Y = to.Y;
    }
}

}  // namespace

void Deselect(std::vector<TileItem>& items) {
    for (TileItem& item : items)
        item.Selected = 0;
}

void DeselectItems(DesignStore& store) {
    Deselect(store.BkgTileList);
    Deselect(store.SpriteTileList);
    Deselect(store.ArrowTileList);
}

Views DeselectAll(WorkingCopy& copy) {
    DeselectItems(copy.Store());
    copy.Store().ArrowTile.Selected = 0;
    copy.Store().BkgTileSelected.fill(0);
    copy.Store().SpriteTileSelected.fill(0);
    return View::kNameTable | View::kBkgTileList | View::kSpriteTileList | View::kCheckBoxes;
}

bool CanDeleteSelection(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    const auto marked = [](const std::array<uint8_t, 256>& marks) {
        return std::ranges::any_of(marks, [](uint8_t mark) { return mark != 0; });
    };
    return AnySelected(store.BkgTileList) || AnySelected(store.SpriteTileList) ||
           marked(store.BkgTileSelected) || marked(store.SpriteTileSelected);
}

Views DeleteSelection(WorkingCopy& copy) {
    return RemoveSelectedItems(copy) | BlankSelectedTiles(copy);
}

bool CanMoveSelection(const WorkingCopy& copy) {
    const DesignStore& store = copy.Store();
    return AnySelected(store.BkgTileList) || AnySelected(store.SpriteTileList) ||
           CursorSelected(copy);
}

Views MoveSelection(WorkingCopy& copy, Point steps, ArrowStep step) {
    DesignStore& store = copy.Store();
    const bool byCells = step == ArrowStep::kCell || AnySelected(store.BkgTileList);
    const int pixels = byCells ? kTilePixels : 1;
    const bool withCursor = CursorSelected(copy);
    for (const TileItem& item : store.BkgTileList)
        if (item.IsSelected()) Limit(steps, item, kCells, 1);
    for (const TileItem& item : store.SpriteTileList)
        if (item.IsSelected()) Limit(steps, item, kSpritePlaces, pixels);
    if (withCursor) Limit(steps, CursorItem(copy), kCursorPlaces, pixels);

    MoveSelected(store.BkgTileList, steps, 1);
    MoveSelected(store.SpriteTileList, steps, pixels);
    if (withCursor) {
        const Pos to = Moved(CursorItem(copy), steps, pixels);
        copy.document.BigCursor != 0 ? PlaceLargeCursor(copy, to) : PlaceSmallCursor(copy, to);
    }
    return View::kNameTable;
}

Views MoveNameCell(WorkingCopy& copy, Point steps) {
    const auto move = [](int32_t& place, int by, int32_t last) {
        place = static_cast<int32_t>(std::clamp<int64_t>(int64_t{place} + by, 0, last));
    };
    move(copy.NameCellPos.X, steps.x, kCells.last.X);
    move(copy.NameCellPos.Y, steps.y, kCells.last.Y);
    return View::kNameTable;
}

}  // namespace bw
