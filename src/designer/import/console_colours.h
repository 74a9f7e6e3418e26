// The console's colours as pictures are matched with them: each shown colour once, and distances
// between colours as people see them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "designer/model/colour.h"

namespace bw {

// A place in the OKLab colour space: lightness 0 to 1, green to red, blue to yellow. Equal
// distances in it look about equal.
struct Lab {
    float L = 0;
    float a = 0;
    float b = 0;
};

// Of a colour of sRGB; only its low 24 bits count.
Lab LabOf(Colour colour);
// 0 for equal colours, 1 between black and white.
float Distance(const Lab& one, const Lab& other);

// Distances as whole numbers, so that sums are the same in any order: 20,000 for 1.
using Cost = int16_t;
inline constexpr float kCostUnit = 20'000;
Cost CostOf(const Lab& one, const Lab& other);

// The number of a shown colour: an index into ShownColours().
using Shade = uint8_t;

struct ShownColour {
    uint8_t code = 0;  // as palettes hold it
    Colour colour = 0;
    Lab lab;
};

// The colours that are told apart on the screen. Of the codes that look alike this has the usual
// one: $0F for black, since $0D is blacker than black and upsets televisions, and $30 for white.
inline constexpr size_t kShadeCount = 54;
const std::array<ShownColour, kShadeCount>& ShownColours();

// The shade that a code of a palette looks like.
Shade ShadeOf(uint8_t code);
// The shade closest to a place.
Shade ClosestShade(const Lab& lab);

}  // namespace bw
