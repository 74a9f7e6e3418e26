// What follows the pointer while the button is down.

#include <algorithm>
#include <utility>

#include "designer/gestures/gesture_machine.h"
#include "designer/gestures/gesture_places.h"
#include "designer/model/attribute_table.h"
#include "designer/model/design_document.h"
#include "designer/tools/pointer_edits.h"
#include "designer/tools/tile_tools.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

// The cursor's place on its four parts, console pixels from the first one's corner.
constexpr Pos kCursorInArrows{8, 4};

void KeepCursorOnScreen(Pos& at) {
    at = {std::clamp(at.X, 0, 255), std::clamp(at.Y, 1, 239)};
}

}  // namespace

PointerEvent GestureMachine::Start(PointerEvent event) {
    event.at = {static_cast<int16_t>(event.at.x), static_cast<int16_t>(event.at.y)};
    return event;
}

Views GestureMachine::Done() {
    return std::exchange(stale_, {});
}

void GestureMachine::ShowGhost(Ghost ghost, Point at) {
    ghost_ = std::move(ghost);
    ghost_.at = at;
    ghost_.shown = true;
}

Views GestureMachine::Move(PointerEvent event) {
    event = Start(event);
    if (bandActive_) MoveBand(event);
    switch (mode_) {
        case MouseMode::kDragCaption:
        case MouseMode::kDragPageNumber:
        case MouseMode::kDragItemList:
        case MouseMode::kDragText:
            MoveText(event.at);
            break;
        case MouseMode::kDragCursor:
            MoveCursor(event.at);
            break;
        case MouseMode::kDragBigCursor:
            MoveArrows(event.at);
            break;
        case MouseMode::kClickNameTable:
            if (const auto hit = layout_.CellAt(Control::kNameTable, event.at)) {
                if (Copy().NameCellPos != hit->cell) Refresh(View::kNameTable);
                Copy().NameCellPos = hit->cell;
            }
            ClickScreen(event);
            break;
        case MouseMode::kDragBkgTile:
            MoveBkgGhost(event.at);
            break;
        case MouseMode::kDragSpriteTile:
            MoveSpriteGhost(event);
            break;
        case MouseMode::kPaintBkgTile:
            Paint(kBkg, event.at);
            break;
        case MouseMode::kPaintSpriteTile:
            Paint(kSprites, event.at);
            break;
        case MouseMode::kSourceCharacter:
        case MouseMode::kTargetCharacter:
            FollowStrip(event.at);
            break;
        case MouseMode::kPlaceNameCell:
            if (Copy().QuickAction) PlaceNameCell(event);
            break;
        default:
            ActOnView(event);
    }
    return Done();
}

void GestureMachine::MoveBand(const PointerEvent& event) {
    MoveBands(bands_, layout_, event.at);
    SelectInBands(Copy(), bands_, event.ctrl);
    Refresh(kBandViews | View::kCheckBoxes);
}

// In the colours that the tile would have where the pointer is.
void GestureMachine::MoveBkgGhost(Point at) {
    const auto snap = [&](Control control, Pos cell, int palette) {
        const Point origin = layout_.Origin(control);
        ShowGhost(BkgGhost(dragEntry_.Tile, palette),
                  {origin.x + cell.X * kNameCell - kGhostBorder,
                   origin.y + cell.Y * kNameCell - kGhostBorder});
    };
    if (const auto strip = layout_.CellAt(Control::kSourceStrip, at)) {
        return snap(Control::kSourceStrip, strip->cell, 0);
    }
    if (const auto screen = layout_.CellAt(Control::kNameTable, at)) {
        const auto [column, row] = screen->cell;
        return snap(Control::kNameTable, screen->cell,
                    AttributePalette(Copy().Store().Attributes, column, row));
    }
    for (const PatternTable table : {kBkg, kSprites}) {
        if (const auto list = layout_.CellAt(TileListOf(table), at)) {
            return snap(TileListOf(table), list->cell, CurrentPalette(Copy(), table));
        }
    }
    const int palette = ghost_.tiles.empty() ? 0 : ghost_.tiles.front().palette;
    ShowGhost(BkgGhost(dragEntry_.Tile, palette),
              {at.x - dragOffset_.x - kGhostBorder, at.y - dragOffset_.y - kGhostBorder});
}

