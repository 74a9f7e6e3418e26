// A label of one line that gives way: what has no room becomes an ellipsis, and a tooltip tells
// all.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QResizeEvent>
#include <QStyle>

namespace bw {

class ElidedLabel : public QLabel {
  public:
    ElidedLabel() { setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); }

    void SetLine(const QString& line) {
        setText(line);
        TellAll();
    }

    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        TellAll();
    }
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QString line = fontMetrics().elidedText(text(), Qt::ElideRight, width());
        style()->drawItemText(&painter, rect(), static_cast<int>(alignment()), palette(),
                              isEnabled(), line, foregroundRole());
    }

  private:
    void TellAll() {
        setToolTip(fontMetrics().horizontalAdvance(text()) > width() ? text() : QString());
    }
};

}  // namespace bw
