// The plain way from a picture to a screen that the console can show, for comparison.
#pragma once

#include <vector>

#include "designer/files/png_file.h"
#include "designer/model/colour.h"

namespace bw::bench {

// Of a picture of 256 by 240 opaque pixels, what its screen shows. Each pixel takes the closest of
// the console's colours; the most frequent is the backdrop, the three most frequent others of a
// block of 16 by 16 pixels its sub-palette. The first four of these sub-palettes stay, and the
// first 256 tiles; the other blocks and tiles show the closest of them.
std::vector<Colour> PlainScreen(const Picture& picture);

// The mean distance between pixels, 100 for black and white.
double MeanError(const Picture& picture, const std::vector<Colour>& screen);

}  // namespace bw::bench
