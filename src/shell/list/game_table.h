// The table of the list: geometry, the selected row, tooltips, dropped files. What clicks and keys
// do is said in list_input.h.
#pragma once

#include <QTableView>
#include <optional>

#include "shell/list/game_list_model.h"
#include "shell/list/row_painter.h"

namespace bw {

// One row is selected or none; its place among the rows stays when their order changes.
class GameTable : public QTableView {
    Q_OBJECT
  public:
    // `model` must live longer.
    explicit GameTable(GameListModel& model, QWidget* parent = nullptr);
    ~GameTable() override;

    // Of the selected row; the column is the keyboard's.
    std::optional<int> SelectedRow() const;
    ListColumn FocusColumn() const;
    void SelectRow(int viewRow);
    void SetFocusColumn(ListColumn column);
    void Deselect();

    // Scrolls no further than it takes.
    void RevealRow(int viewRow);
    void RevealColumn(ListColumn column);
    int RowsPerPage() const;
    // On the viewport, whether in view or not; empty for a row that isn't shown.
    QRect CellRect(std::optional<int> viewRow, ListColumn column) const;

  signals:
    // The cells have other places on the viewport now.
    void CellsMoved();
    void FilesDropped(const QStringList& files);

  protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void SetUpHeaders();
    void FitRows();
    QString TipAt(const QModelIndex& index) const;
    void PaintFocus(QPainter& painter) const;

    GameListModel& model_;
    RowPainter painter_;
    bool dropping_ = false;
};

}  // namespace bw
