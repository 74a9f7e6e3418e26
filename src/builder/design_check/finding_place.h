// The way from a finding to what it is about.
#pragma once

#include "builder/design_check/design_finding.h"
#include "designer/gestures/designer_layout.h"
#include "designer/model/views.h"

namespace bw {

// A part of a view, in pixels of its picture; of a place beside the view the nearest part.
struct ViewPart {
    Control view = Control::kNameTable;
    Rect part;
};
ViewPart WhereShown(const WorkingCopy& copy, const DesignPlace& place);

// Makes the place the current one: cell, tile, colour or character, and of a sprite the one that is
// selected. Switches its layer of the screen on. No step of the history. A place that isn't there
// any more changes nothing.
Views GoToPlace(WorkingCopy& copy, const DesignPlace& place);

}  // namespace bw
