#include "shell/list/game_table.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "shell/framework/colors.h"
#include "shell/framework/texts.h"
#include "shell/list/cell_tips.h"
#include "shell/list/list_header.h"

namespace bw {
namespace {

constexpr int kNarrowest = 16;  // of columns, in pixels
constexpr int kWidest = 4096;
constexpr int kDropFrame = 3;
constexpr int kGapLine = 3;
constexpr int kNoteMargin = 16;    // beside the note of an empty list
constexpr qreal kNoteSize = 1.25;  // of the list's font

}  // namespace

GameTable::GameTable(GameListModel& model, QWidget* parent)
    : QTableView(parent), model_(model), painter_(model) {
    setObjectName(QStringLiteral("gameTable"));
    setModel(&model_);
    setItemDelegate(&painter_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setAutoScroll(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setDragDropMode(NoDragDrop);  // files are the window's, rows are RowDrag's
    SetUpHeaders();
    FitRows();
    for (const QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, &GameTable::CellsMoved);
}

GameTable::~GameTable() = default;

void GameTable::SetUpHeaders() {
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setHorizontalHeader(new ListHeader(this));
    QHeaderView& header = *horizontalHeader();
    header.setMinimumSectionSize(kNarrowest);
    header.setMaximumSectionSize(kWidest);
    connect(&header, &QHeaderView::sectionResized, this, [this](int column) {
        if (column == static_cast<int>(ListColumn::kNumber)) FitNumbers();
        emit CellsMoved();
    });
    for (int place = 0; place < header.count(); ++place) {
        const auto column = static_cast<int>(kColumnOrder[static_cast<size_t>(place)]);
        header.moveSection(header.visualIndex(column), place);
    }
    // The widths are those of a screen of 96 dots per inch. Qt's own scaling is in its pixels
    // already; what is left are desktops that ask for larger fonts alone.
    for (int column = 0; column < model_.columnCount(); ++column) {
        const int width = TraitsOf(static_cast<ListColumn>(column)).width;
        setColumnWidth(column, width * logicalDpiX() / 96);
    }
}

void GameTable::FitRows() {
    // The grid's line is part of a row.
    const int height = RowPainter::RowHeight(*this) + 1;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

std::optional<int> GameTable::SelectedRow() const {
    // With the focus alone Qt makes a row the current one, and doesn't select it.
    const QModelIndex current = currentIndex();
    const bool selected = current.isValid() && selectionModel()->isSelected(current);
    return selected ? std::optional(current.row()) : std::nullopt;
}

ListColumn GameTable::FocusColumn() const {
    return static_cast<ListColumn>(std::max(0, currentIndex().column()));
}

std::vector<int> GameTable::HighlightedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::ranges::sort(rows);
    return rows;
}

bool GameTable::IsHighlighted(int viewRow) const {
    return selectionModel()->isRowSelected(viewRow, {});
}

void GameTable::SelectRow(int viewRow) {
    anchor_ = viewRow;
    SelectRange(viewRow, viewRow);
}

// By the selection model and not by the view, which would go by the keys that are held down.
void GameTable::SelectRange(int from, int to) {
    const int last = model_.rowCount() - 1;
    if (last < 0) return;
    const QModelIndex start = model_.index(std::clamp(from, 0, last), 0);
    const QModelIndex end = model_.index(std::clamp(to, 0, last), static_cast<int>(FocusColumn()));
    selectionModel()->select(QItemSelection(start, end),
                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    selectionModel()->setCurrentIndex(end, QItemSelectionModel::NoUpdate);
    viewport()->update();  // the frame around the row that had the keyboard spans all of its cells
}

void GameTable::AddRow(int viewRow) {
    anchor_ = viewRow;
    selectionModel()->setCurrentIndex(model_.index(viewRow, static_cast<int>(FocusColumn())),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    viewport()->update();
}

void GameTable::SetFocusColumn(ListColumn column) {
    const std::optional<int> row = SelectedRow();
    if (!row) SelectRow(0);
    selectionModel()->setCurrentIndex(model_.index(row.value_or(0), static_cast<int>(column)),
                                      QItemSelectionModel::NoUpdate);
    viewport()->update();
    RevealColumn(column);
}

void GameTable::MoveFocusColumn(bool right) {
    const QHeaderView& header = *horizontalHeader();
    const int place = header.visualIndex(static_cast<int>(FocusColumn())) + (right ? 1 : -1);
    if (place < 0 || place >= header.count()) return;
    SetFocusColumn(static_cast<ListColumn>(header.logicalIndex(place)));
}

void GameTable::FitNumbers() {
    const int number = static_cast<int>(ListColumn::kNumber);
    const int needed = painter_.NumberWidth(*this);
    if (columnWidth(number) < needed) setColumnWidth(number, needed);
}

void GameTable::SetEmptyNote(const QString& note) {
    if (note == emptyNote_) return;
    emptyNote_ = note;
    setAccessibleDescription(note);
    viewport()->update();
}

void GameTable::Deselect() {
    anchor_ = 0;
    setCurrentIndex({});
    clearSelection();
}

void GameTable::RevealRow(int viewRow) {
    if (viewRow >= model_.rowCount()) return;
    updateGeometries();
    const int height = rowHeight(viewRow);
    const int top = viewRow * height;
    QScrollBar& bar = *verticalScrollBar();
    const int highest = top + height - viewport()->height();
    bar.setValue(std::min(top, std::max(highest, bar.value())));
}

void GameTable::RevealColumn(ListColumn column) {
    const int number = static_cast<int>(column);
    const int left = horizontalHeader()->sectionPosition(number);
    QScrollBar& bar = *horizontalScrollBar();
    const int highest = left + columnWidth(number) - viewport()->width();
    bar.setValue(std::min(left, std::max(highest, bar.value())));
}

int GameTable::RowsPerPage() const {
    return std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
}

QRect GameTable::CellRect(std::optional<int> viewRow, ListColumn column) const {
    if (!viewRow) return {};
    return visualRect(model_.index(*viewRow, static_cast<int>(column)));
}

QString GameTable::TipAt(const QModelIndex& index) const {
    const GameEntry* entry = model_.EntryAt(index.row());
    if (!index.isValid() || entry == nullptr) return {};
    const auto column = static_cast<ListColumn>(index.column());
    QString tip = CellTip(model_, index.row(), column);
    if (tip.isEmpty()) {
        const QString text = model_.data(index, Qt::DisplayRole).toString();
        const int room = painter_.TextPlace(visualRect(index), index, fontMetrics()).width();
        if (fontMetrics().horizontalAdvance(text) > room) tip = text;
    }
    // Names may look like markup; and only markup is wrapped.
    return tip.isEmpty()
               ? tip
               : QStringLiteral("<qt>%1</qt>")
                     .arg(tip.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")));
}

bool GameTable::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    QToolTip::showText(help->globalPos(), TipAt(index), viewport(), visualRect(index));
    return true;
}

void GameTable::PaintFocus(QPainter& painter) const {
    const QRect cell = visualRect(currentIndex());
    QRect row = cell;
    row.setLeft(-horizontalHeader()->offset());
    row.setWidth(horizontalHeader()->length() - 1);
    const GameEntry* entry = model_.EntryAt(currentIndex().row());
    painter.setPen(
        painter_.Colors().Text({.checked = entry != nullptr && entry->checked, .selected = true}));
    painter.drawRect(row.adjusted(0, 0, -1, -1));
    painter.drawRect(cell.adjusted(1, 1, -2, -2));
}

void GameTable::PaintEmptyNote(QPainter& painter) const {
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * kNoteSize);
    painter.setFont(large);
    painter.setPen(palette().color(QPalette::Text));
    const QRect room = viewport()->rect().adjusted(kNoteMargin, 0, -kNoteMargin, 0);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, emptyNote_);
}

void GameTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    if (hasFocus() && currentIndex().isValid()) PaintFocus(painter);
    if (gap_) {
        const int line = *gap_ * verticalHeader()->defaultSectionSize() -
                         verticalScrollBar()->value() - kGapLine / 2 - 1;
        painter.fillRect(0, std::max(0, line), viewport()->width(), kGapLine,
                         palette().color(QPalette::Highlight));
    }
    if (model_.rowCount() == 0) PaintEmptyNote(painter);
    if (dropping_) {
        painter.setPen(QPen(AccentColor(), 2 * kDropFrame));
        painter.drawRect(viewport()->rect());
    }
}

void GameTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    emit CellsMoved();
}

void GameTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    switch (event->type()) {
        case QEvent::FontChange:
        case QEvent::StyleChange:
            FitRows();
            [[fallthrough]];
        case QEvent::PaletteChange:
        case QEvent::ThemeChange:
            painter_.RenewLook();
            viewport()->update();
            break;
        default:
            break;
    }
}

void GameTable::ShowGap(std::optional<int> viewRow) {
    if (gap_ == viewRow) return;
    gap_ = viewRow;
    viewport()->update();
}

void GameTable::ShowDropFrame(bool shown) {
    dropping_ = shown;
    viewport()->update();
}

}  // namespace bw
