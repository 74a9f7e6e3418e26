#include "designer/window/draw_control.h"

#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>

namespace bw {
namespace {

// The pixels themselves, no copy.
QImage Wrap(const Surface& surface) {
    static_assert(sizeof(Colour) == 4);
    return {reinterpret_cast<const uchar*>(surface.Pixels().data()), surface.Width(),
            surface.Height(), surface.Width() * 4, QImage::Format_RGB32};
}

}  // namespace

CWindowDraw::CWindowDraw(const Surface& surface, QWidget& parent)
    : QWidget(&parent), surface_(surface) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    SetScale(1);
}

void CWindowDraw::SetScale(int scale) {
    scale_ = scale;
    // Where the desktop's scale isn't whole there may be a part of a pixel to spare.
    const auto length = [&](int pixels) {
        return static_cast<int>(std::ceil(pixels * scale / devicePixelRatioF()));
    };
    setFixedSize(length(surface_.Width()), length(surface_.Height()));
    update();
}

QPointF CWindowDraw::Corner() const {
    return QPointF(mapTo(window(), QPoint(0, 0))) * devicePixelRatioF();
}

QPoint CWindowDraw::Origin() const {
    const QPointF corner = Corner();
    return {static_cast<int>(std::ceil(corner.x())), static_cast<int>(std::ceil(corner.y()))};
}

Point CWindowDraw::PixelAt(const QPointF& at) const {
    const QPointF inSurface = Corner() + at * devicePixelRatioF() - QPointF(Origin());
    return {static_cast<int>(std::floor(inSurface.x() / scale_)),
            static_cast<int>(std::floor(inSurface.y() / scale_))};
}

QRect CWindowDraw::Shown(const Block& part) const {
    const double ratio = devicePixelRatioF();
    const QPointF offset = QPointF(Origin()) - Corner();
    const QRectF pixels(offset.x() + part.at.x * scale_, offset.y() + part.at.y * scale_,
                        part.width * scale_, part.height * scale_);
    return QRectF(pixels.topLeft() / ratio, pixels.size() / ratio).toAlignedRect();
}

void CWindowDraw::ShowChanges() {
    for (const Block& block : changes_.Find(surface_))
        update(Shown(block));
}

void CWindowDraw::focusInEvent(QFocusEvent*) {
    UpdateAround();
}

void CWindowDraw::focusOutEvent(QFocusEvent*) {
    UpdateAround();
}

void CWindowDraw::UpdateAround() {
    const QMargins mark(kFocusMark, kFocusMark, kFocusMark, kFocusMark);
    parentWidget()->update(QRegion(geometry() + mark) - geometry());
}

void CWindowDraw::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QTransform device = painter.deviceTransform();
    const QPointF corner = device.map(QPointF(0, 0));
    const QPointF offset = QPointF(Origin()) - Corner();
    const QTransform whole(scale_, 0, 0, scale_, std::round(corner.x() + offset.x()),
                           std::round(corner.y() + offset.y()));
    const double ratio = devicePixelRatioF();
    const QImage picture = Wrap(surface_);
    painter.setWorldTransform(whole * device.inverted());
    for (const QRect& part : event->region()) {
        // In pixels of the surface, with those that are cut by the part's edges.
        const QPointF first = QPointF(part.topLeft()) * ratio - offset;
        const QPointF last = QPointF(part.bottomRight() + QPoint(1, 1)) * ratio - offset;
        const QRect pixels = QRectF(first / scale_, last / scale_).toAlignedRect() & picture.rect();
        painter.drawImage(pixels.topLeft(), picture, pixels);
    }
}

}  // namespace bw
