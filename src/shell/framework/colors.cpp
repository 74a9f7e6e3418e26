#include "shell/framework/colors.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

namespace bw {
namespace {

// What is lightest becomes darkest; light text can be read up to the limit.
constexpr float kDarkest = 0.13F;
constexpr float kSpread = 0.9F;
constexpr float kLightest = 0.35F;
constexpr float kDarkSaturation = 0.35F;

}  // namespace

bool DarkTheme() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() >
           palette.color(QPalette::Window).lightness();
}

QColor ThemedColor(const QColor& light) {
    if (!DarkTheme()) return light;
    const float lightness = std::min(kLightest, kDarkest + (1.0F - light.lightnessF()) * kSpread);
    return QColor::fromHslF(light.hslHueF(), light.hslSaturationF() * kDarkSaturation, lightness,
                            light.alphaF());
}

}  // namespace bw
