// The frame of the designer's window: its views and standard controls at their places, at a whole
// scale. It hands on what the pointer does over it, and what is dropped.
#pragma once

#include <QStringList>
#include <QWidget>
#include <array>
#include <map>
#include <memory>
#include <vector>

#include "designer/gestures/gesture_context.h"
#include "designer/pictures/designer_views.h"
#include "designer/window/control_rows.h"
#include "designer/window/draw_control.h"
#include "designer/window/ghost_control.h"
#include "language/language.h"

class QAbstractButton;
class QLineEdit;

namespace bw {

// What the pointer can do; a hover is a move with no button held.
enum class PointerAct { kPress, kMove, kHover, kRelease, kDoubleClick, kMiddlePress, kRightPress };

// How many of the screen's pixels a drawn pixel takes: `zoom` (1 to 3) times the desktop's scale,
// to the next whole number that fits the room (logical pixels), or the one below.
int WholeScale(int zoom, double ratio, const QSize& room);
// The largest zoom whose frame fits.
int FittingZoom(double ratio, const QSize& room);

class DesignFrame : public QWidget {
    Q_OBJECT
  public:
    // The views must live longer, and have been drawn.
    explicit DesignFrame(const DesignerViews& views);
    ~DesignFrame() override;

    // In the order of ControlRows().
    QWidget& ControlOf(int id) const { return *controls_.at(id); }
    QAbstractButton& ButtonOf(int id) const;
    QLineEdit& EditOf(int id) const;
    CWindowDraw& Of(Control view) const { return *views_[static_cast<size_t>(view)]; }
    GhostControl& Dragged() { return *ghost_; }

    void SetScale(int scale);
    int Scale() const { return scale_; }
    void SetLanguage(Language language);

    // The view whose area holds a point of the frame; nothing beside all of them.
    std::optional<Control> ViewAt(const QPointF& at) const;
    // In drawn pixels, as DesignerLayout counts them.
    Point FramePoint(const QPointF& at) const;
    // A place of the frame on the screen; pixels of the frame widget.
    QRect Shown(const Rect& place) const;
    // A frame around this part for a moment; drawn pixels of the frame.
    void Mark(const Rect& place);

  signals:
    void Pointer(bw::PointerAct act, const bw::PointerEvent& event);
    // The pointer has left the frame.
    void PointerGone();
    // Ctrl and the wheel, in steps away from the user.
    void ZoomWanted(int steps);
    // Files; `at` in pixels of the frame widget, `shift` as the key was then.
    void FilesDropped(const QStringList& files, const QPointF& at, bool shift);

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    // False if it is no event of the mouse. `corner`: of the widget that it happened on.
    bool FollowMouse(const QEvent& event, const QPointF& corner);
    void Layout();
    // Narrows the letters of a text that has no room.
    void FitText(QWidget& control, int width) const;
    QString NameOf(const ControlRow& row, Language language) const;

    std::map<int, QWidget*> controls_;  // children
    std::array<CWindowDraw*, kControlCount> views_{};
    GhostControl* ghost_ = nullptr;
    QWidget* mark_ = nullptr;
    DesignerLayout places_;
    int scale_ = 1;
};

}  // namespace bw
