// What the pointer drags, above the views.
#pragma once

#include <QWidget>
#include <optional>

#include "designer/gestures/ghost.h"
#include "designer/window/draw_control.h"

namespace bw {

// Lets the pointer through.
class GhostControl : public QWidget {
  public:
    explicit GhostControl(QWidget& parent);

    // At its place, or hidden. `tiles` is what its picture is made of; `redraw` if that may have
    // changed. `scale`: the screen's pixels for one drawn.
    void Show(const Ghost& ghost, const TileImage& tiles, bool redraw, int scale);

  private:
    Ghost shown_;
    std::optional<Surface> picture_;
    std::unique_ptr<CWindowDraw> view_;
};

}  // namespace bw
