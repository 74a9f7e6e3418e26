#include "designer/tools/cursor_tools.h"

#include <algorithm>

namespace bw {
namespace {

// The small cursor's place on the four parts of the large one, console pixels from the first one's
// corner.
constexpr Pos kCursorInArrows{8, 4};

// Places may be any number, so the arithmetic is wider than they are.
Pos CursorOnScreen(int64_t x, int64_t y) {
    return {static_cast<int32_t>(std::clamp<int64_t>(x, 0, kLastSpriteX)),
            static_cast<int32_t>(std::clamp<int64_t>(y, kFirstSpriteY, kLastSpriteY))};
}

void SetPlace(TileItem& item, Pos at) {
    item.X = at.X;
    item.Y = at.Y;
}

}  // namespace

Views PlaceSmallCursor(WorkingCopy& copy, Pos at) {
    DesignStore& store = copy.Store();
    const Pos place = CursorOnScreen(at.X, at.Y);
    SetPlace(store.ArrowTile, place);
    if (!store.ArrowTileList.empty()) {
        SetPlace(store.ArrowTileList[0],
                 {place.X - kCursorInArrows.X, place.Y - kCursorInArrows.Y});
        SpreadLargeCursor(store);
    }
    return View::kNameTable;
}

Views PlaceLargeCursor(WorkingCopy& copy, Pos at) {
    DesignStore& store = copy.Store();
    if (store.ArrowTileList.empty()) return {};
    TileItem& anchor = store.ArrowTileList[0];
    SetPlace(anchor, at);
    SpreadLargeCursor(store);
    SetPlace(store.ArrowTile, CursorOnScreen(int64_t{anchor.X} + kCursorInArrows.X,
                                             int64_t{anchor.Y} + kCursorInArrows.Y));
    return View::kNameTable;
}

}  // namespace bw