void GestureMachine::MoveSpriteGhost(const PointerEvent& event) {
    const bool tall = Copy().Store().BigSprite != 0;
    // Puts the sprite's corner, pixels of the control's picture, below the ghost's border.
    const auto snap = [&](Control control, Point corner) {
        const Point origin = layout_.Origin(control);
        ShowGhost(SpriteGhost(dragEntry_, tall), {origin.x + corner.x - kGhostBorder,
                                                  origin.y + corner.y - SpriteGhostBorder(tall)});
    };
    const auto pixel = layout_.CellAt(Control::kNameTable, kConsolePixels, event.at);
    if (pixel && !event.shift) {
        return snap(Control::kNameTable, {pixel->cell.X * kScreenScale - dragHotSpot_.x,
                                          pixel->cell.Y * kScreenScale - dragHotSpot_.y});
    }
    if (pixel) {
        const Point inScreen = layout_.Relative(Control::kNameTable, event.at);
        const Pos cell =
            NearestScreenCell({inScreen.x - dragHotSpot_.x, inScreen.y - dragHotSpot_.y});
        return snap(Control::kNameTable, {cell.X * kNameCell, cell.Y * kNameCell});
    }
    for (const PatternTable table : {kBkg, kSprites}) {
        if (const auto list = layout_.CellAt(TileListOf(table), event.at)) {
            return snap(TileListOf(table), {list->cell.X * kNameCell, list->cell.Y * kNameCell});
        }
    }
    ShowGhost(SpriteGhost(dragEntry_, tall), {event.at.x - dragOffset_.x - kGhostBorder,
                                              event.at.y - dragOffset_.y - kGhostBorder});
}

// Where the dragged object's corner has come to, in steps of so many pixels of the screen, rounded
// towards 0.
Pos GestureMachine::DraggedTo(Point at, int step) const {
    const Point inScreen = layout_.Relative(Control::kNameTable, at);
    return {(inScreen.x - dragHotSpot_.x) / step, (inScreen.y - dragHotSpot_.y) / step};
}

// Each text has its own bounds. A caption may run off the right edge of the screen, a page number
// is kept whole, an item list may run off the right but not off the bottom, and any other text may
// leave the screen altogether and is judged when it is dropped.
void GestureMachine::MoveText(Point at) {
    DesignDocument& document = Copy().document;
    const Pos place = DraggedTo(at, kNameCell);
    if (mode_ == MouseMode::kDragText) {
        if (!Copy().PlacedText) return;
        Copy().PlacedText->X = place.X;
        Copy().PlacedText->Y = place.Y;
        return Refresh(View::kNameTable);
    }
    const auto keep = [&](int64_t columns, int64_t rows) {
        const auto last = [](int64_t size, int64_t of) {
            return static_cast<int32_t>(std::max<int64_t>(0, of - size));
        };
        return Pos{std::clamp(place.X, 0, last(columns, kScreenColumns)),
                   std::clamp(place.Y, 0, last(rows, kScreenRows))};
    };
    if (mode_ == MouseMode::kDragCaption) {
        document.CaptionPos = keep(1, 1);
    } else if (mode_ == MouseMode::kDragPageNumber) {
        document.PageNumberPos = keep(std::ssize(Copy().PageNumberText), 1);
    } else {
        document.ItemPos = keep(1, std::ssize(Copy().ItemTextList));
    }
    Refresh(View::kNameTable);
}

void GestureMachine::MoveCursor(Point at) {
    DesignStore& store = Copy().Store();
    Pos place = DraggedTo(at, kScreenScale);
    KeepCursorOnScreen(place);
    store.ArrowTile.X = place.X;
    store.ArrowTile.Y = place.Y;
    if (!store.ArrowTileList.empty()) {
        store.ArrowTileList[0].X = place.X - kCursorInArrows.X;
        store.ArrowTileList[0].Y = place.Y - kCursorInArrows.Y;
        SpreadLargeCursor(Copy().Store());
    }
    Refresh(View::kNameTable);
}

// Whichever part was taken, it is the first one that goes where that part would.
void GestureMachine::MoveArrows(Point at) {
    DesignStore& store = Copy().Store();
    if (store.ArrowTileList.empty()) return;
    TileItem& anchor = store.ArrowTileList[0];
    const Pos place = DraggedTo(at, kScreenScale);
    anchor.X = place.X;
    anchor.Y = place.Y;
    SpreadLargeCursor(Copy().Store());
    Pos cursor{anchor.X + kCursorInArrows.X, anchor.Y + kCursorInArrows.Y};
    KeepCursorOnScreen(cursor);
    store.ArrowTile.X = cursor.X;
    store.ArrowTile.Y = cursor.Y;
    Refresh(View::kNameTable);
}

void GestureMachine::FollowStrip(Point at) {
    if (mode_ == MouseMode::kSourceCharacter) {
        if (const auto source = layout_.CellAt(Control::kSourceStrip, at)) {
            Refresh(SetSourceCharacter(Copy(), source->cell.X));
        }
    } else if (const auto target = layout_.CellAt(Control::kTargetStrip, at)) {
        Refresh(SetTargetCharacter(Copy(), target->cell.X));
    }
}

void GestureMachine::Paint(PatternTable table, Point at) {
    if (const auto pixel = layout_.CellAt(EditorOf(table), at)) {
        Refresh(PaintPixel(Copy(), table, pixel->cell));
    }
}

void GestureMachine::PlaceNameCell(const PointerEvent& event) {
    const auto hit = layout_.CellAt(Control::kNameTable, event.at);
    if (!hit) return;
    Copy().NameCellPos = hit->cell;
    Refresh(View::kNameTable);
    ClickScreen(event);
}

}  // namespace bw
