// The press: which of the many things under the pointer takes it.

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

#include "designer/gestures/gesture_machine.h"
#include "designer/gestures/gesture_places.h"
#include "designer/tools/pointer_edits.h"

namespace bw {
namespace {

constexpr PatternTable kBkg = PatternTable::kBackground;
constexpr PatternTable kSprites = PatternTable::kSprites;

void Deselect(std::vector<TileItem>& items) {
    for (TileItem& item : items)
        item.Selected = 0;
}

}  // namespace

Views GestureMachine::Press(PointerEvent event) {
    // A second press without a release: the pointer was let go where nobody saw it.
    Views before;
    if (captured_) before = Release(event);
    event = Start(event);
    captured_ = true;
    BeginStep();
    dragSource_ = DragSource::kNone;
    EndQuickModes(event.at);
    constexpr std::array<Handler, 14> kStages = {
        &GestureMachine::PressQuickMap,
        &GestureMachine::PressQuickReplaceBkg,
        &GestureMachine::PressQuickReplaceSprites,
        &GestureMachine::PressRubberBand,
        &GestureMachine::PressStrip,
        &GestureMachine::PressEditor,
        &GestureMachine::PressCursor,
        &GestureMachine::PressQuickAction,
        &GestureMachine::PressSprite,
        &GestureMachine::PressText,
        &GestureMachine::PressBkgItem,
        &GestureMachine::PressBkgTileList,
        &GestureMachine::PressSpriteTileList,
        &GestureMachine::PressPlainView,
    };
    std::ranges::any_of(kStages, [&](Handler stage) { return (this->*stage)(event); });
    return before | Done();
}

// The quick modes last as long as the user keeps clicking where they apply.
void GestureMachine::EndQuickModes(Point at) {
    const bool onSource = layout_.IsOn(Control::kSourceStrip, at);
    const bool onTarget = layout_.IsOn(Control::kTargetStrip, at);
    const bool onBkg = layout_.IsOn(Control::kBkgTileList, at);
    const bool onSprites = layout_.IsOn(Control::kSpriteTileList, at);
    const auto keepIf = [&](bool& mode, bool applies) {
        if (!mode || applies) return;
        mode = false;
        Refresh(View::kCheckBoxes);
    };
    keepIf(Copy().QuickReplaceFromBkg, onSource || onBkg);
    keepIf(Copy().QuickReplaceToBkg, onTarget || onBkg);
    keepIf(Copy().QuickReplaceToSprites, onTarget || onSprites);
}

bool GestureMachine::PressQuickMap(const PointerEvent& event) {
    if (!Copy().QuickReplaceFromBkg) return false;
    if (PressStrip(event)) return true;
    if (const auto hit = layout_.CellAt(Control::kBkgTileList, event.at)) {
        Refresh(QuickMapCharacter(Copy(), hit->cell));
    }
    return true;
}

bool GestureMachine::PressQuickReplaceBkg(const PointerEvent& event) {
    return Copy().QuickReplaceToBkg && PressQuickReplace(kBkg, event);
}

bool GestureMachine::PressQuickReplaceSprites(const PointerEvent& event) {
    return Copy().QuickReplaceToSprites && PressQuickReplace(kSprites, event);
}

bool GestureMachine::PressQuickReplace(PatternTable table, const PointerEvent& event) {
    if (const auto hit = layout_.CellAt(Control::kTargetStrip, event.at)) {
        mode_ = MouseMode::kTargetCharacter;
        Refresh(SetTargetCharacter(Copy(), hit->cell.X));
        Refresh(QuickReplaceTile(Copy(), table));
    } else if (const auto tile = layout_.CellAt(TileListOf(table), event.at)) {
        // The background's side for the sprite table too, as with the replacement itself.
        Refresh(SetCurrentTile(Copy(), table, tile->cell) | ActivatePalette(Copy(), kBkg));
    }
    return true;
}

bool GestureMachine::PressRubberBand(const PointerEvent& event) {
    if (!shiftDown_) return false;
    bands_ = StartBands(layout_, event.at);
    bandActive_ = true;
    Refresh(kBandViews);
    return true;
}

bool GestureMachine::PressStrip(const PointerEvent& event) {
    if (const auto source = layout_.CellAt(Control::kSourceStrip, event.at)) {
        mode_ = MouseMode::kSourceCharacter;
        Refresh(SetSourceCharacter(Copy(), source->cell.X));
        return true;
    }
    if (const auto target = layout_.CellAt(Control::kTargetStrip, event.at)) {
        mode_ = MouseMode::kTargetCharacter;
        Refresh(SetTargetCharacter(Copy(), target->cell.X) | ActivatePalette(Copy(), kBkg));
        return true;
    }
    return false;
}

bool GestureMachine::PressEditor(const PointerEvent& event) {
    for (const PatternTable table : {kBkg, kSprites}) {
        if (!layout_.IsOn(EditorOf(table), event.at)) continue;
        mode_ = table == kBkg ? MouseMode::kPaintBkgTile : MouseMode::kPaintSpriteTile;
        Paint(table, event.at);
        Refresh(ActivatePalette(Copy(), table));
        return true;
    }
    return false;
}

bool GestureMachine::PressCursor(const PointerEvent& event) {
    if (!Copy().Show_Cursor || !layout_.IsOn(Control::kNameTable, event.at)) return false;
    const Point inScreen = layout_.Relative(Control::kNameTable, event.at);
    if (Copy().document.BigCursor != 0) return PressArrows(inScreen);
    DesignStore& store = Copy().Store();
    TileItem& cursor = store.ArrowTile;
    const ScreenRect rect = CursorRect(cursor, store.BigSprite != 0);
    if (!rect.Holds(inScreen)) {
        Refresh(View::kNameTable | View::kCheckBoxes);
        cursor.Selected &= ~1u;
        return false;
    }
    Deselect(store.BkgTileList);
    Deselect(store.SpriteTileList);
    Deselect(store.ArrowTileList);
    Refresh(View::kNameTable | View::kCheckBoxes);
    Refresh(SetCurrentTile(Copy(), kSprites, TilePlace(cursor.Tile)));
    Refresh(SetCurrentEntry(Copy(), kSprites, (cursor.Palette & 3) * 4 + 1));
    Refresh(ActivatePalette(Copy(), kSprites));
    mode_ = MouseMode::kDragCursor;
    dragHotSpot_ = rect.From(inScreen);
    return true;
}

// Unlike the small cursor, the large one is taken without a change of the selection or of the
// active palette.
bool GestureMachine::PressArrows(Point inScreen) {
    DesignStore& store = Copy().Store();
    for (const TileItem& arrow : store.ArrowTileList) {
        const ScreenRect rect = CursorRect(arrow, store.BigSprite != 0);
        if (!rect.Holds(inScreen)) continue;
        Refresh(SetCurrentTile(Copy(), kSprites, TilePlace(arrow.Tile)));
        Refresh(SetCurrentEntry(Copy(), kSprites, (arrow.Palette & 3) * 4 + 1));
        mode_ = MouseMode::kDragBigCursor;
        dragHotSpot_ = rect.From(inScreen);
        return true;
    }
    store.ArrowTile.Selected &= ~1u;
    Refresh(View::kNameTable | View::kCheckBoxes);
    return false;
}

bool GestureMachine::PressQuickAction(const PointerEvent& event) {
    if (!Copy().QuickAction) return false;
    for (const PatternTable table : {kBkg, kSprites}) {
        const auto hit = layout_.CellAt(TileListOf(table), event.at);
        if (!hit) continue;
        Refresh(SetCurrentTile(Copy(), table, hit->cell));
        Refresh(PlaceTile(Copy(), table));
        lastBkgEntry_.reset();
        lastSpriteEntry_.reset();
        return true;
    }
    if (!layout_.IsOn(Control::kNameTable, event.at)) return false;
    mode_ = MouseMode::kPlaceNameCell;
    PlaceNameCell(event);
    return true;
}

bool GestureMachine::PressSprite(const PointerEvent& event) {
    if (!Copy().DragText || !Copy().Show_Sp_Tile || !layout_.IsOn(Control::kNameTable, event.at)) {
        return false;
    }
    DesignStore& store = Copy().Store();
    const Point inScreen = layout_.Relative(Control::kNameTable, event.at);
    for (size_t i = store.SpriteTileList.size(); i-- > 0;) {
        const ScreenRect rect = SpriteRect(store.SpriteTileList[i], store.BigSprite != 0);
        if (!rect.Holds(inScreen)) continue;
        // Whole pixels of the console, two of the view each.
        const Point inside = rect.From(inScreen);
        dragHotSpot_ = dragOffset_ = {inside.x & ~1, inside.y & ~1};
        dragEntry_ = store.SpriteTileList[i];
        mode_ = MouseMode::kDragSpriteTile;
        dragSource_ = DragSource::kNameTable;
        Refresh(SetCurrentTile(Copy(), kSprites, TilePlace(dragEntry_.Tile)));
        // The first entry of the sub-palette here, the second one when a cursor is taken.
        Refresh(SetCurrentEntry(Copy(), kSprites, (dragEntry_.Palette & 3) * 4));
        Refresh(ActivatePalette(Copy(), kSprites));
        MoveSpriteGhost(event);
        KeepOriginal(event.ctrl, store.SpriteTileList, i);
        Deselect(store.BkgTileList);
        Deselect(store.ArrowTileList);
        return true;
    }
    return false;
}

// Takes a dragged item out of its list; with Ctrl a copy of it is dragged.
void GestureMachine::KeepOriginal(bool keep, std::vector<TileItem>& list, size_t item) {
    if (!keep) list.erase(list.begin() + static_cast<std::ptrdiff_t>(item));
    Refresh(View::kNameTable | View::kCheckBoxes);
}

bool GestureMachine::PressText(const PointerEvent& event) {
    if (!Copy().DragText || !layout_.IsOn(Control::kNameTable, event.at)) return false;
    const DesignDocument& document = Copy().document;
    const Point inScreen = layout_.Relative(Control::kNameTable, event.at);
    if (Copy().Show_Caption &&
        TextRect(document.CaptionPos, Copy().Store().CaptionText).Holds(inScreen)) {
        GrabText(MouseMode::kDragCaption, inScreen, document.CaptionPos);
        return true;
    }
    if (Copy().ShowPageNumber &&
        TextRect(document.PageNumberPos, Copy().PageNumberText).Holds(inScreen)) {
        GrabText(MouseMode::kDragPageNumber, inScreen, document.PageNumberPos);
        return true;
    }
    for (size_t line = 0; Copy().Show_List && line < Copy().ItemTextList.size(); ++line) {
        const auto below = static_cast<int64_t>(line);
        if (!TextRect(document.ItemPos, Copy().ItemTextList[line], below).Holds(inScreen)) continue;
        GrabText(MouseMode::kDragItemList, inScreen, document.ItemPos);
        return true;
    }
    return PressCustomText(event, inScreen);
}

bool GestureMachine::PressCustomText(const PointerEvent& event, Point inScreen) {
    std::vector<TextItem>& texts = Copy().Store().CustomText;
    for (size_t i = texts.size(); Copy().Show_Custom_Text && i-- > 0;) {
        const Pos at{texts[i].X, texts[i].Y};
        if (!TextRect(at, texts[i].Text).Holds(inScreen)) continue;
        GrabText(MouseMode::kDragText, inScreen, at);
        Copy().PlacedText = texts[i];
        if (event.ctrl) {
            Copy().PlacedText->Index = Copy().nextTextIndex++;
        } else {
            texts.erase(texts.begin() + static_cast<std::ptrdiff_t>(i));
        }
        Refresh(View::kNameTable);
        return true;
    }
    return false;
}

// Texts move by whole cells, so the hot spot is the corner of the cell that was pressed.
void GestureMachine::GrabText(MouseMode mode, Point inScreen, Pos at) {
    mode_ = mode;
    const Point inside = TextRect(at, {}).From(inScreen);
    dragHotSpot_ = {inside.x & ~(kNameCell - 1), inside.y & ~(kNameCell - 1)};
}

bool GestureMachine::PressBkgItem(const PointerEvent& event) {
    const auto hit = layout_.CellAt(Control::kNameTable, event.at);
    if (!Copy().DragText || !Copy().Show_Bg_Tile || !hit) return false;
    DesignStore& store = Copy().Store();
    for (size_t i = store.BkgTileList.size(); i-- > 0;) {
        const TileItem& item = store.BkgTileList[i];
        if (Pos{item.X, item.Y} != hit->cell) continue;
        dragEntry_ = item;
        dragHotSpot_ = dragOffset_ = hit->rest;
        mode_ = MouseMode::kDragBkgTile;
        dragSource_ = DragSource::kNameTable;
        MoveBkgGhost(event.at);
        Refresh(SetCurrentTile(Copy(), kBkg, TilePlace(dragEntry_.Tile)) |
                ActivatePalette(Copy(), kBkg));
        KeepOriginal(event.ctrl, store.BkgTileList, i);
        Deselect(store.SpriteTileList);
        Deselect(store.ArrowTileList);
        return true;
    }
    return false;
}

bool GestureMachine::PressBkgTileList(const PointerEvent& event) {
    const auto hit = layout_.CellAt(Control::kBkgTileList, event.at);
    if (!hit) return false;
    const int palette = CurrentPalette(Copy(), kBkg);
    dragEntry_ = {.X = hit->cell.X,
                  .Y = hit->cell.Y,
                  .Tile = TileNumber(hit->cell),
                  .Palette = static_cast<uint8_t>(palette)};
    dragHotSpot_ = dragOffset_ = hit->rest;
    ShowGhost(CellGhost(kBkg, dragEntry_.Tile, palette),
              {event.at.x - hit->rest.x, event.at.y - hit->rest.y});
    mode_ = MouseMode::kDragBkgTile;
    dragSource_ = DragSource::kBkgTileList;
    Refresh(SetCurrentTile(Copy(), kBkg, hit->cell) | ActivatePalette(Copy(), kBkg));
    return true;
}

bool GestureMachine::PressSpriteTileList(const PointerEvent& event) {
    const auto hit = layout_.CellAt(Control::kSpriteTileList, event.at);
    if (!hit) return false;
    const bool tall = Copy().Store().BigSprite != 0;
    const int palette = CurrentPalette(Copy(), kSprites);
    // The sprite table's tiles have odd numbers in tall sprites.
    const int tile = TileNumber(hit->cell) | (tall ? 1 : 0);
    dragEntry_ = {.X = hit->cell.X,
                  .Y = hit->cell.Y,
                  .Tile = static_cast<uint8_t>(tile),
                  .Palette = static_cast<uint8_t>(palette)};
    shownFlags_ = dragEntry_.Flags;
    dragOffset_ = hit->rest;
    dragHotSpot_ = {hit->rest.x & ~1, hit->rest.y & ~1};
    ShowGhost(tall ? TallCellGhost(dragEntry_.Tile, palette)
                   : CellGhost(kSprites, dragEntry_.Tile, palette),
              {event.at.x - hit->rest.x, event.at.y - hit->rest.y});
    mode_ = MouseMode::kDragSpriteTile;
    dragSource_ = DragSource::kSpriteTileList;
    Refresh(View::kCheckBoxes);
    Refresh(SetCurrentTile(Copy(), kSprites, hit->cell) | ActivatePalette(Copy(), kSprites));
    return true;
}

bool GestureMachine::PressPlainView(const PointerEvent& event) {
    if (const auto hit = layout_.CellAt(Control::kNameTable, event.at)) {
        DesignStore& store = Copy().Store();
        Copy().NameCellPos = hit->cell;
        Deselect(store.BkgTileList);
        Deselect(store.SpriteTileList);
        Deselect(store.ArrowTileList);
        store.ArrowTile.Selected = 0;
        Refresh(View::kNameTable | View::kCheckBoxes);
        mode_ = MouseMode::kClickNameTable;
        return true;
    }
    constexpr std::array<std::pair<Control, MouseMode>, 4> kActingViews = {{
        {Control::kAttribute, MouseMode::kAttribute},
        {Control::kBkgPalette, MouseMode::kBkgPalette},
        {Control::kSpritePalette, MouseMode::kSpritePalette},
        {Control::kSystemPalette, MouseMode::kSystemPalette},
    }};
    for (const auto& [control, mode] : kActingViews)
        if (layout_.IsOn(control, event.at)) mode_ = mode;
    return true;
}

}  // namespace bw
