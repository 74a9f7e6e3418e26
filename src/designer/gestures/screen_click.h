// A click on the screen where there is nothing to drag: it selects a cell, or paints the
// attributes.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

// The attribute cell under the pointer becomes current; with Ctrl it takes the current sub-palette.
void ClickAttributeCell(GestureContext& context, const PointerEvent& event);

class ScreenClick {
  public:
    static std::optional<ScreenClick> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const { return MouseMode::kClickNameTable; }
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext& context, const PointerEvent& event);
};

}  // namespace bw
