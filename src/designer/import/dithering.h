// Ordered dithering: two colours in a fixed pattern of 4 by 4 pixels stand for one between them.
#pragma once

#include <vector>

#include "designer/import/colour_choice.h"

namespace bw {

// For each pixel the shade that shows there, one of its block's four.
std::vector<Shade> Dither(const Canvas& canvas, const ColourChoice& choice);

}  // namespace bw
