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

#include <unistd.h>

namespace {

// The test has put its end of the conversation here.
constexpr int kDescriptor = 3;

QString Escaped(QString text) {
    return text.replace('\\', "\\\\").replace('\t', "\\t").replace('\n', "\\n");
}

// One line for each thing that shows, parts below their whole.
class Describer {
  public:
    QByteArray All() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible()) Widget(*window, 0);
        return text_.toUtf8() + ".\n";
    }

  private:
    void Line(int depth, const QString& type, const QString& id, const QString& name,
              const QString& value, const QRect& place, const QString& states) {
        QTextStream(&text_) << depth << '\t' << type << '\t' << Escaped(id) << '\t' << Escaped(name)
                            << '\t' << Escaped(value) << '\t' << place.x() << '\t' << place.y()
                            << '\t' << place.width() << '\t' << place.height() << '\t' << states
                            << '\n';
    }

    void Widget(QWidget& widget, int depth) {
        const auto* seen = QAccessible::queryAccessibleInterface(&widget);
        Line(depth, widget.metaObject()->className(), widget.objectName(),
             seen != nullptr ? seen->text(QAccessible::Name) : QString(), Value(widget),
             QRect(widget.mapToGlobal(QPoint()), widget.size()), States(widget));
        if (const auto* menu = qobject_cast<QMenu*>(&widget)) Actions(*menu, depth + 1);
        if (const auto* bar = qobject_cast<QMenuBar*>(&widget)) Actions(*bar, depth + 1);
        if (auto* header = qobject_cast<QHeaderView*>(&widget)) return Header(*header, depth + 1);
        if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) Rows(*view, depth + 1);
        for (QObject* child : widget.children())
            if (auto* part = qobject_cast<QWidget*>(child); part != nullptr && part->isVisible())
                if (!part->isWindow()) Widget(*part, depth + 1);
    }

    static QString Value(const QWidget& widget) {
        if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget))
            return view->model() != nullptr
                       ? QString::number(view->model()->rowCount(view->rootIndex()))
                       : "0";
        for (const char* property : {"text", "plainText", "currentText", "windowTitle"})
            if (const QVariant value = widget.property(property); value.isValid())
                return value.toString();
        return {};
    }

    static QString States(const QWidget& widget) {
        QString states;
        if (widget.isEnabled()) states += 'e';
        if (widget.hasFocus()) states += 'f';
        if (widget.isWindow() && widget.isActiveWindow()) states += 'a';
        if (widget.isMaximized()) states += 'm';
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        if (button != nullptr && button->isChecked()) states += 'c';
        return states;
    }

    template <typename Menu>
    void Actions(const Menu& menu, int depth) {
        for (QAction* action : menu.actions()) {
            if (!action->isVisible() || action->isSeparator()) continue;
            const QRect place = menu.actionGeometry(action);
            Line(depth, "action", action->objectName(), action->text(), {},
                 QRect(menu.mapToGlobal(place.topLeft()), place.size()),
                 QString(action->isEnabled() ? "e" : "") + (action->isChecked() ? "c" : ""));
        }
    }

    void Header(QHeaderView& header, int depth) {
        if (header.orientation() != Qt::Horizontal || header.model() == nullptr) return;
        for (int section = 0; section < header.count(); ++section) {
            const QPoint corner(header.sectionViewportPosition(section), 0);
            Line(depth, "header", QString::number(section),
                 header.model()->headerData(section, Qt::Horizontal).toString(), {},
                 QRect(header.viewport()->mapToGlobal(corner),
                       QSize(header.sectionSize(section), header.height())),
                 "e");
        }
    }

    // The cells in sight: a list may have twenty thousand rows.
    void Rows(QAbstractItemView& view, int depth) {
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
                QString states = "e";
                if (cell.data(Qt::CheckStateRole).toInt() == Qt::Checked) states += 'c';
                if (view.selectionModel()->isSelected(cell)) states += 's';
                Line(depth, "cell", QString("%1,%2").arg(row).arg(column), cell.data().toString(),
                     {}, QRect(view.viewport()->mapToGlobal(place.topLeft()), place.size()),
                     states);
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

class ProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "probe_plugin.json")
  public:
    QObject* create(const QString&, const QString&) override { return new Probe; }
};

}  // namespace

#include "probe_plugin.moc"
