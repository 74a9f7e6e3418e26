// Straight lines on a grid of pixels or cells.
#pragma once

#include <cstdlib>

#include "designer/model/point.h"

namespace bw {

// Visits the points of Bresenham's line in order, both ends included.
template <typename Visit>
void WalkLine(Point a, Point b, Visit visit) {
    const int stepX = a.x < b.x ? 1 : -1;
    const int stepY = a.y < b.y ? 1 : -1;
    const int width = std::abs(b.x - a.x);
    const int height = -std::abs(b.y - a.y);
    for (int error = width + height;;) {
        visit(a);
        if (a == b) return;
        const int doubled = 2 * error;
        if (doubled >= height) {
            error += height;
            a.x += stepX;
        }
        if (doubled <= width) {
            error += width;
            a.y += stepY;
        }
    }
}

}  // namespace bw
