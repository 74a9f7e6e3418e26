// Moving the small cursor, which takes the large one along.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

class CursorDrag {
  public:
    // A press beside the cursor ends its selection, whoever takes it.
    static std::optional<CursorDrag> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const { return MouseMode::kDragCursor; }
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext&, const PointerEvent&) {}

  private:
    explicit CursorDrag(Point hotSpot) : hotSpot_(hotSpot) {}

    Point hotSpot_;  // of the press, from the cursor's corner, pixels
};

}  // namespace bw
