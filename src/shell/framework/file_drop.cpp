#include "shell/framework/file_drop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace bw {
namespace {

QStringList LocalFiles(const QMimeData* data) {
    QStringList files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile()) files.append(url.toLocalFile());
    }
    return files;
}

}  // namespace

FileDrop::FileDrop(QWidget& window) {
    window.setAcceptDrops(true);
    Watch(window);
}

void FileDrop::Watch(QWidget& control) {
    control.installEventFilter(this);
}

bool FileDrop::Take(QDropEvent& event) {
    if (LocalFiles(event.mimeData()).isEmpty()) return false;
    event.accept();
    // Whatever the source would like best, the files stay where they are.
    event.setDropAction(Qt::CopyAction);
    return true;
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
            if (!Take(*static_cast<QDropEvent*>(event))) break;
            emit Hovering(true);
            return true;
        case QEvent::DragMove:
            if (!Take(*static_cast<QDropEvent*>(event))) break;
            return true;
        case QEvent::DragLeave:
            emit Hovering(false);
            break;
        case QEvent::Drop: {
            auto& drop = *static_cast<QDropEvent*>(event);
            if (!Take(drop)) break;
            emit Hovering(false);
            emit Dropped(LocalFiles(drop.mimeData()));
            return true;
        }
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace bw
