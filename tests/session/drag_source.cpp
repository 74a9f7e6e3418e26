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

constexpr int kSide = 60;

class Source : public QLabel {
  public:
    explicit Source(QList<QUrl> files) : files_(std::move(files)) {
        // Not the window manager's: it stays where it was put.
        setWindowFlag(Qt::X11BypassWindowManagerHint);
    }

  protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if ((event->buttons() & Qt::LeftButton) == 0) return;
        auto* drag = new QDrag(this);  // Qt deletes it when the drop is done
        auto* urls = new QMimeData;
        urls->setUrls(files_);
        drag->setMimeData(urls);
        drag->exec(Qt::CopyAction);
    }

  private:
    QList<QUrl> files_;
};

}  // namespace

int main(int count, char** words) {
    const QApplication application(count, words);
    const QStringList given = QApplication::arguments();
    QList<QUrl> files;
    for (const QString& file : given.mid(3))
        files.append(QUrl::fromLocalFile(file));
    Source source(std::move(files));
    source.setText("files");
    source.setWindowTitle("files to drag");
    source.setGeometry(given.value(1).toInt(), given.value(2).toInt(), kSide, kSide);
    source.show();
    return QApplication::exec();
}
