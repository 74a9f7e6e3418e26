// The release: drops, and the last act of a click on a view.

#include <algorithm>
#include <utility>

#include "designer/gestures/gesture_machine.h"
#include "designer/gestures/gesture_places.h"
#include "designer/model/attribute_table.h"
#include "designer/tools/pointer_edits.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;
constexpr uint32_t kNoIndex = 0xFFFFFFFF;
constexpr size_t kMostSprites = 255;  // the console menu counts them in a byte

void RemoveItem(std::vector<TileItem>& items, uint32_t index) {
    // A tile from a pattern table has none.
    if (index == kNoIndex) return;
    const auto found = std::ranges::find(items, index, &TileItem::Index);
    if (found != items.end()) items.erase(found);
}

}  // namespace

void GestureMachine::BeginStep() {
    step_.emplace(session_);
}

// A release alone, behind a double click that was ignored or after a lost press, closes nothing.
void GestureMachine::CommitStep() {
    if (step_) step_->Commit();
    step_.reset();
}

Views GestureMachine::Release(PointerEvent event) {
    event = Start(event);
    captured_ = false;
    if (shiftDown_) {
        bandActive_ = false;
        mode_ = MouseMode::kIdle;
        CommitStep();
        Refresh(kBandViews | View::kCheckBoxes);
        return Done();
    }
    switch (mode_) {
        case MouseMode::kClickNameTable:
            ClickScreen(event);
            Refresh(ActivatePalette(Copy(), kBkg));
            break;
        case MouseMode::kDragBkgTile:
            DropBkg(event);
            break;
        case MouseMode::kDragSpriteTile:
            DropSprite(event);
            break;
        case MouseMode::kDragText:
            DropText();
            break;
        default:
            ActOnView(event);
    }
    mode_ = MouseMode::kIdle;
    CommitStep();
    Refresh(View::kCheckBoxes);
    return Done();
}

void GestureMachine::ActOnView(const PointerEvent& event) {
    switch (mode_) {
        case MouseMode::kAttribute:
            if (const auto hit = layout_.CellAt(Control::kAttribute, event.at)) {
                Refresh(SetCurrentQuadrant(Copy(), hit->cell));
            }
            Refresh(ActivatePalette(Copy(), kBkg));
            break;
        case MouseMode::kBkgPalette:
            ClickBkgPalette(event.at);
            Refresh(ActivatePalette(Copy(), kBkg));
            break;
        case MouseMode::kSpritePalette:
            ClickSpritePalette(event.at);
            Refresh(ActivatePalette(Copy(), kSprites));
            break;
        case MouseMode::kSystemPalette:
            ClickSystemPalette(event);
            break;
        default:
            break;
    }
}

void GestureMachine::ClickScreen(const PointerEvent& event) {
    const auto hit = layout_.CellAt(Control::kNameTable, kAttributeCells, event.at);
    if (!hit) return;
    Refresh(SetAttributeCell(Copy(), hit->cell, event.ctrl));
    if (event.ctrl) return;
    lastBkgEntry_.reset();
    lastSpriteEntry_.reset();
}

void GestureMachine::ClickBkgPalette(Point at) {
    const auto hit = layout_.CellAt(Control::kBkgPalette, at);
    if (!hit || lastBkgEntry_ == hit->cell.X) return;
    lastBkgEntry_ = hit->cell.X;
    Refresh(PickBkgEntry(Copy(), hit->cell.X));
}

void GestureMachine::ClickSpritePalette(Point at) {
    const auto hit = layout_.CellAt(Control::kSpritePalette, at);
    if (!hit || lastSpriteEntry_ == hit->cell.X) return;
    lastSpriteEntry_ = hit->cell.X;
    Refresh(PickSpriteEntry(Copy(), hit->cell.X));
}

// A colour redraws a whole pattern table, so not every movement counts.
void GestureMachine::ClickSystemPalette(const PointerEvent& event) {
    constexpr std::chrono::milliseconds kPause{20};
    const auto hit = layout_.CellAt(Control::kSystemPalette, event.at);
    if (!hit) return;
    if (lastColourTime_ && event.time >= *lastColourTime_ &&
        event.time - *lastColourTime_ < kPause) {
        return;
    }
    lastColourTime_ = event.time;
    Refresh(PickColour(Copy(), hit->cell));
}

