// A picture in memory shown in whole pixels, without smoothing.
#pragma once

#include <QImage>
#include <QWidget>

#include "designer/pictures/surface.h"

namespace bw {

// As large as fits by a whole number, in the middle; once its own size at the least.
class PictureView : public QWidget {
  public:
    explicit PictureView(QWidget* parent = nullptr);

    void Show(const Surface& picture);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage image_;
};

}  // namespace bw
