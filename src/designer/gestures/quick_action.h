// The mode "Quick action": a click on a tile places it on the screen, one on the screen says where.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

class QuickAction {
  public:
    static std::optional<QuickAction> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const { return onScreen_ ? MouseMode::kPlaceNameCell : MouseMode::kIdle; }
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext&, const PointerEvent&) {}

  private:
    bool onScreen_ = false;
};

}  // namespace bw
