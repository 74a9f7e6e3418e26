// The console's picture in a window.
#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

#include "console/emulator.h"

namespace bw {

// As large as it fits with the console's own proportions, black around it; every pixel of the
// console is a block of the screen's. Words may stand in its place, or over it.
class PlayView : public QWidget {
  public:
    explicit PlayView(QWidget* parent = nullptr);

    void Show(const ConsolePicture& picture);
    // Empty: the picture alone.
    void Say(const QString& words);
    bool HasPicture() const { return !picture_.isNull(); }
    void Clear();

    // Logical pixels for one of the console.
    static QSize SizeAt(int scale);
    // The scale at which the picture fills the view exactly; 0 if there is none.
    int ExactScale() const;

    QSize sizeHint() const override { return SizeAt(2); }
    QSize minimumSizeHint() const override { return SizeAt(1); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QRectF PictureRect() const;

    QImage picture_;
    QString words_;
};

}  // namespace bw
