// Pictures that the console could have drawn: a screen's own colours, in whatever palette an
// emulator has painted them.
#pragma once

#include <optional>
#include <vector>

#include "designer/import/colour_choice.h"

namespace bw {

struct ExactColours {
    ColourChoice choice;
    // For each pixel of the canvas a shade of its own kind: equal colours have equal ones,
    // different colours different ones, all together as close as can be.
    std::vector<Shade> shades;
    size_t tiles = 0;  // how many different ones there are
};

// Nothing if the picture has colours for more than a backdrop and four sub-palettes of three, or a
// block has more than one of these holds. Of several ways one with at most `tileLimit` tiles, or
// with the fewest that were found. The backdrop is the given one or, without one, any.
std::optional<ExactColours> FindExactColours(const Canvas& canvas, std::optional<Shade> backdrop,
                                             size_t tileLimit);

}  // namespace bw
