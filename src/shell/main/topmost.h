// Keeping a window above all others.
#pragma once

#include <QWidget>

namespace bw {

void SetTopmost(QWidget& window, bool topmost);

}  // namespace bw
