// What lies under the pointer and what the mouse would do there, in words for a status line.
#pragma once

#include <string>

#include "designer/gestures/gesture_machine.h"
#include "designer/gestures/pointer_place.h"
#include "language/language.h"

namespace bw {

// Plain sentences: where the pointer is; then what a press, a drag or the right button would do, or
// during a gesture its release. Which gesture would take the press is asked of the machine itself.
// Empty where there is nothing to say. `mouse` works on the session of `copy` over `layout`.
std::u16string PointerText(const WorkingCopy& copy, const DesignerLayout& layout,
                           const GestureMachine& mouse, const PointerEvent& event,
                           Language language);

// The first half alone.
std::u16string PlaceText(const PointerPlace& place, Language language);

}  // namespace bw
