// Where the things on the screen can be gripped, in pixels of the name table's picture. Positions
// come from files and may be any number, so the arithmetic is wider than they are.
#pragma once

#include <cstdint>
#include <string_view>

#include "designer/gestures/designer_layout.h"
#include "designer/model/views.h"
#include "designer/model/working_copy.h"
#include "designer/pictures/name_table_picture.h"

namespace bw {

inline constexpr Views kBandViews = View::kNameTable | View::kBkgTileList | View::kSpriteTileList;

struct ScreenRect {
    int64_t left = 0;
    int64_t top = 0;
    int64_t width = 0;
    int64_t height = 0;

    constexpr bool Holds(Point at) const {
        return at.x >= left && at.x < left + width && at.y >= top && at.y < top + height;
    }
    // `at` from the rectangle's corner; it must lie near it.
    constexpr Point From(Point at) const {
        return {static_cast<int>(at.x - left), static_cast<int>(at.y - top)};
    }
};

// A sprite, or a part of the cursor, at its Y byte: a line above where the console shows it.
constexpr ScreenRect CursorRect(const TileItem& item, bool tall) {
    return {int64_t{item.X} * kScreenScale, int64_t{item.Y} * kScreenScale, kNameCell,
            tall ? 2 * kNameCell : kNameCell};
}

// A sprite where the console shows it.
constexpr ScreenRect SpriteRect(const TileItem& item, bool tall) {
    ScreenRect rect = CursorRect(item, tall);
    rect.top += kScreenScale;
    return rect;
}

// A text `below` rows under its place.
constexpr ScreenRect TextRect(Pos at, std::u16string_view text, int64_t below = 0) {
    return {int64_t{at.X} * kNameCell, (at.Y + below) * kNameCell,
            static_cast<int64_t>(text.size()) * kNameCell, kNameCell};
}

// The corner of a dragged object in pixels of the screen's picture; `hotSpot`: of the press, from
// that corner.
inline Point DraggedCorner(const DesignerLayout& layout, Point at, Point hotSpot) {
    const Point inScreen = layout.Relative(Control::kNameTable, at);
    return {inScreen.x - hotSpot.x, inScreen.y - hotSpot.y};
}

// The same in steps of so many pixels, rounded towards 0.
inline Pos DraggedTo(const DesignerLayout& layout, Point at, Point hotSpot, int step) {
    const Point corner = DraggedCorner(layout, at, hotSpot);
    return {corner.x / step, corner.y / step};
}

constexpr Control EditorOf(PatternTable table) {
    return table == PatternTable::kBackground ? Control::kBkgTileEditor
                                              : Control::kSpriteTileEditor;
}

constexpr Control TileListOf(PatternTable table) {
    return table == PatternTable::kBackground ? Control::kBkgTileList : Control::kSpriteTileList;
}

}  // namespace bw
