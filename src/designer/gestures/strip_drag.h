// Going along a strip of characters: the one under the pointer becomes the current one.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

class StripDrag {
  public:
    // kSourceStrip or kTargetStrip.
    explicit StripDrag(Control strip) : strip_(strip) {}

    static std::optional<StripDrag> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const {
        return strip_ == Control::kSourceStrip ? MouseMode::kSourceCharacter
                                               : MouseMode::kTargetCharacter;
    }
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext&, const PointerEvent&) {}

  private:
    Control strip_;
};

}  // namespace bw
