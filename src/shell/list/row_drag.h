// Rows that are pulled with the mouse: to another place in the list or, in the column of numbers,
// over the rows that are to be highlighted.
#pragma once

#include <QObject>
#include <QPoint>
#include <QTimer>

#include "shell/list/game_table.h"

namespace bw {

class RowDrag : public QObject {
    Q_OBJECT
  public:
    // `table` must live longer.
    explicit RowDrag(GameTable& table);

    // The left button on a row; places are on the viewport.
    void Press(int viewRow, const QPoint& place);
    void Move(const QPoint& place);
    // True if rows were pulled, so that press and release were no click.
    bool Release();
    // The rows stay where they are; false if none were being pulled.
    bool Cancel();

  signals:
    // The highlighted rows are to go before this one; behind the last one if that is the number of
    // rows.
    void Dropped(int viewRow);

  private:
    enum class State { kNone, kPressed, kPlacing, kHighlighting };
    void Follow();
    // Scrolls while the mouse is held above or below the rows.
    void Scroll();
    int RowAt(const QPoint& place) const;
    int GapAt(const QPoint& place) const;
    void End();

    GameTable& table_;
    State state_ = State::kNone;
    int row_ = 0;
    QPoint pressed_;
    QPoint place_;
    QTimer scroll_;
};

}  // namespace bw
