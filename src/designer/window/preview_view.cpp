#include "designer/window/preview_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace bw {
namespace {

constexpr int kWidth = ConsolePicture::kWidth;
constexpr int kHeight = ConsolePicture::kHeight;
constexpr int kFrame = 2;  // around the picture, logical pixels

// A key is told by its place where the system names that: Shift can change what it is called.
uint32_t PlaceOf(const QKeyEvent& key) {
    const uint32_t place = key.nativeScanCode();
    return place != 0 ? place : 0x80000000u | static_cast<uint32_t>(key.key());
}

}  // namespace

PreviewView::PreviewView(const PlayKeys& keys) : keys_(keys) {
    setObjectName(QStringLiteral("preview_screen"));
    setFocusPolicy(Qt::StrongFocus);
    // An input method would keep letters to itself.
    setAttribute(Qt::WA_InputMethodEnabled, false);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* from, QWidget* to) {
        if (to == this && from != nullptr) before_ = from;
    });
}

void PreviewView::Show(const ConsolePicture& picture) {
    if (picture.pixels.size() != size_t{kWidth} * kHeight) return;
    if (picture_.isNull()) picture_ = QImage(kWidth, kHeight, QImage::Format_RGB32);
    const size_t bytes = picture.pixels.size() * sizeof(uint32_t);
    // Most frames of a menu are those before them.
    if (std::memcmp(picture_.constBits(), picture.pixels.data(), bytes) == 0) return;
    std::memcpy(picture_.bits(), picture.pixels.data(), bytes);
    update();
}

QSize PreviewView::sizeHint() const {
    return PictureSize(0) + QSize(2 * kFrame, 2 * kFrame);
}

int PreviewView::heightForWidth(int width) const {
    return PictureSize(width).height() + 2 * kFrame;
}

// In logical pixels, rounded up.
QSize PreviewView::PictureSize(int width) const {
    const double density = devicePixelRatioF();
    // One of the console's for each logical pixel is the least.
    const double least = std::max(1.0, std::floor(density));
    const double scale = std::max(least, std::floor((width - 2 * kFrame) * density / kWidth));
    return {static_cast<int>(std::ceil(kWidth * scale / density)),
            static_cast<int>(std::ceil(kHeight * scale / density))};
}

void PreviewView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double density = devicePixelRatioF();
    const QSize logical = PictureSize(width());
    const double scale = std::floor(logical.width() * density / kWidth);
    // On a pixel of the screen.
    const double left = std::floor((width() - kWidth * scale / density) / 2 * density) / density;
    const QRectF place(left, kFrame, kWidth * scale / density, kHeight * scale / density);
    if (picture_.isNull()) {
        painter.fillRect(place, Qt::black);
    } else {
        painter.drawImage(place, picture_);
    }
    if (!hasFocus()) return;
    const double half = kFrame / 2.0;
    painter.setPen(QPen(palette().color(QPalette::Highlight), kFrame, Qt::SolidLine, Qt::FlatCap,
                        Qt::MiterJoin));
    painter.drawRect(place.adjusted(-half, -half, half, half));
}

// The menu takes both pads for one. Select has a second key for keyboards whose Shift is another's.
std::optional<PadPlace> PreviewView::PlaceFor(const QKeyEvent& key) const {
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return {};
    if (key.key() == Qt::Key_Backspace) return PadPlace{0, kPadSelect};
    const auto place = keys_.PlaceOf(key.key());
    return place ? std::optional(PadPlace{0, place->button}) : std::nullopt;
}

bool PreviewView::event(QEvent* event) {
    // Keys that are shortcuts elsewhere are the console's here.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        if (key.key() == Qt::Key_Escape || PlaceFor(key)) event->accept();
    }
    return QWidget::event(event);
}

void PreviewView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        if (before_ != nullptr && before_->isVisible()) {
            before_->setFocus(Qt::OtherFocusReason);
        } else {
            clearFocus();
        }
    } else if (const auto button = PlaceFor(*event)) {
        if (!event->isAutoRepeat() && held_.Press(PlaceOf(*event), *button)) TellHeld();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void PreviewView::keyReleaseEvent(QKeyEvent* event) {
    if (!event->isAutoRepeat() && held_.Release(PlaceOf(*event))) TellHeld();
}

void PreviewView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    emit FocusChanged();
}

void PreviewView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    if (held_.ReleaseAll()) TellHeld();
    emit FocusChanged();
}

void PreviewView::TellHeld() {
    emit Held(held_.Pads()[0]);
}

}  // namespace bw
