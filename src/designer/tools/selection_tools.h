// What acts on all that is selected at once, whether its layer is shown or not: tiles and sprites
// on the screen, the cursor that is in use, tiles of the pattern tables. Each is one step of the
// undo history, but for what is said to be none. The result names the views that are out of date.
#pragma once

#include <vector>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

void Deselect(std::vector<TileItem>& items);
// Whatever the user has selected on the screen but the small cursor.
void DeselectItems(DesignStore& store);
// Both cursors and the tiles of the tables as well.
Views DeselectAll(WorkingCopy& copy);

// Whether DeleteSelection has anything to delete.
bool CanDeleteSelection(const WorkingCopy& copy);
// Takes the selected items off the screen and blanks the selected tiles.
Views DeleteSelection(WorkingCopy& copy);

// Whether MoveSelection has anything to move.
bool CanMoveSelection(const WorkingCopy& copy);

enum class ArrowStep {
    kPixel,  // of the console
    kCell,   // 8 of them
};

// Moves what is selected on the screen by so many steps to the right and down. Tiles go by cells in
// any case; where there are some among the selected, sprites and cursor go by cells too, so that
// all keeps its layout. What is on the screen stays there: the one that first reaches an edge stops
// all of them. What lies outside goes along, as far as its 32 bits reach.
Views MoveSelection(WorkingCopy& copy, Point steps, ArrowStep step);

// With nothing selected the current place moves by cells, and stays on the screen. No step.
Views MoveNameCell(WorkingCopy& copy, Point steps);

}  // namespace bw
