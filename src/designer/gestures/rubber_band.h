// Drawing a rubber band with Shift, and what it selects.
#pragma once

#include "designer/gestures/designer_layout.h"
#include "designer/model/working_copy.h"
#include "designer/pictures/rubber_bands.h"

namespace bw {

// Where a band that begins and ends at `at`, client pixels of the window, lies in the views.
RubberBands StartBands(const DesignerLayout& layout, Point at);
void MoveBands(RubberBands& bands, const DesignerLayout& layout, Point at);

// Selects all items and tiles that share a pixel with the band, its edges included. Whatever it
// doesn't touch is deselected, unless the user adds to the selection. Lists that aren't shown keep
// their selection.
void SelectInBands(WorkingCopy& copy, const RubberBands& bands, bool add);

}  // namespace bw
