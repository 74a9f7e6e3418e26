#include "shell/list/list_input.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <algorithm>

#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr Qt::KeyboardModifiers kMeant = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;

}  // namespace

ListInput::ListInput(GameTable& table, GameListModel& model, ListEditor& editor)
    : table_(table), model_(model), editor_(editor), drag_(table) {
    connect(&drag_, &RowDrag::Dropped, this, [this](int viewRow) { Drop(viewRow); });
    table_.installEventFilter(this);
    table_.viewport()->installEventFilter(this);
}

bool ListInput::eventFilter(QObject* watched, QEvent* event) {
    const bool onViewport = watched == table_.viewport();
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return onViewport && OnMouse(*static_cast<QMouseEvent*>(event));
        case QEvent::MouseButtonRelease:
            if (onViewport) OnRelease(*static_cast<QMouseEvent*>(event));
            return onViewport;
        case QEvent::MouseMove: {
            const auto& mouse = *static_cast<QMouseEvent*>(event);
            if (!onViewport || mouse.buttons() == Qt::NoButton) return false;
            if (mouse.buttons() == Qt::LeftButton) drag_.Move(mouse.position().toPoint());
            return true;
        }
        case QEvent::ShortcutOverride: {
            // Without highlighted rows the key is the window's, which takes the checked ones.
            const auto& key = *static_cast<QKeyEvent*>(event);
            const bool takesRows = key.key() == Qt::Key_Delete && (key.modifiers() & kMeant) == 0 &&
                                   table_.selectionModel()->hasSelection();
            if (!onViewport && takesRows) event->accept();
            return !onViewport && takesRows;
        }
        case QEvent::KeyPress:
            return !onViewport && OnKey(*static_cast<QKeyEvent*>(event));
        case QEvent::ContextMenu: {
            const auto* menu = static_cast<QContextMenuEvent*>(event);
            OnContextMenu(menu->globalPos(), menu->reason() == QContextMenuEvent::Keyboard);
            return true;
        }
        default:
            return false;
    }
}

bool ListInput::InCheckSquare(int viewRow, const QPoint& place) const {
    const QRect cell = table_.CellRect(viewRow, ListColumn::kNumber);
    return place.x() >= cell.left() && place.x() < cell.left() + table_.rowHeight(viewRow);
}

bool ListInput::OnMouse(const QMouseEvent& mouse) {
    const QPoint place = mouse.position().toPoint();
    const QModelIndex index = table_.indexAt(place);
    if (!index.isValid()) return true;
    const int row = index.row();
    const bool ctrl = mouse.modifiers().testFlag(Qt::ControlModifier);
    if (mouse.button() == Qt::RightButton) {
        // Among several the menu is about all of them.
        const bool several = table_.IsHighlighted(row);
        if (several) table_.AddRow(row);
        Click(row, {}, several);
    } else if (mouse.button() == Qt::LeftButton) {
        if (mouse.type() == QEvent::MouseButtonDblClick) {
            DoubleClick(row, place, ctrl);
        } else {
            OnPress(row, place, mouse.modifiers());
        }
    }
    return true;
}

void ListInput::OnPress(int viewRow, const QPoint& place, Qt::KeyboardModifiers modifiers) {
    const RowClick click{.shift = modifiers.testFlag(Qt::ShiftModifier),
                         .ctrl = modifiers.testFlag(Qt::ControlModifier),
                         .inCheckSquare = InCheckSquare(viewRow, place)};
    const bool plain = !click.shift && !click.ctrl && !click.inCheckSquare;
    // Several rows stay highlighted, since they may be about to be pulled away.
    Click(viewRow, click, plain && table_.IsHighlighted(viewRow));
    if (plain) drag_.Press(viewRow, place);
}

