// Qt loads this plugin into the program under test, which knows nothing of it: a way to ask where
// things are on the screen and what they say. It only looks; whatever happens to the program comes
// from the mouse, the keys and other programs.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QGenericPlugin>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QSocketNotifier>
#include <QTextStream>

#include <sys/socket.h>
#include <unistd.h>

namespace {

// The test has put its end of the conversation here.
constexpr int kDescriptor = 3;

// One line for each thing that shows, parts below their whole.
class Describer {
  public:
    QByteArray All() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible()) Widget(*window);
        return text_.toUtf8() + ".\n";
    }

  private:
    // `place` is `on`'s own.
    void Line(const QString& type, const QString& id, const QString& name, const QString& value,
              const QWidget& on, const QRect& place, const QString& states) {
        QTextStream line(&text_);
        for (QString field : {type, id, name, value})
            line << field.replace('\t', ' ').replace('\n', ' ') << '\t';
        const QPoint corner = on.mapToGlobal(place.topLeft());
        for (const int number : {corner.x(), corner.y(), place.width(), place.height()})
            line << number << '\t';
        line << states << '\n';
    }

    void Widget(QWidget& widget) {
        const auto* seen = QAccessible::queryAccessibleInterface(&widget);
        Line(widget.metaObject()->className(), widget.objectName(),
             seen != nullptr ? seen->text(QAccessible::Name) : QString(), Value(widget), widget,
             widget.rect(), States(widget));
        if (const auto* menu = qobject_cast<QMenu*>(&widget)) Actions(*menu);
        if (const auto* bar = qobject_cast<QMenuBar*>(&widget)) Actions(*bar);
        if (auto* header = qobject_cast<QHeaderView*>(&widget)) return Header(*header);
        if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) Rows(*view);
        for (QObject* child : widget.children())
            if (auto* part = qobject_cast<QWidget*>(child); part != nullptr && part->isVisible())
                if (!part->isWindow()) Widget(*part);
    }

    static QString Value(const QWidget& widget) {
        const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
        if (view != nullptr && view->model() != nullptr)
            return QString::number(view->model()->rowCount(view->rootIndex()));
        for (const char* property : {"text", "plainText", "currentText", "windowTitle"})
            if (const QVariant value = widget.property(property); value.isValid())
                return value.toString();
        return {};
    }

    static QString States(const QWidget& widget) {
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        QString states;
        if (widget.isEnabled()) states += 'e';
        if (widget.hasFocus()) states += 'f';
        if (widget.isWindow() && widget.isActiveWindow()) states += 'a';
        if (widget.isMaximized()) states += 'm';
        if (button != nullptr && button->isChecked()) states += 'c';
        return states;
    }

    template <typename Menu>
    void Actions(const Menu& menu) {
        for (QAction* action : menu.actions()) {
            if (!action->isVisible() || action->isSeparator()) continue;
            Line("action", action->objectName(), action->text(), {}, menu,
                 menu.actionGeometry(action), action->isEnabled() ? "e" : "");
        }
    }

    void Header(const QHeaderView& header) {
        if (header.orientation() != Qt::Horizontal || header.model() == nullptr) return;
        for (int section = 0; section < header.count(); ++section) {
            Line("header", QString::number(section),
                 header.model()->headerData(section, Qt::Horizontal).toString(), {},
                 *header.viewport(),
                 {header.sectionViewportPosition(section), 0, header.sectionSize(section),
                  header.height()},
                 "e");
        }
    }

    // The cells in sight: a list may have twenty thousand rows.
    void Rows(QAbstractItemView& view) {
        const QAbstractItemModel* model = view.model();
        if (model == nullptr) return;
        const QModelIndex root = view.rootIndex();
        const QRect sight = view.viewport()->rect();
        const QModelIndex first = view.indexAt(sight.topLeft());
        for (int row = first.isValid() ? first.row() : 0; row < model->rowCount(root); ++row) {
            for (int column = 0; column < model->columnCount(root); ++column) {
                const QModelIndex cell = model->index(row, column, root);
                const QRect place = view.visualRect(cell);
                if (column == 0 && place.top() > sight.bottom()) return;
                const bool checked = cell.data(Qt::CheckStateRole).toInt() == Qt::Checked;
                Line("cell", QString("%1,%2").arg(row).arg(column), cell.data().toString(), {},
                     *view.viewport(), place, checked ? "ec" : "e");
            }
        }
    }

    QString text_;
};

class Probe : public QObject {
  public:
    Probe() : notifier_(kDescriptor, QSocketNotifier::Read) {
        connect(&notifier_, &QSocketNotifier::activated, this, [this] { Answer(); });
    }

  private:
    void Answer() {
        char question = 0;
        if (read(kDescriptor, &question, 1) != 1) {
            notifier_.setEnabled(false);
            return;
        }
        const QByteArray answer = Describer().All();
        for (qsizetype sent = 0; sent < answer.size();) {
            const ssize_t now = write(kDescriptor, answer.constData() + sent,
                                      static_cast<size_t>(answer.size() - sent));
            if (now <= 0) return;
            sent += now;
        }
    }

    QSocketNotifier notifier_;
};

// Not in a program that the program under test has started: there the number is another file's.
bool BelongsToTheTest() {
    ucred other{};
    socklen_t size = sizeof other;
    return getsockopt(kDescriptor, SOL_SOCKET, SO_PEERCRED, &other, &size) == 0 &&
           other.pid == getppid();
}

class ProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "probe_plugin.json")
  public:
    QObject* create(const QString&, const QString&) override {
        return BelongsToTheTest() ? new Probe : nullptr;
    }
};

}  // namespace

#include "probe_plugin.moc"
