#include "designer/window/design_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>
#include <memory>

#include "designer/tools/text_tools.h"
#include "designer/window/draw_control.h"

namespace bw {
namespace {

bool IsUndo(const QKeyEvent& key) {
    return key.key() == Qt::Key_Z && key.modifiers() == Qt::ControlModifier;
}

bool IsRedo(const QKeyEvent& key) {
    return key.key() == Qt::Key_Y && key.modifiers() == Qt::ControlModifier;
}

// What a key would put into an edit box.
bool Types(const QKeyEvent& key) {
    return key.matches(QKeySequence::Paste) ||
           (!key.text().isEmpty() && key.text().at(0).isPrint());
}

}  // namespace

DesignKeys::DesignKeys(QWidget& window, Actions actions)
    : window_(window), actions_(std::move(actions)) {
    qApp->installEventFilter(this);
}

DesignKeys::~DesignKeys() {
    qApp->removeEventFilter(this);
}

void DesignKeys::LimitText(QLineEdit& edit) {
    limited_.push_back(&edit);
    // What comes otherwise than by keys, such as by a menu or an input method: cut to the same
    // length, but never shorter than what was there.
    const auto before = std::make_shared<qsizetype>(edit.text().size());
    connect(&edit, &QLineEdit::textEdited, this, [&edit, before](const QString& text) {
        const qsizetype most = std::max(static_cast<qsizetype>(kLongestCaption), *before);
        if (text.size() > most) edit.setText(text.left(most));
    });
    // Told after the other.
    connect(&edit, &QLineEdit::textChanged, this,
            [before](const QString& text) { *before = text.size(); });
}

// A key event passes through the focus widget and then, unless taken, through those around it.
bool DesignKeys::Ours(const QObject* watched) const {
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr) return watched == &window_;
    return watched == focus && (focus->window() == &window_ || window_.isAncestorOf(focus));
}

bool DesignKeys::Swallowed(const QLineEdit& edit, const QKeyEvent& key) const {
    return std::ranges::find(limited_, &edit) != limited_.end() && Types(key) &&
           edit.text().size() >= static_cast<qsizetype>(kLongestCaption);
}

bool DesignKeys::KeyDown(QObject* watched, const QKeyEvent& key) {
    if (IsUndo(key) || IsRedo(key)) {
        (IsUndo(key) ? actions_.undo : actions_.redo)();
        return true;
    }
    if (watched == independent_) return false;
    switch (key.key()) {
        case Qt::Key_Escape:
            actions_.close();
            return true;
        case Qt::Key_Delete:
            // An edit box removes its character as well.
            actions_.remove();
            return false;
        case Qt::Key_Shift:
            if (!key.isAutoRepeat()) actions_.shiftDown();
            return false;
        default:
            break;
    }
    if (const auto* edit = qobject_cast<QLineEdit*>(watched)) return Swallowed(*edit, key);
    if (dynamic_cast<CWindowDraw*>(watched) == nullptr) return false;
    const bool shift = key.modifiers().testFlag(Qt::ShiftModifier);
    switch (key.key()) {
        case Qt::Key_Left:
            actions_.move(-1, 0, shift);
            return true;
        case Qt::Key_Right:
            actions_.move(1, 0, shift);
            return true;
        case Qt::Key_Up:
            actions_.move(0, -1, shift);
            return true;
        case Qt::Key_Down:
            actions_.move(0, 1, shift);
            return true;
        default:
            return false;
    }
}

bool DesignKeys::eventFilter(QObject* watched, QEvent* event) {
    // Events of the queues between threads are looked at by those alone, under their lock.
    if (!watched->isWidgetType()) return false;
    switch (event->type()) {
        case QEvent::ShortcutOverride:
            // An edit box would take undo and redo for itself.
            if (Ours(watched)) {
                auto& key = static_cast<QKeyEvent&>(*event);
                if (IsUndo(key) || IsRedo(key)) {
                    key.accept();
                    return true;
                }
            }
            return false;
        case QEvent::KeyPress:
            return Ours(watched) && KeyDown(watched, static_cast<QKeyEvent&>(*event));
        case QEvent::KeyRelease:
            if (Ours(watched) && static_cast<QKeyEvent&>(*event).key() == Qt::Key_Shift &&
                !static_cast<QKeyEvent&>(*event).isAutoRepeat()) {
                actions_.shiftUp();
            }
            return false;
        case QEvent::WindowDeactivate:
            // Its release may go elsewhere.
            if (watched == &window_) actions_.shiftUp();
            return false;
        default:
            return false;
    }
}

}  // namespace bw