void ListInput::OnRelease(const QMouseEvent& mouse) {
    if (mouse.button() != Qt::LeftButton || drag_.Release() || mouse.modifiers() != 0) return;
    const QPoint place = mouse.position().toPoint();
    const QModelIndex index = table_.indexAt(place);
    const bool clicked = index.isValid() && !InCheckSquare(index.row(), place);
    if (clicked && table_.IsHighlighted(index.row())) table_.SelectRow(index.row());
}

void ListInput::Drop(int viewRow) {
    const int rows = model_.rowCount();
    emit PlaceWanted(viewRow < rows ? model_.ListRow(viewRow) : model_.ListRow(rows - 1) + 1);
}

void ListInput::Click(int viewRow, const RowClick& click, bool keepHighlight) {
    typed_.clear();
    editor_.Click(model_.ListRow(viewRow), click, model_.ShownRows());
    if (keepHighlight) return;
    if (click.shift) {
        table_.ExtendTo(viewRow);
    } else if (click.ctrl) {
        table_.AddRow(viewRow);
    } else {
        table_.SelectRow(viewRow);
    }
}

void ListInput::DoubleClick(int viewRow, const QPoint& place, bool ctrl) {
    const auto column = static_cast<ListColumn>(table_.columnAt(place.x()));
    if (ctrl && column != ListColumn::kPath) return;
    table_.SelectRow(viewRow);
    editor_.SetFindRow(model_.ListRow(viewRow));
    switch (column) {
        case ListColumn::kName:
        case ListColumn::kRemark:
            emit EditWanted(viewRow, column);
            break;
        case ListColumn::kPath:
            emit FolderWanted(viewRow, ctrl);
            break;
        case ListColumn::kNumber:
            // In the square itself the first of the two clicks has flipped it; the second one of a
            // quick pair is lost, which is meant.
            if (!InCheckSquare(viewRow, place)) Click(viewRow, {.inCheckSquare = true});
            break;
        default:
            break;
    }
}

bool ListInput::OnKey(const QKeyEvent& key) {
    const Qt::KeyboardModifiers modifiers = key.modifiers() & kMeant;
    if (modifiers.testFlag(Qt::AltModifier)) return false;
    if (key.matches(QKeySequence::Copy)) {
        CopyRow();
        return true;
    }
    if (OnMoveKey(key) || OnText(key)) return true;
    const std::optional<int> row = table_.SelectedRow();
    const bool plainOrShift = (modifiers & ~Qt::ShiftModifier) == 0;
    if (key.key() == Qt::Key_Space) {
        OnSpace(modifiers);
    } else if (key.key() == Qt::Key_F2 && plainOrShift) {
        if (row) emit EditWanted(*row, modifiers == 0 ? ListColumn::kName : ListColumn::kRemark);
    } else if (key.key() == Qt::Key_Delete && modifiers == 0) {
        if (!table_.selectionModel()->hasSelection()) return false;
        emit RemoveWanted();
    } else if (key.key() == Qt::Key_Escape) {
        return drag_.Cancel();
    } else if (key.key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier) {
        ShowMenuAtRow();
    } else {
        return false;
    }
    return true;
}

bool ListInput::OnMoveKey(const QKeyEvent& key) {
    const int last = model_.rowCount() - 1;
    const std::optional<int> selected = table_.SelectedRow();
    // From nowhere the first step goes to an end of the list.
    const auto step = [&](int rows) {
        if (!selected) return rows > 0 ? 0 : last;
        return std::clamp(*selected + rows, 0, last);
    };
    switch (key.key()) {
        case Qt::Key_Up:
            MoveTo(step(-1), key.modifiers());
            break;
        case Qt::Key_Down:
            MoveTo(step(1), key.modifiers());
            break;
        case Qt::Key_PageUp:
            MoveTo(step(-table_.RowsPerPage()), key.modifiers());
            break;
        case Qt::Key_PageDown:
            MoveTo(step(table_.RowsPerPage()), key.modifiers());
            break;
        case Qt::Key_Home:
            MoveTo(0, key.modifiers());
            break;
        case Qt::Key_End:
            MoveTo(last, key.modifiers());
            break;
        case Qt::Key_Left:
            table_.MoveFocusColumn(false);
            break;
        case Qt::Key_Right:
            table_.MoveFocusColumn(true);
            break;
        default:
            return false;
    }
    return true;
}

