// The rubber band that the user draws with Shift: one press, seen from each of the three views at
// once that hold something to select.
#pragma once

#include "designer/document/designer_layout.h"
#include "designer/document/marks.h"
#include "designer/document/working_copy.h"

namespace bw {

// The band in the pixels of each view, which it may leave.
struct RubberBands {
    RubberBand nameTable;
    RubberBand bkgTiles;
    RubberBand spriteTiles;
};

// Where a band that begins and ends at `at`, client pixels of the window, lies in the views.
RubberBands StartBands(const DesignerLayout& layout, Point at);
void MoveBands(RubberBands& bands, const DesignerLayout& layout, Point at);

// Selects all items and tiles that share a pixel with the band, its edges included. Whatever it
// doesn't touch is deselected, unless the user adds to the selection. Lists that aren't shown keep
// their selection.
void SelectInBands(WorkingCopy& copy, const RubberBands& bands, bool add);

}  // namespace bw
