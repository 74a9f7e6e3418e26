// Commands on the tiles, sprites and cursors that are placed on the screen. Each is one step of the
// undo history, for EditSession::Run. The result names the views that are out of date.
#pragma once

#include <cstdint>

#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

inline constexpr size_t kMostSprites = 255;  // the console menu counts them in a byte

// `table` names the list: tiles of the background or sprites. Selecting does nothing, and gives no
// views, while the list isn't shown: it is no step then.
Views SelectAllItems(WorkingCopy& copy, PatternTable table);
Views InvertItemSelection(WorkingCopy& copy, PatternTable table);
Views ClearItems(WorkingCopy& copy, PatternTable table);
Views RemoveSelectedItems(WorkingCopy& copy);  // of both lists

// Moves the selected items, or all where none or all are selected; tiles by cells, sprites by
// pixels. They may leave the screen.
Views MoveItems(WorkingCopy& copy, PatternTable table, int32_t x, int32_t y);

// Sets or clears a flag of TileItem in the selected sprites and in the selected parts of the cursor
// that is shown.
Views SetSpriteFlag(WorkingCopy& copy, uint8_t flag, bool on);
// Whether there is anything that SetSpriteFlag would change.
bool CanSetSpriteFlag(const WorkingCopy& copy);

// Exchanges the pattern table of tall sprites: of the selected ones, or of all where none or all
// are selected; or of all in any case. Nothing happens with sprites of 8 by 8.
Views SwapSpriteTables(WorkingCopy& copy);
Views SwapAllSpriteTables(WorkingCopy& copy);

// Makes two sprites of 8 by 8 of each tall one. BigSprite stays for the user to switch.
Views SplitTallSprites(WorkingCopy& copy);

// Makes sprites of the selected background tiles, which join the sprite table where it hasn't got
// them. Nothing happens with tall sprites. When the sprite table is full, the selected tile at hand
// and all behind it are lost; an undo brings them back.
Views MakeSpritesOfTiles(WorkingCopy& copy);

Views SetBigCursor(WorkingCopy& copy, bool on);
Views SetBigSprite(WorkingCopy& copy, bool on);

}  // namespace bw
