#include "shell/main/topmost.h"

namespace bw {

void SetTopmost(QWidget& window, bool topmost) {
    if (window.windowFlags().testFlag(Qt::WindowStaysOnTopHint) == topmost) return;
    const bool shown = window.isVisible();
    const QRect place = window.geometry();
    // Qt makes the window anew for this and hides it.
    window.setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
    if (!shown) return;
    if (!window.isMaximized() && !window.isFullScreen()) window.setGeometry(place);
    window.show();
}

}  // namespace bw
