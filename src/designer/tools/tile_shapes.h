// What the shapes of the tile editors draw in the current tile, in the colour index of the side's
// current palette entry. Places are columns and rows 0 to 7 of the tile.
#pragma once

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

struct ShapeDrag {
    Pos from;
    Pos to;  // becomes the current pixel
    bool filled = false;
};

// Both ends included.
Views DrawTileLine(WorkingCopy& copy, PatternTable table, const ShapeDrag& drag);
// The outline, or with `filled` all of it; the two places are opposite corners.
Views DrawTileRectangle(WorkingCopy& copy, PatternTable table, const ShapeDrag& drag);
// The pixel and all equal ones that hang together with it by their sides.
Views FillTileArea(WorkingCopy& copy, PatternTable table, Pos pixel);

}  // namespace bw
