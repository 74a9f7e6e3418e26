// Dragging a tile of the background, from the screen or from its pattern table.
#pragma once

#include <optional>

#include "designer/gestures/gesture_context.h"
#include "designer/gestures/ghost.h"

namespace bw {

class BackgroundDrag {
  public:
    // From the screen the item is taken out of its list; with Ctrl a copy of it is dragged.
    static std::optional<BackgroundDrag> TryPress(GestureContext& context,
                                                  const PointerEvent& event);

    MouseMode Mode() const { return MouseMode::kDragBkgTile; }
    void Move(GestureContext& context, const PointerEvent& event);
    void Drop(GestureContext& context, const PointerEvent& event);

    const Ghost& DraggedPicture() const { return ghost_; }
    uint8_t Tile() const { return item_.Tile; }
    bool FromTable() const { return fromTable_; }

  private:
    static std::optional<BackgroundDrag> TryPressItem(GestureContext& context,
                                                      const PointerEvent& event);
    static std::optional<BackgroundDrag> TryPressTable(GestureContext& context,
                                                       const PointerEvent& event);

    void DropOnScreen(GestureContext& context, Point at);

    TileItem item_;
    bool fromTable_ = false;
    Point offset_;  // of the press, from the tile's corner, pixels
    Ghost ghost_;
};

}  // namespace bw
