// The line in which a name or a remark is edited in its place.
#pragma once

#include <QLineEdit>

#include "list/list_columns.h"

namespace bw {

// A child of the list's viewport, normally hidden. It only knows its text and when it ends: on Tab,
// Escape and Return, all of which take the text, and on a press elsewhere in the window.
class CellEditor : public QLineEdit {
    Q_OBJECT
  public:
    explicit CellEditor(QWidget* viewport);

    // Fills the editor with the whole text selected; Place shows it.
    void Begin(const QString& text);
    // At this rectangle of the viewport, with the focus; or hidden while it lies out of view.
    void Place(const QRect& cell);
    // Hides the editor; what it was in the middle of is over.
    void Close();
    // The same, and announces it.
    void End();

  signals:
    void Ended();

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Hide();
};

}  // namespace bw
