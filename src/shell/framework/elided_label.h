// A label of one line that gives way: what has no room becomes an ellipsis, and a tooltip tells
// all, and more if there is more to tell.
#pragma once

#include <QLabel>
#include <QPainter>
#include <QResizeEvent>
#include <QStyle>

namespace bw {

class ElidedLabel : public QLabel {
  public:
    ElidedLabel() { setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); }

    // `details` stand in the tooltip alone.
    void SetLine(const QString& line, const QString& details = {}) {
        setText(line);
        details_ = details;
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
        const bool cut = fontMetrics().horizontalAdvance(text()) > width();
        const QString between = cut && !details_.isEmpty() ? QStringLiteral("\n") : QString();
        setToolTip((cut ? text() : QString()) + between + details_);
    }

    QString details_;
};

}  // namespace bw
