// Commands that bend the pattern tables, the character map and what is on the screen towards each
// other. Each is one step of the undo history, for EditSession::Run. The result names the views
// that are out of date.
#pragma once

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

// Copies the font's characters 32 to 95 into blank tiles from the current tile on and maps them.
// Ends early when no blank tile is left.
Views MapAllCharacters(WorkingCopy& copy);

// The same for those characters that names, caption and page numbers use; the map is emptied first.
Views MapUsedCharacters(WorkingCopy& copy);

// Blanks the tiles that aren't in use.
Views ClearUnusedBkgTiles(WorkingCopy& copy);
Views ClearUnusedSpriteTiles(WorkingCopy& copy);

// Closes the gaps between the tiles; what is on the screen follows. Tile 0 stays where it is.
Views OrganiseBkgTiles(WorkingCopy& copy);
Views OrganiseSpriteTiles(WorkingCopy& copy);

// Copies the font's characters 32 to 95 to the table from its current tile on.
Views CopyFont(WorkingCopy& copy, PatternTable table);

Views ResetCharMap(WorkingCopy& copy);

}  // namespace bw
