#include "shell/list/row_painter.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "shell/dialogs/check_report.h"
#include "shell/framework/colors.h"
#include "shell/framework/finding_mark.h"

namespace bw {
namespace {

constexpr int kTextMargin = 4;         // at both sides of a cell's text, in pixels
constexpr int kRowMargin = 3;          // above and below the line of text
constexpr float kFrameOpacity = 0.6F;  // of the check square's frame
constexpr int kBarWidth = 3;           // at the left end of a checked row
constexpr int kMarkMargin = 2;         // around a number in the menu, in its cell
constexpr int kMarkPadding = 5;        // at both sides of its digits
constexpr qreal kSheet = 0.65;         // of the mark of a game that is there twice
constexpr qsizetype kMostLaidOut = 1000;

// Selected, even and odd rows: light blues, and for dark themes greys with checked rows in blue.
using Grounds = std::array<QRgb, 3>;
constexpr Grounds kCheckedRows{0xFF90ACFF, 0xFF96F0FF, 0xFF96E1FF};
constexpr Grounds kUncheckedRows{0xFFACACFF, 0xFFC8F0FF, 0xFFC8E1FF};
constexpr Grounds kCheckedRowsOnDark{0xFF2C6199, 0xFF1D4468, 0xFF1A3D5E};
constexpr Grounds kUncheckedRowsOnDark{0xFF454C5A, 0xFF272C33, 0xFF22262C};
constexpr QRgb kText = 0xFF000000;
constexpr QRgb kQuietText = 0xFF101217;  // of rows neither checked nor selected
constexpr QRgb kFaintText = 0xFF4A5464;
constexpr QRgb kTextOnDark = 0xFFFFFFFF;
constexpr QRgb kQuietTextOnDark = 0xFFDCDFE5;
constexpr QRgb kFaintTextOnDark = 0xFFA0A8B4;

std::array<QColor, 3> Colors(const Grounds& grounds) {
    std::array<QColor, 3> colors;
    std::ranges::transform(grounds, colors.begin(), [](QRgb color) { return QColor(color); });
    return colors;
}

int Digits(size_t number) {
    int digits = 1;
    for (; number >= 10; number /= 10)
        ++digits;
    return digits;
}

int DigitsWidth(size_t number, const QFontMetrics& metrics) {
    return Digits(number) * metrics.horizontalAdvance(QLatin1Char('0'));
}

bool SaysNo(const GameEntry& entry, ListColumn column) {
    return (column == ListColumn::kCoolboy && !entry.coolboySupported) ||
           (column == ListColumn::kCoolgirl && !entry.coolgirlSupported);
}

bool HasFewTexts(ListColumn column) {
    return column >= ListColumn::kPrg && column <= ListColumn::kCoolgirl;
}

bool ShowsMissing(const GameEntry& entry, ListColumn column) {
    return column == ListColumn::kName && (entry.missing || !entry.headerRead);
}

// Two sheets, one before the other.
void PaintSame(QPainter& painter, const QRect& place, QColor ink) {
    ink.setAlphaF(kFrameOpacity);
    const QSize sheet = place.size() * kSheet;
    QRect front(place.topLeft(), sheet);
    front.moveBottomRight(place.bottomRight() - QPoint(1, 1));
    const QRect back(place.topLeft(), sheet);
    painter.setPen(ink);
    painter.drawRect(front);
    painter.drawLine(back.topLeft(), back.topRight());
    painter.drawLine(back.topLeft(), back.bottomLeft());
    painter.drawLine(back.topRight(), QPoint(back.right(), front.top()));
    painter.drawLine(back.bottomLeft(), QPoint(front.left(), back.bottom()));
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
    : dark_(DarkTheme()),
      checked_(Colors(dark_ ? kCheckedRowsOnDark : kCheckedRows)),
      unchecked_(Colors(dark_ ? kUncheckedRowsOnDark : kUncheckedRows)),
      mark_(AccentColor()),
      markText_(TextOnAccent()),
      noGround_(WarningGround()),
      noText_(WarningText()) {}

RowPainter::RowPainter(const GameListModel& model) : model_(model) {
    RenewLook();
}

void RowPainter::RenewLook() {
    colors_ = RowColors();
    missing_ = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    missingPicture_ = {};
}

QColor RowColors::Background(RowState state) const {
    const std::array<QColor, 3>& colors = state.checked ? checked_ : unchecked_;
    return state.selected ? colors[0] : colors[state.odd ? 2 : 1];
}

QColor RowColors::Text(RowState state) const {
    const bool quiet = !state.checked && !state.selected;
    if (dark_) return quiet ? kQuietTextOnDark : kTextOnDark;
    return quiet ? kQuietText : kText;
}

QColor RowColors::FaintText(RowState state) const {
    if (state.checked || state.selected) return Text(state);
    return dark_ ? kFaintTextOnDark : kFaintText;
}

int RowPainter::RowHeight(const QWidget& view) {
    const int check = view.style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &view);
    return std::max(view.fontMetrics().height(), check) + 2 * kRowMargin;
}

int RowPainter::MarkWidth(const QFontMetrics& metrics) const {
    if (model_.CheckedCount() == 0) return 0;
    return DigitsWidth(model_.CheckedCount(), metrics) + 2 * kMarkPadding;
}

int RowPainter::NumberWidth(const QWidget& view) const {
    const QFontMetrics metrics = view.fontMetrics();
    const int mark = MarkWidth(metrics);
    // One pixel is the grid's.
    return RowHeight(view) + DigitsWidth(model_.Games().size(), metrics) + 2 * kTextMargin + mark +
           (mark > 0 ? kMarkMargin : 0) + 1;
}

QRect RowPainter::TextPlace(const QRect& cell, const QModelIndex& index,
                            const QFontMetrics& metrics) const {
    QRect place = cell.adjusted(kTextMargin, 0, -kTextMargin, 0);
    const auto column = static_cast<ListColumn>(index.column());
    if (column == ListColumn::kNumber) {
        const int mark = MarkWidth(metrics);
        place.adjust(cell.height(), 0, mark > 0 ? -mark - kMarkMargin : 0, 0);
    }
    if (column != ListColumn::kName) return place;
    // One mark beside the other; see PaintNameMarks().
    const GameEntry* entry = model_.EntryAt(index.row());
    const int marks = (entry != nullptr && ShowsMissing(*entry, column) ? 1 : 0) +
                      (model_.MarkAt(index.row()) != nullptr ? 1 : 0) +
                      (model_.SameAs(index.row()).empty() ? 0 : 1);
    place.adjust(marks * cell.height(), 0, 0, 0);
    return place;
}

Qt::TextElideMode RowPainter::Elision(ListColumn column) {
    // Of a path the ends tell most.
    return column == ListColumn::kPath ? Qt::ElideMiddle : Qt::ElideRight;
}

// The bar at the row's left end, and its number in the menu at the right end of the first cell.
void RowPainter::PaintMarks(QPainter& painter, const QStyleOptionViewItem& option,
                            int viewRow) const {
    const std::optional<size_t> number = model_.NumberInMenu(viewRow);
    if (!number) return;
    QRect bar = option.rect;
    bar.setWidth(kBarWidth);
    painter.fillRect(bar, colors_.Mark());
    QRect mark = option.rect.adjusted(0, kMarkMargin, -kMarkMargin, -kMarkMargin);
    mark.setLeft(mark.right() + 1 - MarkWidth(option.fontMetrics));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors_.Mark());
    painter.drawRoundedRect(mark, mark.height() / 2.0, mark.height() / 2.0);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(colors_.MarkText());
    painter.drawText(mark, Qt::AlignCenter | Qt::TextSingleLine, QString::number(*number));
}

void RowPainter::PaintMissing(QPainter& painter, const QRect& place) const {
    const int side = place.height();
    const qreal density = painter.device()->devicePixelRatioF();
    const QSize pixels = QSize(side, side) * density;
    if (missingPicture_.size() != pixels) {
        missingPicture_ = missing_.pixmap(pixels, 1.0)
                              .scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        missingPicture_.setDevicePixelRatio(density);
    }
    painter.drawPixmap(place.topLeft(), missingPicture_);
}

void RowPainter::PaintNameMarks(QPainter& painter, const QRect& cell, int viewRow,
                                const QColor& ink) const {
    QRect place = cell.adjusted(kRowMargin, kRowMargin, 0, -kRowMargin);
    place.setWidth(place.height());
    if (ShowsMissing(*model_.EntryAt(viewRow), ListColumn::kName)) {
        PaintMissing(painter, place);
        place.translate(cell.height(), 0);
    }
    if (const CheckMark* mark = model_.MarkAt(viewRow)) {
        PaintFindingMark(painter, place, *WorstOf(mark->findings));
        place.translate(cell.height(), 0);
    }
    if (!model_.SameAs(viewRow).empty()) PaintSame(painter, place, ink);
}

// Few texts stand in most of the columns, each of them in many rows: they are laid out once.
void RowPainter::PaintText(QPainter& painter, const QStyleOptionViewItem& option,
                           const QRect& place, ListColumn column, const QString& text) const {
    if (text.isEmpty()) return;
    const QString fitted = widths_.Fitted(text, option.font, Elision(column), place.width());
    const Qt::Alignment alignment = QtAlignment(TraitsOf(column).cell);
    if (!HasFewTexts(column)) {
        painter.drawText(place, static_cast<int>(alignment) | Qt::TextSingleLine, fitted);
        return;
    }
    if (laidOut_.size() >= kMostLaidOut || laidOutFont_ != option.font) laidOut_.clear();
    laidOutFont_ = option.font;
    auto known = laidOut_.find(fitted);
    if (known == laidOut_.end()) {
        known = laidOut_.insert(fitted, QStaticText(fitted));
        known->setTextFormat(Qt::PlainText);
        known->prepare({}, option.font);
    }
    const QSize size = known->size().toSize();
    painter.drawStaticText(QStyle::alignedRect(Qt::LeftToRight, alignment, size, place).topLeft(),
                           *known);
}

void RowPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    const GameEntry* entry = model_.EntryAt(index.row());
    if (entry == nullptr) return;
    const auto column = static_cast<ListColumn>(index.column());
    const RowState state{.checked = entry->checked,
                         .selected = option.state.testFlag(QStyle::State_Selected),
                         .odd = index.row() % 2 != 0};
    const bool no = SaysNo(*entry, column);
    painter->fillRect(option.rect, no ? colors_.NoGround() : colors_.Background(state));
    const QColor ink = no                               ? colors_.NoText()
                       : column == ListColumn::kConsole ? colors_.FaintText(state)
                       : entry->missing                 ? WarningText()
                                                        : colors_.Text(state);
    painter->setFont(option.font);
    if (column == ListColumn::kNumber) {
        QColor frame = ink;
        frame.setAlphaF(kFrameOpacity);
        PaintCheck(*painter, option, entry->checked, frame);
        PaintMarks(*painter, option, index.row());
    }
    if (column == ListColumn::kName) PaintNameMarks(*painter, option.rect, index.row(), ink);
    painter->setPen(ink);
    PaintText(*painter, option, TextPlace(option.rect, index, option.fontMetrics), column,
              model_.Text(index.row(), column));
}

QSize RowPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int height = RowHeight(*option.widget);
    const QRect none(0, 0, 0, height);
    const int around = -TextPlace(none, index, option.fontMetrics).width();
    const QString text = model_.Text(index.row(), static_cast<ListColumn>(index.column()));
    // One pixel is the grid's.
    return {option.fontMetrics.horizontalAdvance(text) + around + 1, height};
}

}  // namespace bw
