// What the gestures have in common: the events of the mouse, and what a gesture works on.
//
// A gesture is a type with its own data and these members:
//     static std::optional<G> TryPress(GestureContext&, const PointerEvent&);
//         takes a press that is its own and does what the press does, or leaves it to the next one
//     MouseMode Mode() const;
//     void Move(GestureContext&, const PointerEvent&);
//     void Drop(GestureContext&, const PointerEvent&);  // the release
// and, where a picture hangs on the pointer, const Ghost& DraggedPicture() const. gesture_list.h
// names them all.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "designer/gestures/designer_layout.h"
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

// The left button's state apart, which the events themselves tell.
struct PointerEvent {
    Point at;                           // client pixels; counts as a pair of signed 16-bit numbers
    bool ctrl = false;                  // the keys as they are at this moment, left or right
    bool shift = false;                 //
    std::chrono::milliseconds time{0};  // of a clock that doesn't go back
};

// What one gesture leaves for later ones.
struct GestureMemory {
    // The cells of the palettes that were handled last: they aren't handled again until the current
    // sub-palette came from elsewhere.
    std::optional<int> lastBkgEntry;
    std::optional<int> lastSpriteEntry;
    std::optional<std::chrono::milliseconds> lastColourTime;
    // The flags of TileItem that the check boxes for flipping show, where a gesture set them.
    uint8_t shownFlags = 0;

    void ForgetEntries() {
        lastBkgEntry.reset();
        lastSpriteEntry.reset();
    }
};

// For one event.
struct GestureContext {
    WorkingCopy& copy;  // of the step that is open
    const DesignerLayout& layout;
    GestureMemory& memory;
    bool bandKey = false;  // the Shift key as it was when the gesture began
    Views stale;           // the views that the event has made out of date

    void Refresh(Views views) { stale |= views; }
};

}  // namespace bw
