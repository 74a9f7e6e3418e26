// The designer's mouse: one state machine over all its views. A window forwards the pointer and the
// keys, redraws the views that come back as out of date, and shows the ghost where it says. The
// machine keeps the order in which gestures are offered a press (gesture_list.h), the capture, and
// the step of the undo history that a gesture is from its press to its release.
#pragma once

#include <cstdint>
#include <optional>

#include "designer/gestures/gesture_context.h"
#include "designer/gestures/gesture_list.h"
#include "designer/gestures/ghost.h"
#include "designer/history/edit_session.h"

namespace bw {

// A working copy as an event would leave it, and the gesture that would be under way.
struct GestureTrial {
    WorkingCopy copy;
    Gesture gesture;
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
    // In a tile editor the colour under the pointer becomes the one to paint with: a step of its
    // own. Elsewhere, and during a gesture, nothing happens.
    Views RightPress(PointerEvent event);

    Views ShiftKeyDown();
    Views ShiftKeyUp();

    // What a press or, during a gesture, a release would do here: on a copy, with the very rules of
    // the event itself. For saying so beforehand.
    GestureTrial TryPress(PointerEvent event) const;
    GestureTrial TryRelease(PointerEvent event) const;

    const Gesture& Current() const { return gesture_; }
    MouseMode Mode() const;
    // From a press to its release: the window keeps the pointer's events to itself, and commands
    // that are steps of their own have to wait.
    bool Captured() const { return step_.has_value(); }
    // The Shift key as the Load and Save commands see it: not while a gesture is under way.
    bool ShiftDown() const { return shiftDown_; }
    bool RubberBandActive() const { return std::holds_alternative<RubberBandDrag>(gesture_); }
    // What the views of the tables and of the screen are to show of the band.
    std::optional<RubberBands> Bands() const;
    const Ghost& DraggedPicture() const;
    // The flags of TileItem that the check boxes for flipping show, where a gesture set them
    // (kCheckBoxes is out of date then).
    uint8_t ShownFlags() const { return memory_.shownFlags; }
    // The user has turned one of those boxes.
    void SetShownFlag(uint8_t flag, bool on) {
        const unsigned others = memory_.shownFlags & ~unsigned{flag};
        memory_.shownFlags = static_cast<uint8_t>(others | (on ? flag : 0u));
    }

  private:
    // Begins a gesture's step, for which the pointer is captured. The views that the end of a lost
    // gesture makes out of date.
    Views Capture(const PointerEvent& event);
    GestureContext Context();

    EditSession& session_;
    const DesignerLayout& layout_;
    std::optional<EditStep> step_;  // of the gesture
    Gesture gesture_;
    GestureMemory memory_;
    bool shiftDown_ = false;
};

}  // namespace bw
