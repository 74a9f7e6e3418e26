// The rubber band that the user draws with Shift, as the views show it.
#pragma once

#include "designer/model/point.h"

namespace bw {

// Its corners, in pixels of the view it is drawn on, which they may lie beside.
struct RubberBand {
    Point press;
    Point current;
};

// One press, seen from each of the views that hold something to select.
struct RubberBands {
    RubberBand nameTable;
    RubberBand bkgTiles;
    RubberBand spriteTiles;
};

}  // namespace bw
