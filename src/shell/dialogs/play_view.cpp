#include "shell/dialogs/play_view.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace bw {
namespace {

constexpr int kWidth = static_cast<int>(ConsolePicture::kWidth);
constexpr int kHeight = static_cast<int>(ConsolePicture::kHeight);
constexpr int kMargin = 12;
constexpr QColor kShade(0, 0, 0, 170);

}  // namespace

PlayView::PlayView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    // An input method would keep letters to itself.
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PlayView::Show(const ConsolePicture& picture) {
    if (picture.pixels.size() != size_t{kWidth} * kHeight) return;
    if (picture_.isNull()) picture_ = QImage(kWidth, kHeight, QImage::Format_RGB32);
    std::memcpy(picture_.bits(), picture.pixels.data(), picture.pixels.size() * sizeof(uint32_t));
    update();
}

void PlayView::Say(const QString& words) {
    if (words == words_) return;
    words_ = words;
    setAccessibleDescription(words);
    update();
}

void PlayView::Clear() {
    picture_ = {};
    update();
}

QSize PlayView::SizeAt(int scale) {
    return {kWidth * scale, kHeight * scale};
}

int PlayView::ExactScale() const {
    return size() == SizeAt(width() / kWidth) ? width() / kWidth : 0;
}

// Its edges lie on the screen's own pixels, also where several of those make one of Qt's.
QRectF PlayView::PictureRect() const {
    const double density = devicePixelRatioF();
    const double width = this->width() * density;
    const double height = this->height() * density;
    const double scale = std::min(width / kWidth, height / kHeight);
    const double shownWidth = std::floor(kWidth * scale);
    const double shownHeight = std::floor(kHeight * scale);
    return {std::floor((width - shownWidth) / 2) / density,
            std::floor((height - shownHeight) / 2) / density, shownWidth / density,
            shownHeight / density};
}

void PlayView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!picture_.isNull()) painter.drawImage(PictureRect(), picture_);
    if (words_.isEmpty()) return;
    const QRect inside = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    constexpr int kFlags = Qt::AlignCenter | Qt::TextWordWrap;
    const QRect words = painter.boundingRect(inside, kFlags, words_);
    painter.fillRect(words.adjusted(-kMargin, -kMargin, kMargin, kMargin), kShade);
    painter.setPen(Qt::white);
    painter.drawText(inside, kFlags, words_);
}

}  // namespace bw
