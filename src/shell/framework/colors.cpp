#include "shell/framework/colors.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <array>

namespace bw {
namespace {

// What is lightest becomes darkest; light text can be read up to the limit.
constexpr float kDarkest = 0.13F;
constexpr float kSpread = 0.9F;
constexpr float kLightest = 0.35F;
constexpr float kDarkSaturation = 0.35F;

// For a light theme and for a dark one.
using Pair = std::array<QRgb, 2>;
constexpr Pair kAccent{0xFF174C8F, 0xFF8CC1FA};
constexpr Pair kOnAccent{0xFFFFFFFF, 0xFF0B1D30};
constexpr Pair kWarningText{0xFF8A1010, 0xFFFFB4AB};
constexpr Pair kWarningGround{0xFFFFD9D2, 0xFF5A2A2C};

QColor OfTheme(const Pair& pair) {
    return {pair[DarkTheme() ? 1 : 0]};
}

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

QColor Paled(const QColor& text, const QColor& ground, float share) {
    const auto mix = [share](float one, float other) { return one * share + other * (1 - share); };
    return QColor::fromRgbF(mix(text.redF(), ground.redF()), mix(text.greenF(), ground.greenF()),
                            mix(text.blueF(), ground.blueF()));
}

QColor AccentColor() {
    return OfTheme(kAccent);
}
QColor TextOnAccent() {
    return OfTheme(kOnAccent);
}
QColor WarningText() {
    return OfTheme(kWarningText);
}
QColor WarningGround() {
    return OfTheme(kWarningGround);
}

}  // namespace bw
