// Games whose saves a board keeps in one place: the boards have one work RAM with a battery, and
// whichever game runs uses it from its start.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "language/language.h"
#include "list/game_list.h"
#include "rom/board_tables.h"

namespace bw {

// Of the games of a cart, by whether each has a battery: those that share. All of them, if they are
// more than one; else none.
std::vector<uint32_t> SharingSaves(const std::vector<bool>& batteries);

// The checked rows with a battery that the board runs, if they are more than one: they use the same
// work RAM, one after the other. Else empty.
std::vector<uint32_t> RowsSharingSaves(const GameList& games, BoardType board);

// What to tell of them: which they are (the first few by name and number in the menu, then how many
// more), what happens and what helps. Empty for no rows.
std::u16string SharedSavesText(const GameList& games, const std::vector<uint32_t>& rows,
                               Language language);

}  // namespace bw
