// The mark of what a check has found: a red disc with a cross for an error, a blue square with an i
// for a note. Shape and sign differ too, for whoever doesn't tell the colours apart.
#pragma once

#include <QPainter>
#include <QRect>

#include "console/findings.h"

namespace bw {

// In the middle of the rectangle, as large as it may be.
void PaintFindingMark(QPainter& painter, const QRect& place, FindingSeverity severity);

}  // namespace bw
