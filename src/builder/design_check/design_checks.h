// The parts of CheckDesign. Each adds what it finds.
#pragma once

#include "builder/design_check/finding_list.h"
#include "builder/design_check/menu_screen.h"
#include "designer/model/working_copy.h"

namespace bw {

struct CheckedDesign {
    const WorkingCopy& copy;
    MenuScreen screen;
};

// Characters that no tile shows.
void CheckCharacters(const CheckedDesign& design, FindingList& findings);
// Texts and what the menu writes: outside the screen, cut, in hidden rows.
void CheckTextPlaces(const CheckedDesign& design, FindingList& findings);
// The same over each other, and the cursor over them or outside the screen.
void CheckOverlaps(const CheckedDesign& design, FindingList& findings);
// Sprites and the cursor: how many, how many on a line, over each other, blank.
void CheckSprites(const CheckedDesign& design, FindingList& findings);
// Colours and tiles.
void CheckTables(const CheckedDesign& design, FindingList& findings);

}  // namespace bw
