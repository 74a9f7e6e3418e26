#include "designer/window/picture_view.h"

#include <QPainter>
#include <QScreen>
#include <algorithm>

namespace bw {
namespace {

constexpr int kBesideEachOther = 3;
constexpr int kLargestSide = 512;  // twice a screen's

}  // namespace

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureView::Show(const Surface& picture) {
    // A copy, since the surface goes away with its result.
    image_ = QImage(picture.Width(), picture.Height(), QImage::Format_RGB32);
    for (int y = 0; y < picture.Height(); ++y)
        std::copy_n(picture.From({0, y}), picture.Width(),
                    reinterpret_cast<Colour*>(image_.scanLine(y)));
    setMinimumSize(image_.size());
    updateGeometry();
    update();
}

QSize PictureView::sizeHint() const {
    if (image_.isNull()) return {};
    // Three beside each other, with what is around them.
    const QSize room = (screen()->availableSize() - QSize(100, 300)) / kBesideEachOther;
    const int scale =
        std::min({room.width() / image_.width(), kBesideEachOther * room.height() / image_.height(),
                  kLargestSide / image_.width(), kLargestSide / image_.height()});
    return image_.size() * std::max(1, scale);
}

void PictureView::paintEvent(QPaintEvent*) {
    if (image_.isNull()) return;
    // In the screen's own pixels, of which a widget's may be several or one and a half.
    const qreal ratio = devicePixelRatioF();
    const auto fits = [&](int there, int needed) {
        return static_cast<int>(there * ratio) / std::max(1, needed);
    };
    const int scale =
        std::max(1, std::min(fits(width(), image_.width()), fits(height(), image_.height())));
    const QSize shown = image_.size() * scale;
    const QPoint corner((static_cast<int>(width() * ratio) - shown.width()) / 2,
                        (static_cast<int>(height() * ratio) - shown.height()) / 2);
    QPainter painter(this);
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(QRect(corner, shown), image_);
}

}  // namespace bw
