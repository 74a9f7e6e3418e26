// Clicks in the three modes "Quickly replace": tiles and characters take each other's pictures,
// click by click.
#pragma once

#include <optional>

#include "designer/gestures/strip_drag.h"

namespace bw {

// The modes last as long as the user keeps clicking where they apply.
void EndQuickReplace(GestureContext& context, Point at);

class QuickReplace {
  public:
    static std::optional<QuickReplace> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const { return character_ ? character_->Mode() : MouseMode::kIdle; }
    void Move(GestureContext& context, const PointerEvent& event) {
        if (character_) character_->Move(context, event);
    }
    void Drop(GestureContext&, const PointerEvent&) {}

  private:
    void MapCharacter(GestureContext& context, const PointerEvent& event);
    void ReplaceTile(GestureContext& context, const PointerEvent& event, PatternTable table);

    std::optional<StripDrag> character_;  // none: a tile was pressed
};

}  // namespace bw
