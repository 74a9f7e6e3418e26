#include "shell/list/list_header.h"

#include <QPainter>
#include <QStringList>
#include <QStyleOptionHeader>
#include <algorithm>

#include "shell/framework/colors.h"

namespace bw {
namespace {

// Of the size of the header's font.
constexpr qreal kSmallInOneLine = 0.75;
constexpr qreal kLargeInTwoLines = 0.8;
constexpr qreal kSmallest = 0.55;
constexpr int kMargin = 2;  // beside a title, in pixels
constexpr int kArrow = 4;   // the height of a sort's arrow, over the title

// Split at a blank or behind a hyphen, else in the middle.
QStringList InTwoLines(const QString& title) {
    qsizetype middle = title.lastIndexOf(QLatin1Char(' '));
    if (middle <= 0) middle = title.lastIndexOf(QLatin1Char('-')) + 1;
    if (middle <= 0) middle = (title.size() + 1) / 2;
    return {title.left(middle).trimmed(), title.mid(middle).trimmed()};
}

}  // namespace

ListHeader::ListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
}

QString ListHeader::Title(int section) const {
    return model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
}

qreal ListHeader::RoomFor(const QString& title, int section) const {
    const int room = sectionSize(section) - 2 * kMargin;
    return static_cast<qreal>(room) / std::max(1, fontMetrics().horizontalAdvance(title));
}

QFont ListHeader::Scaled(qreal factor) const {
    QFont scaled = font();
    if (scaled.pointSizeF() > 0) {
        scaled.setPointSizeF(scaled.pointSizeF() * factor);
    } else {
        scaled.setPixelSize(std::max(1, static_cast<int>(scaled.pixelSize() * factor)));
    }
    return scaled;
}

QSize ListHeader::sectionSizeFromContents(int section) const {
    const QSize size = QHeaderView::sectionSizeFromContents(section);
    const int twoLines = 2 * QFontMetrics(Scaled(kLargeInTwoLines)).lineSpacing() + 2 * kArrow;
    return size.expandedTo({0, twoLines});
}

void ListHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
    QHeaderView::initStyleOptionForIndex(option, section);
    if (!FitsInOneLine(section)) option->text.clear();
    // The style's own takes its room from the title, of which a narrow column has none to give.
    option->sortIndicator = QStyleOptionHeader::None;
}

void ListHeader::PaintArrow(QPainter& painter, const QRect& rect) const {
    const bool up = sortIndicatorOrder() == Qt::AscendingOrder;
    const int middle = rect.center().x();
    const int tip = rect.top() + (up ? 1 : 1 + kArrow);
    const int base = rect.top() + (up ? 1 + kArrow : 1);
    const QPoint corners[] = {{middle, tip}, {middle - kArrow, base}, {middle + kArrow, base}};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(AccentColor());
    painter.drawPolygon(corners, 3);
    painter.restore();
}

void ListHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();
    if (isSortIndicatorShown() && sortIndicatorSection() == section) PaintArrow(*painter, rect);
    if (FitsInOneLine(section)) return;
    const QString title = Title(section);
    QStringList lines{title};
    qreal factor = RoomFor(title, section);
    if (factor < kSmallInOneLine) {
        lines = InTwoLines(title);
        factor = std::min(RoomFor(lines[0], section), RoomFor(lines[1], section));
        factor = std::clamp(factor, kSmallest, kLargeInTwoLines);
    }
    const QRect room = rect.adjusted(kMargin, 0, -kMargin, 0);
    painter->save();
    painter->setClipRect(room);
    painter->setFont(Scaled(factor));
    painter->setPen(palette().color(QPalette::ButtonText));
    painter->drawText(room, Qt::AlignCenter, lines.join(QLatin1Char('\n')));
    painter->restore();
}

}  // namespace bw
