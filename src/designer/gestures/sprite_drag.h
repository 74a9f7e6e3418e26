// Dragging a sprite off the screen or a tile out of the sprites' pattern table.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"
#include "designer/gestures/ghost.h"

namespace bw {

class SpriteDrag {
  public:
    // From the screen the sprite is taken out of its list; with Ctrl a copy of it is dragged.
    static std::optional<SpriteDrag> TryPress(GestureContext& context, const PointerEvent& event);

    MouseMode Mode() const { return MouseMode::kDragSpriteTile; }
    // With Shift it snaps to the screen's cells, without to the console's pixels.
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext& context, const PointerEvent& event);

    const Ghost& DraggedPicture() const { return ghost_; }
    uint8_t Tile() const { return item_.Tile; }
    bool FromTable() const { return fromTable_; }

  private:
    static std::optional<SpriteDrag> TryPressItem(GestureContext& context,
                                                  const PointerEvent& event);
    static std::optional<SpriteDrag> TryPressTable(GestureContext& context,
                                                   const PointerEvent& event);

    void DropOnScreen(GestureContext& context, const PointerEvent& event);

    TileItem item_;
    bool fromTable_ = false;
    Point hotSpot_;  // of the press, from the sprite's corner: whole console pixels, 2 pixels each
    Point offset_;   // the same for the ghost off the views; odd for a tile of the table
    Ghost ghost_;
};

}  // namespace bw
