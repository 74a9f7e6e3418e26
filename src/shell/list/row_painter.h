// How a row of the list looks: its colours, the check square, the cells' texts.
#pragma once

#include <QAbstractItemDelegate>
#include <QColor>
#include <array>

#include "shell/list/game_list_model.h"

namespace bw {

// What decides a row's colours.
struct RowState {
    bool checked = false;
    bool selected = false;
    bool odd = false;  // counted from 0
};

// Of the current theme: dark text on light rows, or light text on dark ones of the same hues.
class RowColors {
  public:
    RowColors();
    QColor Background(RowState state) const;
    QColor Text(RowState state) const;

  private:
    bool dark_;
    std::array<QColor, 3> checked_;  // selected, even, odd
    std::array<QColor, 3> unchecked_;
};

class RowPainter : public QAbstractItemDelegate {
  public:
    // `model` must live longer.
    explicit RowPainter(const GameListModel& model) : model_(model) {}

    // After a change of the theme.
    void RenewColors() { colors_ = RowColors(); }
    const RowColors& Colors() const { return colors_; }

    // In pixels, for this font and style.
    static int RowHeight(const QWidget& view);
    // The part of a cell in which its text stands, of any column.
    static QRect TextPlace(const QRect& cell, ListColumn column);
    static Qt::TextElideMode Elision(ListColumn column);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // What the cell needs to show its whole text.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    const GameListModel& model_;
    RowColors colors_;
};

}  // namespace bw
