// The places in use that hang together: the attribute byte, its quadrant, the entry of the palette
// and the colour of the system palette.
#pragma once

#include <cstdint>

#include "designer/document/views.h"
#include "designer/document/working_copy.h"

namespace bw {

// The sub-palette 0 to 3 of a quadrant (0 or 1 each) in an attribute byte, and the byte with that
// quadrant changed.
int QuadrantPalette(uint8_t attribute, Pos quadrant);
uint8_t WithQuadrantPalette(uint8_t attribute, Pos quadrant, int palette);

// After the document was replaced: brings the attribute byte, the quadrant, the entry of the
// background palette and the colour in the system palette in line with the places in use.
Views SynchroniseCursors(WorkingCopy& copy);

enum class Direction { kLeft, kRight, kUp, kDown };

// A step of the history: shifts all attributes by a quadrant, 16 pixels. What leaves the table is
// lost. Upward the last row of quadrants, which no screen shows, keeps its values and the row above
// it becomes 0.
Views ShiftAttributes(WorkingCopy& copy, Direction direction);

}  // namespace bw