// Each view tests for itself whether the drop is its own.
void GestureMachine::DropBkg(const PointerEvent& event) {
    if (const auto strip = layout_.CellAt(Control::kSourceStrip, event.at)) {
        Refresh(MapCharacter(Copy(), strip->cell.X, dragEntry_.Tile));
    }
    DropBkgOnScreen(event.at);
    DropOnList(kBkg, event);
    if (const auto list = layout_.CellAt(Control::kSpriteTileList, event.at)) {
        Refresh(DragTileAcross(Copy(), kBkg, dragEntry_.Tile, TileNumber(list->cell)));
    }
    EndDrag();
}

void GestureMachine::DropBkgOnScreen(Point at) {
    DesignStore& store = Copy().Store();
    const auto hit = layout_.CellAt(Control::kNameTable, at);
    if (!hit) {
        // With Ctrl a copy was dragged, which has the original's number: dropped elsewhere it takes
        // the original along.
        RemoveItem(store.BkgTileList, dragEntry_.Index);
        return;
    }
    dragEntry_.Index = Copy().nextBkgIndex++;
    dragEntry_.X = hit->cell.X;
    dragEntry_.Y = hit->cell.Y;
    dragEntry_.Palette =
        static_cast<uint8_t>(AttributePalette(store.Attributes, hit->cell.X, hit->cell.Y));
    store.BkgTileList.push_back(dragEntry_);
}

void GestureMachine::DropSprite(const PointerEvent& event) {
    if (layout_.IsOn(Control::kNameTable, event.at)) {
        DropSpriteOnScreen(event);
    } else {
        RemoveItem(Copy().Store().SpriteTileList, dragEntry_.Index);
    }
    DropOnList(kSprites, event);
    if (const auto list = layout_.CellAt(Control::kBkgTileList, event.at)) {
        const int even = Copy().Store().BigSprite != 0 ? dragEntry_.Tile & 0xFE : dragEntry_.Tile;
        Refresh(
            DragTileAcross(Copy(), kSprites, static_cast<uint8_t>(even), TileNumber(list->cell)));
    }
    EndDrag();
}

void GestureMachine::DropSpriteOnScreen(const PointerEvent& event) {
    std::vector<TileItem>& sprites = Copy().Store().SpriteTileList;
    const Point inScreen = layout_.Relative(Control::kNameTable, event.at);
    const Point corner{inScreen.x - dragHotSpot_.x, inScreen.y - dragHotSpot_.y};
    dragEntry_.Index = Copy().nextSpriteIndex++;
    Pos place = DraggedTo(event.at, kScreenScale);
    if (event.shift) {
        const Pos cell = NearestScreenCell(corner);
        place = {cell.X * kTilePixels, cell.Y * kTilePixels};
    }
    // The topmost line counts as the one below it, since a sprite shows a line below its Y byte.
    if (place.Y == 0) place.Y = 1;
    shownFlags_ = dragEntry_.Flags;
    dragEntry_.X = place.X;
    dragEntry_.Y = place.Y - 1;
    // Beyond that the sprite is lost; an undo brings it back.
    if (sprites.size() < kMostSprites && place.X >= 0 && place.X <= 255 && place.Y >= 0 &&
        place.Y <= 239) {
        sprites.push_back(dragEntry_);
    }
}

// Onto the pattern table that the tile is from.
void GestureMachine::DropOnList(PatternTable table, const PointerEvent& event) {
    const auto list = layout_.CellAt(TileListOf(table), event.at);
    if (!list) return;
    const DragSource ofList =
        table == kBkg ? DragSource::kBkgTileList : DragSource::kSpriteTileList;
    Refresh(DragTile(Copy(), table,
                     {.from = dragEntry_.Tile,
                      .to = TileNumber(list->cell),
                      .move = dragSource_ == ofList,
                      .copy = event.ctrl}));
}

void GestureMachine::EndDrag() {
    ghost_.shown = false;
    dragEntry_ = {};
    Refresh(View::kNameTable);
}

void GestureMachine::DropText() {
    Refresh(View::kNameTable);
    const auto text = std::exchange(Copy().PlacedText, std::nullopt);
    if (!text) return;
    const bool reachesScreen = static_cast<int64_t>(text->Text.size()) + text->X > 0;
    if (reachesScreen && text->X < kScreenColumns && text->Y >= 0 && text->Y < kScreenRows) {
        Copy().Store().CustomText.push_back(*text);
    }
}

}  // namespace bw
