// The designer's mouse: one state machine over all its views. A window forwards the pointer and the
// keys, redraws the views that come back as out of date, and shows the ghost where it says. What a
// gesture does is done on the working copy, from the press to the release as one step of its
// history.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "designer/gestures/designer_layout.h"
#include "designer/gestures/ghost.h"
#include "designer/gestures/rubber_band.h"
#include "designer/history/edit_session.h"
#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

enum class MouseMode : uint8_t {
    kIdle = 0,
    kDragCaption = 1,
    kDragPageNumber = 2,
    kDragItemList = 3,
    kDragCursor = 4,
    kDragBigCursor = 5,
    kClickNameTable = 6,
    kAttribute = 7,
    kBkgPalette = 8,
    kSpritePalette = 9,
    kSystemPalette = 10,
    kDragBkgTile = 11,
    kDragSpriteTile = 12,
    kDragText = 13,
    kPaintBkgTile = 14,
    kPaintSpriteTile = 15,
    kSourceCharacter = 16,
    kTargetCharacter = 17,
    kPlaceNameCell = 18,
};

// Where a dragged tile or sprite was taken from.
enum class DragSource : uint8_t { kNone, kNameTable, kBkgTileList, kSpriteTileList };

// The left button's state apart, which the events themselves tell.
struct PointerEvent {
    Point at;                           // client pixels; counts as a pair of signed 16-bit numbers
    bool ctrl = false;                  // the keys as they are at this moment, left or right
    bool shift = false;                 //
    std::chrono::milliseconds time{0};  // of a clock that doesn't go back
};

class GestureMachine {
  public:
    // Both must outlive the machine. Commands may change the session's copy between gestures.
    GestureMachine(EditSession& session, const DesignerLayout& layout)
        : session_(session), layout_(layout) {}

    Views Press(PointerEvent event);
    Views Move(PointerEvent event);
    Views Release(PointerEvent event);
    // In place of the second press of two; a release follows.
    Views DoubleClick(PointerEvent event);
    Views MiddlePress();

    Views ShiftKeyDown();
    Views ShiftKeyUp();

    MouseMode Mode() const { return mode_; }
    // From a press to its release: the window keeps the pointer's events to itself, and commands
    // that are steps of their own have to wait.
    bool Captured() const { return captured_; }
    // The Shift key as the Load and Save commands see it: not while a gesture is under way.
    bool ShiftDown() const { return shiftDown_; }
    bool RubberBandActive() const { return bandActive_; }
    // What the views of the tables and of the screen are to show of the band.
    std::optional<RubberBands> Bands() const {
        return bandActive_ ? std::optional(bands_) : std::nullopt;
    }
    const Ghost& DraggedPicture() const { return ghost_; }
    // The flags of TileItem that the check boxes for flipping show, where a gesture set them
    // (kCheckBoxes is out of date then).
    uint8_t ShownFlags() const { return shownFlags_; }

  private:
    using Handler = bool (GestureMachine::*)(const PointerEvent&);

    // Begins an event: the pointer's place cut to 16 bits.
    PointerEvent Start(PointerEvent event);
    Views Done();
    void BeginStep();
    void CommitStep();

    // The stages of a press, in this order; true when one takes it.
    void EndQuickModes(Point at);
    bool PressQuickMap(const PointerEvent& event);
    bool PressQuickReplaceBkg(const PointerEvent& event);
    bool PressQuickReplaceSprites(const PointerEvent& event);
    bool PressQuickReplace(PatternTable table, const PointerEvent& event);
    bool PressRubberBand(const PointerEvent& event);
    bool PressStrip(const PointerEvent& event);
    bool PressEditor(const PointerEvent& event);
    bool PressCursor(const PointerEvent& event);
    bool PressArrows(Point inScreen);
    bool PressQuickAction(const PointerEvent& event);
    bool PressSprite(const PointerEvent& event);
    bool PressText(const PointerEvent& event);
    bool PressCustomText(const PointerEvent& event, Point inScreen);
    bool PressBkgItem(const PointerEvent& event);
    bool PressBkgTileList(const PointerEvent& event);
    bool PressSpriteTileList(const PointerEvent& event);
    bool PressPlainView(const PointerEvent& event);

    void MoveBand(const PointerEvent& event);
    void MoveBkgGhost(Point at);
    void MoveSpriteGhost(const PointerEvent& event);
    void MoveText(Point at);
    void MoveCursor(Point at);
    void MoveArrows(Point at);
    void FollowStrip(Point at);
    void Paint(PatternTable table, Point at);
    void PlaceNameCell(const PointerEvent& event);
    void ActOnView(const PointerEvent& event);  // modes 7 to 10

    void ClickScreen(const PointerEvent& event);
    void ClickBkgPalette(Point at);
    void ClickSpritePalette(Point at);
    void ClickSystemPalette(const PointerEvent& event);

    void DropBkg(const PointerEvent& event);
    void DropBkgOnScreen(Point at);
    void DropSprite(const PointerEvent& event);
    void DropSpriteOnScreen(const PointerEvent& event);
    void DropOnList(PatternTable table, const PointerEvent& event);
    void EndDrag();
    void DropText();

    bool ToggleCursor(Point inScreen);
    bool ToggleItem(const PointerEvent& event, Point inScreen);
    void ExchangeTiles(const PointerEvent& event);

    Pos DraggedTo(Point at, int step) const;
    void GrabText(MouseMode mode, Point inScreen, Pos at);
    void ShowGhost(Ghost ghost, Point at);
    void KeepOriginal(bool keep, std::vector<TileItem>& list, size_t item);
    void Refresh(Views views) { stale_ |= views; }

    WorkingCopy& Copy() { return step_->Copy(); }

    EditSession& session_;
    std::optional<EditStep> step_;  // from a press to its release
    const DesignerLayout& layout_;
    Views stale_;  // of the event at hand

    MouseMode mode_ = MouseMode::kIdle;
    bool captured_ = false;
    bool shiftDown_ = false;

    DragSource dragSource_ = DragSource::kNone;
    TileItem dragEntry_;  // the text being dragged is the working copy's PlacedText
    Point dragHotSpot_;   // of the press, from the corner of the dragged object, pixels
    Point dragOffset_;    // of the pointer, from the ghost's tile
    Ghost ghost_;
    uint8_t shownFlags_ = 0;

    bool bandActive_ = false;
    RubberBands bands_;

    // The cells of the palettes that were handled last: they aren't handled again until the
    // sub-palette in use came from elsewhere.
    std::optional<int> lastBkgEntry_;
    std::optional<int> lastSpriteEntry_;
    std::optional<std::chrono::milliseconds> lastColourTime_;
};

}  // namespace bw
