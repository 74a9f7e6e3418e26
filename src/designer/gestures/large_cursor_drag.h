// Moving the large cursor, which takes the small one along.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

class LargeCursorDrag {
  public:
    // Unlike the small cursor, the large one is taken without a change of the selection or of the
    // active palette. A press beside it ends the small one's selection, whoever takes it.
    static std::optional<LargeCursorDrag> TryPress(GestureContext& context,
                                                   const PointerEvent& event);

    MouseMode Mode() const { return MouseMode::kDragBigCursor; }
    // Whichever part was taken, it is the first one that goes where that part would.
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext&, const PointerEvent&) {}

  private:
    explicit LargeCursorDrag(Point hotSpot) : hotSpot_(hotSpot) {}

    Point hotSpot_;  // of the press, from the corner of the part that was taken, pixels
};

}  // namespace bw
