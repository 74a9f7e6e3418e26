// What the mouse and the keys do in the table of the list.
//
// Mouse: a click selects the row, in the check square it flips the check; with Ctrl it checks the
// row, with Shift all rows from the row last clicked; what they check they highlight too. Rows that
// are pulled go where they are let go; in the column of numbers pulling highlights. Double clicks
// open names and remarks for editing, show the folder of a path, and flip the check on a number.
// Keys: arrows, Page, Home and End move; with Shift they check what they pass, with Ctrl they leave
// the start of such a run where it is. Space flips the check of what is highlighted, Shift+Space
// checks the run up to the row, Del takes the highlighted rows out, Ctrl+Space is a click on the
// title of the framed cell's column. F2 edits the name, Shift+F2 the remark. Typed letters find the
// next name that begins with them.
#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>

#include "shell/list/game_table.h"
#include "shell/list/row_drag.h"

namespace bw {

// Watches the table's and its viewport's events. The three must live longer.
class ListInput : public QObject {
    Q_OBJECT
  public:
    ListInput(GameTable& table, GameListModel& model, ListEditor& editor);

  signals:
    void EditWanted(int viewRow, bw::ListColumn column);
    void SortWanted(bw::ListColumn column);
    void FolderWanted(int viewRow, bool select);
    void ContextMenuWanted(const QPoint& place);
    // The highlighted rows are to go before this row of the list; are to be taken out.
    void PlaceWanted(size_t before);
    void RemoveWanted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool OnMouse(const QMouseEvent& mouse);
    void OnPress(int viewRow, const QPoint& place, Qt::KeyboardModifiers modifiers);
    void OnRelease(const QMouseEvent& mouse);
    void Drop(int viewRow);
    bool OnKey(const QKeyEvent& key);
    bool OnMoveKey(const QKeyEvent& key);
    bool OnText(const QKeyEvent& key);
    void OnSpace(Qt::KeyboardModifiers modifiers);
    void OnContextMenu(const QPoint& place, bool byKeyboard);
    void Click(int viewRow, const RowClick& click, bool keepHighlight = false);
    void DoubleClick(int viewRow, const QPoint& place, bool ctrl);
    void MoveTo(int viewRow, Qt::KeyboardModifiers modifiers);
    void ShowMenuAtRow();
    void CopyRow() const;
    bool InCheckSquare(int viewRow, const QPoint& place) const;

    GameTable& table_;
    GameListModel& model_;
    ListEditor& editor_;
    RowDrag drag_;
    std::u16string typed_;
    QElapsedTimer sinceTyped_;
};

}  // namespace bw
