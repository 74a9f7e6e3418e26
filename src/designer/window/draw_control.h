// A view of the designer on the screen: it shows a surface and takes no decisions.
#pragma once

#include <QWidget>

#include "designer/gestures/designer_layout.h"
#include "designer/pictures/changed_blocks.h"
#include "designer/pictures/surface.h"

namespace bw {

// One pixel of the surface is a whole number of the screen's pixels, whatever the desktop's scale;
// nothing is smoothed. What the pointer does on it goes to the widget that holds it.
class CWindowDraw : public QWidget {
  public:
    // The frame's mark of where the keyboard is; pixels around the widget.
    static constexpr int kFocusMark = 3;

    // The surface must live longer and keep its size.
    CWindowDraw(const Surface& surface, QWidget& parent);

    // In pixels of the screen for one of the surface. The widget's size follows.
    void SetScale(int scale);
    // Brings to the screen what has changed since the last call.
    void ShowChanges();

    // The pixel of the surface under a point of the widget; it may lie beside the surface.
    Point PixelAt(const QPointF& at) const;
    // The part of the widget that shows a part of the surface.
    QRect Shown(const Block& part) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    // The frame marks where the keyboard is.
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void UpdateAround();
    // Where the surface begins, in pixels of the screen from the window's corner: the next one at
    // or behind the widget's own corner, which may lie between two.
    QPoint Origin() const;
    QPointF Corner() const;

    const Surface& surface_;
    ChangedBlocks changes_;
    int scale_ = 1;
};

}  // namespace bw
