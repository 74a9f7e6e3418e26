// Commands on the attribute table.
#pragma once

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

enum class Direction { kLeft, kRight, kUp, kDown };

// A step of the history: shifts all attributes by a quadrant, 16 pixels. What leaves the table is
// lost. Upward the last row of quadrants, which no screen shows, keeps its values and the row above
// it becomes 0.
Views ShiftAttributes(WorkingCopy& copy, Direction direction);

}  // namespace bw
