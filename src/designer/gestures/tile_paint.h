// Drawing in the editor of a tile, in the shape that the user has chosen (WorkingCopy::tileShape).
#pragma once

#include <array>
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
    TileShape Shape() const { return shape_; }

    // The pencil paints what the pointer passes. A line or a rectangle follows the pointer, beside
    // the editor along its edge, and begins anew from the tile as it was at the press. An area is
    // filled by the press alone. With Ctrl a rectangle is filled.
    void Move(GestureContext& context, const PointerEvent& event);
    // A line or a rectangle ends where the button is let go.
    void Drop(GestureContext& context, const PointerEvent& event);

  private:
    TilePaint(const WorkingCopy& copy, PatternTable table, Pos pixel);

    void DragShape(GestureContext& context, const PointerEvent& event);

    PatternTable table_;
    TileShape shape_;
    Pos from_;                                // the pixel of the press
    std::array<uint8_t, kTileBytes> before_;  // the tile at the press
};

}  // namespace bw
