// The table of the list: geometry, the highlighted rows, tooltips. What clicks and keys
// do is said in list_input.h.
#pragma once

#include <QTableView>
#include <optional>
#include <vector>

#include "shell/list/game_list_model.h"
#include "shell/list/row_painter.h"

namespace bw {

// Any rows are highlighted; the one with the keyboard is the selected one. Its place among the rows
// stays when their order changes.
class GameTable : public QTableView {
    Q_OBJECT
  public:
    // `model` must live longer.
    explicit GameTable(GameListModel& model, QWidget* parent = nullptr);
    ~GameTable() override;

    // Of the selected row; the column is the keyboard's.
    std::optional<int> SelectedRow() const;
    ListColumn FocusColumn() const;
    void SetFocusColumn(ListColumn column);

    // In rising order.
    std::vector<int> HighlightedRows() const;
    bool IsHighlighted(int viewRow) const;
    // This row alone.
    void SelectRow(int viewRow);
    // All from one to the other, which becomes the selected one.
    void SelectRange(int from, int to);
    // From the row that was selected last by itself.
    void ExtendTo(int viewRow) { SelectRange(anchor_, viewRow); }
    // One more.
    void AddRow(int viewRow);
    // To the column at the right of it, or at the left.
    void MoveFocusColumn(bool right);
    void Deselect();

    // A line above this row, or below the last one; or none.
    void ShowGap(std::optional<int> viewRow);
    // A frame that says that files can be dropped here.
    void ShowDropFrame(bool shown);

    // Scrolls no further than it takes.
    void RevealRow(int viewRow);
    void RevealColumn(ListColumn column);
    // Makes the first column as wide as its numbers need.
    void FitNumbers();
    int RowsPerPage() const;
    // What stands in place of rows where there are none.
    void SetEmptyNote(const QString& note);
    // On the viewport, whether in view or not; empty for a row that isn't shown.
    QRect CellRect(std::optional<int> viewRow, ListColumn column) const;

  signals:
    // The cells have other places on the viewport now.
    void CellsMoved();

  protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void SetUpHeaders();
    void FitRows();
    QString TipAt(const QModelIndex& index) const;
    void PaintFocus(QPainter& painter) const;
    void PaintEmptyNote(QPainter& painter) const;

    GameListModel& model_;
    RowPainter painter_;
    int anchor_ = 0;
    std::optional<int> gap_;
    QString emptyNote_;
    bool dropping_ = false;
};

}  // namespace bw
