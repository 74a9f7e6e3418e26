// The titles of the list's columns. The arrow of a sort stands over its title. A title that is
// wider than its column gets smaller letters, and if they would be too small, two lines of them.
#pragma once

#include <QHeaderView>

namespace bw {

class ListHeader : public QHeaderView {
    Q_OBJECT
  public:
    explicit ListHeader(QWidget* parent);

  protected:
    QSize sectionSizeFromContents(int section) const override;
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

  private:
    QString Title(int section) const;
    // The room for a title, less margins, for each unit of its width.
    qreal RoomFor(const QString& title, int section) const;
    bool FitsInOneLine(int section) const { return RoomFor(Title(section), section) >= 1; }
    QFont Scaled(qreal factor) const;
    void PaintArrow(QPainter& painter, const QRect& rect) const;
};

}  // namespace bw
