// The two cursors of the list, which go together: the small one stands on the four parts of the
// large one.
#pragma once

#include "designer/model/design_store.h"
#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

// Puts the small cursor at a place in console pixels, moved onto the screen if it lies outside, and
// the large one around it.
Views PlaceSmallCursor(WorkingCopy& copy, Pos at);
// Puts the large cursor's first part there, and the small one inside.
Views PlaceLargeCursor(WorkingCopy& copy, Pos at);

}  // namespace bw
