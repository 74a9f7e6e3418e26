#include "designer/gestures/strip_drag.h"

#include "designer/tools/pointer_edits.h"

namespace bw {

std::optional<StripDrag> StripDrag::TryPress(GestureContext& context, const PointerEvent& event) {
    for (const Control strip : {Control::kSourceStrip, Control::kTargetStrip}) {
        if (!context.layout.IsOn(strip, event.at)) continue;
        StripDrag drag(strip);
        drag.Move(context, event);
        context.Refresh(ActivatePalette(context.copy, PatternTable::kBackground));
        return drag;
    }
    return std::nullopt;
}

void StripDrag::Move(GestureContext& context, const PointerEvent& event) {
    const auto hit = context.layout.CellAt(strip_, event.at);
    if (!hit) return;
    context.Refresh(strip_ == Control::kSourceStrip
                        ? SetSourceCharacter(context.copy, hit->cell.X)
                        : SetTargetCharacter(context.copy, hit->cell.X));
}

}  // namespace bw
