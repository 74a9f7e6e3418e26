#include "designer/import/console_colours.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "designer/model/system_palette.h"

namespace bw {
namespace {

// sRGB's curve, for each of the 256 values of a channel.
std::array<float, 256> MakeLinearValues() {
    std::array<float, 256> values{};
    for (size_t i = 0; i < values.size(); ++i) {
        const double value = static_cast<double>(i) / 255;
        values[i] = static_cast<float>(value <= 0.04045 ? value / 12.92
                                                        : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return values;
}

std::array<ShownColour, kShadeCount> MakeShownColours() {
    std::array<ShownColour, kShadeCount> shown{};
    size_t count = 0;
    const auto add = [&](uint8_t code) {
        const Colour colour = SystemColour(code);
        const auto known = std::span(shown).first(count);
        if (std::ranges::find(known, colour, &ShownColour::colour) != known.end()) return;
        shown.at(count++) = {code, colour, LabOf(colour)};
    };
    add(0x0F);
    add(0x30);
    for (uint8_t code = 0; code < kConsoleColours.size(); ++code)
        add(code);
    return shown;
}

}  // namespace

// The matrices are those of Bjorn Ottosson, "A perceptual color space for image processing", 2020:
// https://bottosson.github.io/posts/oklab/
Lab LabOf(Colour colour) {
    static const std::array<float, 256> kLinear = MakeLinearValues();
    const float red = kLinear[colour >> 16 & 0xFF];
    const float green = kLinear[colour >> 8 & 0xFF];
    const float blue = kLinear[colour & 0xFF];
    const float l = std::cbrt(0.4122214708F * red + 0.5363325363F * green + 0.0514459929F * blue);
    const float m = std::cbrt(0.2119034982F * red + 0.6806995451F * green + 0.1073969566F * blue);
    const float s = std::cbrt(0.0883024619F * red + 0.2817188376F * green + 0.6299787005F * blue);
    return {0.2104542553F * l + 0.7936177850F * m - 0.0040720468F * s,
            1.9779984951F * l - 2.4285922050F * m + 0.4505937099F * s,
            0.0259040371F * l + 0.7827717662F * m - 0.8086757660F * s};
}

float Distance(const Lab& one, const Lab& other) {
    const float L = one.L - other.L;
    const float a = one.a - other.a;
    const float b = one.b - other.b;
    return std::sqrt(L * L + a * a + b * b);
}

Cost CostOf(const Lab& one, const Lab& other) {
    return static_cast<Cost>(std::lround(Distance(one, other) * kCostUnit));
}

const std::array<ShownColour, kShadeCount>& ShownColours() {
    static const std::array<ShownColour, kShadeCount> kShown = MakeShownColours();
    return kShown;
}

Shade ShadeOf(uint8_t code) {
    const auto found = std::ranges::find(ShownColours(), SystemColour(code), &ShownColour::colour);
    return static_cast<Shade>(found - ShownColours().begin());
}

Shade ClosestShade(const Lab& lab) {
    const auto closest = std::ranges::min_element(
        ShownColours(), {}, [&](const ShownColour& shown) { return Distance(lab, shown.lab); });
    return static_cast<Shade>(closest - ShownColours().begin());
}

}  // namespace bw