void ListInput::MoveTo(int viewRow, Qt::KeyboardModifiers modifiers) {
    if (viewRow < 0 || viewRow >= model_.rowCount()) return;
    if (modifiers.testFlag(Qt::ControlModifier)) {
        table_.SelectRow(viewRow);
    } else {
        Click(viewRow, {.shift = modifiers.testFlag(Qt::ShiftModifier)});
    }
    table_.RevealRow(viewRow);
}

void ListInput::OnSpace(Qt::KeyboardModifiers modifiers) {
    const std::optional<int> row = table_.SelectedRow();
    if (modifiers.testFlag(Qt::ControlModifier)) {
        emit SortWanted(table_.FocusColumn());
    } else if (const auto rows = table_.HighlightedRows(); rows.size() > 1 && modifiers == 0) {
        const bool check = !model_.EntryAt(*row)->checked;
        std::vector<uint32_t> listRows;
        for (const int highlighted : rows)
            listRows.push_back(static_cast<uint32_t>(model_.ListRow(highlighted)));
        editor_.CheckExactly([check](const GameEntry&) { return check; }, listRows);
    } else if (row) {
        Click(*row, {.shift = modifiers.testFlag(Qt::ShiftModifier), .inCheckSquare = true});
        table_.RevealRow(*row);
    }
}

bool ListInput::OnText(const QKeyEvent& key) {
    const bool plain = (key.modifiers() & Qt::ControlModifier) == 0;
    const QString text = key.text();
    if (!plain || text.isEmpty() || !text.front().isPrint()) return false;
    const bool goesOn = !typed_.empty() && sinceTyped_.isValid() &&
                        sinceTyped_.elapsed() < QApplication::keyboardInputInterval();
    if (!goesOn && key.key() == Qt::Key_Space) return false;
    if (!goesOn) typed_.clear();
    typed_ += FromQt(text);
    sinceTyped_.start();

    // A new word is looked for behind the row, so that the same letter again goes to the next
    // game; there is no way round from the end to the top.
    const std::optional<int> selected = table_.SelectedRow();
    size_t start = selected ? model_.ListRow(*selected) + (goesOn ? 0 : 1) : 0;
    while (const std::optional<size_t> found = editor_.FindPrefix(typed_, start)) {
        if (const std::optional<int> row = model_.ViewRow(*found)) {
            table_.SelectRow(*row);
            editor_.SetFindRow(*found);
            table_.RevealRow(*row);
            break;
        }
        start = *found + 1;
    }
    return true;
}

void ListInput::CopyRow() const {
    const std::optional<int> row = table_.SelectedRow();
    const GameEntry* entry = row ? model_.EntryAt(*row) : nullptr;
    if (entry == nullptr) return;
    // As spreadsheets take it.
    QApplication::clipboard()->setText(ToQt(entry->name) + QLatin1Char('\t') + ToQt(entry->path));
}

void ListInput::OnContextMenu(const QPoint& place, bool byKeyboard) {
    if (byKeyboard) {
        ShowMenuAtRow();
    } else {
        emit ContextMenuWanted(place);
    }
}

void ListInput::ShowMenuAtRow() {
    const std::optional<int> row = table_.SelectedRow();
    if (row) table_.RevealRow(*row);
    const QRect view = table_.viewport()->rect();
    const QRect cell = row ? table_.CellRect(row, ListColumn::kName) & view : view;
    emit ContextMenuWanted(
        table_.viewport()->mapToGlobal(cell.isEmpty() ? view.center() : cell.center()));
}

}  // namespace bw
