#include "shell/framework/finding_mark.h"

#include <algorithm>

namespace bw {
namespace {

constexpr QRgb kErrorGround = 0xFFC0161C;
constexpr QRgb kNoteGround = 0xFF1A5FB4;
constexpr QRgb kSign = 0xFFFFFFFF;
// Of the mark's side.
constexpr qreal kLine = 0.14;
constexpr qreal kRim = 0.06;
constexpr qreal kRounding = 0.2;

}  // namespace

void PaintFindingMark(QPainter& painter, const QRect& place, FindingSeverity severity) {
    const bool error = severity == FindingSeverity::kError;
    const qreal side = std::min(place.width(), place.height());
    QRectF mark(0, 0, side * (1 - kRim), side * (1 - kRim));
    mark.moveCenter(QRectF(place).center());
    const auto at = [&](qreal x, qreal y) {
        return QPointF(mark.left() + mark.width() * x, mark.top() + mark.height() * y);
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // The rim keeps it apart from pictures of its own colour.
    painter.setPen(QPen(QColor(kSign), side * kRim));
    painter.setBrush(QColor(error ? kErrorGround : kNoteGround));
    if (error) {
        painter.drawEllipse(mark);
    } else {
        painter.drawRoundedRect(mark, side * kRounding, side * kRounding);
    }
    painter.setPen(QPen(QColor(kSign), side * kLine, Qt::SolidLine, Qt::RoundCap));
    if (error) {
        painter.drawLine(at(0.3, 0.3), at(0.7, 0.7));
        painter.drawLine(at(0.3, 0.7), at(0.7, 0.3));
    } else {
        painter.drawPoint(at(0.5, 0.25));
        painter.drawLine(at(0.5, 0.48), at(0.5, 0.78));
    }
    painter.restore();
}

}  // namespace bw
