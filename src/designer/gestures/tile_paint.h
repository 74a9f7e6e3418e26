// Painting in the editor of a tile.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"

namespace bw {

class TilePaint {
  public:
    static std::optional<TilePaint> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const {
        return table_ == PatternTable::kBackground ? MouseMode::kPaintBkgTile
                                                   : MouseMode::kPaintSpriteTile;
    }
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext&, const PointerEvent&) {}

  private:
    explicit TilePaint(PatternTable table) : table_(table) {}

    PatternTable table_;
};

}  // namespace bw
