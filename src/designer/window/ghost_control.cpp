#include "designer/window/ghost_control.h"

#include <cmath>

namespace bw {

GhostControl::GhostControl(QWidget& parent) : QWidget(&parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void GhostControl::Show(const Ghost& ghost, const TileImage& tiles, bool redraw, int scale) {
    if (!ghost.shown) {
        shown_ = ghost;
        hide();
        return;
    }
    Ghost asBefore = ghost;
    asBefore.at = shown_.at;
    if (redraw || !picture_ || asBefore != shown_) {
        view_.reset();
        picture_ = DrawGhost(ghost, tiles);
        view_ = std::make_unique<CWindowDraw>(*picture_, *this);
        view_->SetScale(scale);
        view_->show();
        resize(view_->size());
    }
    shown_ = ghost;
    const double step = scale / devicePixelRatioF();
    move(static_cast<int>(std::lround(ghost.at.x * step)),
         static_cast<int>(std::lround(ghost.at.y * step)));
    raise();
    show();
}

}  // namespace bw
