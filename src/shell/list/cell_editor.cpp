#include "shell/list/cell_editor.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "list/list_editor.h"

namespace bw {
namespace {

bool EndsEditing(const QKeyEvent& key) {
    switch (key.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Escape:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return true;
        default:
            return false;
    }
}

}  // namespace

CellEditor::CellEditor(QWidget* viewport) : QLineEdit(viewport) {
    setObjectName(QStringLiteral("cellEditor"));
    setMaxLength(static_cast<int>(kCellTextLimit));
    setFrame(false);
    setAutoFillBackground(true);
    hide();
}

void CellEditor::Begin(const QString& text) {
    setText(text);
    // The whole text, from its end, so that a long one shows its beginning.
    const auto length = static_cast<int>(this->text().size());
    setSelection(length, -length);
    // Presses count wherever in the window they go.
    qApp->installEventFilter(this);
}

void CellEditor::Place(const QRect& cell) {
    if (!cell.intersects(parentWidget()->rect())) {
        Hide();
        return;
    }
    setGeometry(cell);
    if (isVisible()) return;
    show();
    setFocus();
}

void CellEditor::Hide() {
    if (hasFocus()) parentWidget()->parentWidget()->setFocus();
    hide();
}

void CellEditor::Close() {
    qApp->removeEventFilter(this);
    Hide();
}

void CellEditor::End() {
    Close();
    emit Ended();
}

bool CellEditor::event(QEvent* event) {
    const bool keys =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!keys || !EndsEditing(*static_cast<QKeyEvent*>(event))) return QLineEdit::event(event);
    event->accept();
    if (event->type() == QEvent::KeyPress) End();
    return true;
}

bool CellEditor::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::NonClientAreaMouseButtonPress:
            break;
        default:
            return false;
    }
    // The editor's own menu is a window of its own.
    const auto* widget = qobject_cast<QWidget*>(watched);
    const bool elsewhere = widget != nullptr && widget != this && widget->window() == window();
    if (elsewhere && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) End();
    return false;
}

}  // namespace bw
