// All gestures of the designer's mouse.
#pragma once

#include <variant>

#include "designer/gestures/background_drag.h"
#include "designer/gestures/cursor_drag.h"
#include "designer/gestures/large_cursor_drag.h"
#include "designer/gestures/quick_action.h"
#include "designer/gestures/quick_replace.h"
#include "designer/gestures/rubber_band_drag.h"
#include "designer/gestures/screen_click.h"
#include "designer/gestures/sprite_drag.h"
#include "designer/gestures/strip_drag.h"
#include "designer/gestures/text_drag.h"
#include "designer/gestures/tile_paint.h"
#include "designer/gestures/view_click.h"

namespace bw {

// A press that nothing takes, and the time between gestures.
struct NoGesture {
    static std::optional<NoGesture> TryPress(GestureContext&, const PointerEvent&) { return {}; }
    MouseMode Mode() const { return MouseMode::kIdle; }
    void Move(GestureContext&, const PointerEvent&) {}
    void Drop(GestureContext&, const PointerEvent&) {}
};

// In the order in which a press is offered to them. The first one that takes it keeps it up to the
// release.
using Gesture = std::variant<NoGesture, QuickReplace, RubberBandDrag, StripDrag, TilePaint,
                             CursorDrag, LargeCursorDrag, QuickAction, SpriteDrag, TextDrag,
                             BackgroundDrag, ScreenClick, ViewClick>;

}  // namespace bw
