// How a row of the list looks: its colours, the check square, the cells' texts.
#pragma once

#include <QAbstractItemDelegate>
#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QStaticText>
#include <array>

#include "shell/list/game_list_model.h"
#include "shell/list/text_widths.h"

namespace bw {

// What decides a row's colours.
struct RowState {
    bool checked = false;
    bool selected = false;
    bool odd = false;  // counted from 0
};

// Of the current theme.
class RowColors {
  public:
    RowColors();
    QColor Background(RowState state) const;
    QColor Text(RowState state) const;
    // Of what a row would say if it was checked.
    QColor FaintText(RowState state) const;
    // Of the marks of checked rows, and of the numbers on them.
    const QColor& Mark() const { return mark_; }
    const QColor& MarkText() const { return markText_; }
    // Of a cell that says NO.
    const QColor& NoGround() const { return noGround_; }
    const QColor& NoText() const { return noText_; }

  private:
    bool dark_;
    std::array<QColor, 3> checked_;  // selected, even, odd
    std::array<QColor, 3> unchecked_;
    QColor mark_, markText_, noGround_, noText_;
};

class RowPainter : public QAbstractItemDelegate {
  public:
    // `model` must live longer.
    explicit RowPainter(const GameListModel& model);

    // After a change of the theme or the style.
    void RenewLook();
    const RowColors& Colors() const { return colors_; }

    // In pixels, for this font and style.
    static int RowHeight(const QWidget& view);
    // What the first column needs so that no number of the list is cut.
    int NumberWidth(const QWidget& view) const;
    // The part of a cell in which its text stands.
    QRect TextPlace(const QRect& cell, const QModelIndex& index, const QFontMetrics& metrics) const;
    static Qt::TextElideMode Elision(ListColumn column);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // What the cell needs to show its whole text.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    // Of the numbers in the menu, behind the positions; 0 while nothing is checked.
    int MarkWidth(const QFontMetrics& metrics) const;
    void PaintText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                   ListColumn column, const QString& text) const;
    // Before the name, from left to right.
    void PaintNameMarks(QPainter& painter, const QRect& cell, int viewRow, const QColor& ink) const;
    void PaintMissing(QPainter& painter, const QRect& place) const;
    void PaintMarks(QPainter& painter, const QStyleOptionViewItem& option, int viewRow) const;

    const GameListModel& model_;
    RowColors colors_;
    QIcon missing_;  // before the name of a game whose file isn't there
    // What was measured and drawn before; the window's thread alone paints.
    mutable TextWidths widths_;
    mutable QPixmap missingPicture_;
    mutable QHash<QString, QStaticText> laidOut_;
    mutable QFont laidOutFont_;
};

}  // namespace bw
