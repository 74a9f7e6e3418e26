// Drawing a rubber band with Shift over the screen and the pattern tables at once.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"
#include "designer/pictures/rubber_bands.h"

namespace bw {

class RubberBandDrag {
  public:
    static std::optional<RubberBandDrag> TryPress(GestureContext& context,
                                                  const PointerEvent& event);

    MouseMode Mode() const { return MouseMode::kIdle; }
    // Selects all items and tiles that share a pixel with the band, its edges included. Whatever it
    // doesn't touch is deselected, unless the user adds to the selection. Lists that aren't shown
    // keep their selection.
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext&, const PointerEvent&) {}

    const RubberBands& Bands() const { return bands_; }

  private:
    RubberBands bands_;
};

}  // namespace bw
