#include "shell/list/row_painter.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "shell/framework/colors.h"

namespace bw {
namespace {

constexpr int kTextMargin = 4;         // at both sides of a cell's text, in pixels
constexpr int kRowMargin = 3;          // above and below the line of text
constexpr float kFrameOpacity = 0.6F;  // of the check square's frame

// Light blues: selected, even and odd rows.
constexpr std::array<QRgb, 3> kCheckedRows{0xFF90ACFF, 0xFF96F0FF, 0xFF96E1FF};
constexpr std::array<QRgb, 3> kUncheckedRows{0xFFACACFF, 0xFFC8F0FF, 0xFFC8E1FF};
constexpr QRgb kText = 0xFF000000;
constexpr QRgb kQuietText = 0xFF101217;  // of rows neither checked nor selected
constexpr QRgb kTextOnDark = 0xFFFFFFFF;
constexpr QRgb kQuietTextOnDark = 0xFFE8EAEF;

std::array<QColor, 3> Themed(const std::array<QRgb, 3>& colors) {
    std::array<QColor, 3> themed;
    std::ranges::transform(colors, themed.begin(),
                           [](QRgb color) { return ThemedColor(QColor(color)); });
    return themed;
}

void PaintCheck(QPainter& painter, const QStyleOptionViewItem& option, bool checked,
                const QColor& frame) {
    const QStyle& style = *option.widget->style();
    const QSize size(style.pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                     style.pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
    QRect square = option.rect;
    square.setWidth(square.height());
    QStyleOptionViewItem check(option);
    check.rect = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, square);
    check.state &= ~(QStyle::State_HasFocus | QStyle::State_Selected);
    check.state |= checked ? QStyle::State_On : QStyle::State_Off;
    style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &check, &painter, option.widget);
    // Styles frame it for a background of the theme's, which a row's isn't.
    painter.setPen(frame);
    painter.drawRect(check.rect.adjusted(0, 0, -1, -1));
}

}  // namespace

RowColors::RowColors()
    : dark_(DarkTheme()), checked_(Themed(kCheckedRows)), unchecked_(Themed(kUncheckedRows)) {}

QColor RowColors::Background(RowState state) const {
    const std::array<QColor, 3>& colors = state.checked ? checked_ : unchecked_;
    return state.selected ? colors[0] : colors[state.odd ? 2 : 1];
}

QColor RowColors::Text(RowState state) const {
    const bool quiet = !state.checked && !state.selected;
    if (dark_) return quiet ? kQuietTextOnDark : kTextOnDark;
    return quiet ? kQuietText : kText;
}

int RowPainter::RowHeight(const QWidget& view) {
    const int check = view.style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &view);
    return std::max(view.fontMetrics().height(), check) + 2 * kRowMargin;
}

QRect RowPainter::TextPlace(const QRect& cell, ListColumn column) {
    const int square = column == ListColumn::kNumber ? cell.height() : 0;
    return cell.adjusted(square + kTextMargin, 0, -kTextMargin, 0);
}

Qt::TextElideMode RowPainter::Elision(ListColumn column) {
    // Of a path the ends tell most.
    return column == ListColumn::kPath ? Qt::ElideMiddle : Qt::ElideRight;
}

void RowPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    const GameEntry* entry = model_.EntryAt(index.row());
    if (entry == nullptr) return;
    const auto column = static_cast<ListColumn>(index.column());
    const RowState state{.checked = entry->checked,
                         .selected = option.state.testFlag(QStyle::State_Selected),
                         .odd = index.row() % 2 != 0};
    painter->fillRect(option.rect, colors_.Background(state));
    const QColor ink = colors_.Text(state);
    if (column == ListColumn::kNumber) {
        QColor frame = ink;
        frame.setAlphaF(kFrameOpacity);
        PaintCheck(*painter, option, entry->checked, frame);
    }

    const QRect place = TextPlace(option.rect, column);
    const QString text = option.fontMetrics.elidedText(
        model_.data(index, Qt::DisplayRole).toString(), Elision(column), place.width());
    painter->setFont(option.font);
    painter->setPen(ink);
    painter->drawText(place, model_.data(index, Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine,
                      text);
}

QSize RowPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int height = RowHeight(*option.widget);
    const QRect none(0, 0, 0, height);
    const int around = -TextPlace(none, static_cast<ListColumn>(index.column())).width();
    const QString text = model_.data(index, Qt::DisplayRole).toString();
    // One pixel is the grid's.
    return {option.fontMetrics.horizontalAdvance(text) + around + 1, height};
}

}  // namespace bw
