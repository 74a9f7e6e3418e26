// Moving a text on the screen by whole cells: the caption, the page number, the list of names or a
// text of the user's own.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

class TextDrag {
  public:
    static std::optional<TextDrag> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const { return mode_; }
    // Each text has its own bounds. A caption may run off the right edge of the screen, a page
    // number is kept whole, an item list may run off the right but not off the bottom, and any
    // other text may leave the screen altogether and is judged when it is dropped.
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext& context, const PointerEvent& event);

  private:
    TextDrag(MouseMode mode, Point inScreen, Pos text);

    static std::optional<TextDrag> TryPressCustom(GestureContext& context,
                                                  const PointerEvent& event, Point inScreen);

    MouseMode mode_;  // kDragCaption and so on: which text; one's own is the copy's PlacedText
    Point hotSpot_;   // of the press, from the text's corner: the corner of a cell, pixels
};

}  // namespace bw
