#include "shell/framework/colors.h"

#include <QGuiApplication>
#include <QPalette>

namespace bw {
namespace {

// The light colours lie between lightness 0.8 and 1; this maps them below 0.35.
constexpr float kDarkest = 0.13F;
constexpr float kSpread = 0.9F;
constexpr float kDarkSaturation = 0.35F;

}  // namespace

bool DarkTheme() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() >
           palette.color(QPalette::Window).lightness();
}

QColor ThemedColor(const QColor& light) {
    if (!DarkTheme()) return light;
    const float lightness = kDarkest + (1.0F - light.lightnessF()) * kSpread;
    return QColor::fromHslF(light.hslHueF(), light.hslSaturationF() * kDarkSaturation, lightness,
                            light.alphaF());
}

}  // namespace bw
