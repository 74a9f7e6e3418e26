// Double clicks: they select what is on the screen, and give the selected another tile.
#pragma once

#include "designer/gestures/gesture_context.h"

namespace bw {

void SelectByDoubleClick(GestureContext& context, const PointerEvent& event);

}  // namespace bw
