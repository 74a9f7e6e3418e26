// A file manager in the least form: a square at the place given, out of which the mouse drags
// files.
//   drag_source X Y FILE...
#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

namespace {

struct Source : QLabel {
    QList<QUrl> files;

    void mouseMoveEvent(QMouseEvent* event) override {
        if ((event->buttons() & Qt::LeftButton) == 0) return;
        auto* drag = new QDrag(this);  // Qt deletes it when the drop is done
        auto* urls = new QMimeData;
        urls->setUrls(files);
        drag->setMimeData(urls);
        drag->exec(Qt::CopyAction);
    }
};

}  // namespace

int main(int count, char** words) {
    const QApplication application(count, words);
    const QStringList given = QApplication::arguments();
    Source source;
    for (const QString& file : given.mid(3))
        source.files.append(QUrl::fromLocalFile(file));
    // Not the window manager's: it stays where it was put.
    source.setWindowFlag(Qt::X11BypassWindowManagerHint);
    source.setText("files");
    source.setWindowTitle("files to drag");
    source.setGeometry(given.value(1).toInt(), given.value(2).toInt(), 60, 60);
    source.show();
    return QApplication::exec();
}
