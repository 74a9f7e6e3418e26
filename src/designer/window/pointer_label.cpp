#include "designer/window/pointer_label.h"

#include <chrono>

#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr std::chrono::milliseconds kFollowAfter{25};  // longer than a frame of most screens

}  // namespace

PointerLabel::PointerLabel(Words words) : words_(std::move(words)) {
    later_.setSingleShot(true);
    later_.setInterval(kFollowAfter);
    connect(&later_, &QTimer::timeout, this, [this] {
        const QString text = ToQt(words_(last_));
        if (text != this->text()) SetLine(text);
    });
}

void PointerLabel::Follow(const PointerEvent& event) {
    last_ = event;
    if (!later_.isActive()) later_.start();
}

void PointerLabel::Clear() {
    later_.stop();
    SetLine({});
}

}  // namespace bw
