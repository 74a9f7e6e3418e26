// Local files that are dropped on a window, wherever in it.
#pragma once

#include <QObject>
#include <QStringList>
#include <QWidget>

class QDropEvent;

namespace bw {

class FileDrop : public QObject {
    Q_OBJECT
  public:
    // `window` must live longer.
    explicit FileDrop(QWidget& window);
    // A control of the window that takes drops of its own, such as an edit box its texts: files
    // that are dropped on it count as the window's.
    void Watch(QWidget& control);

  signals:
    void Hovering(bool over);
    void Dropped(const QStringList& files);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool Take(QDropEvent& event);
};

}  // namespace bw
