// Games that a board can't run: leaving them out, and the way out for who is refused because of
// them.
#pragma once

#include <string>
#include <vector>

#include "language/language.h"
#include "list/game_list.h"
#include "rom/board_tables.h"

namespace bw {

// Takes the checks of those games away. A line on each, for people. Files that can't be read, or
// hold no game at all, stay checked.
std::vector<std::u16string> UncheckUnsupported(GameList& games, BoardType board, Language language);

// What the board runs and what the user can do, where checked games don't run on it; else empty.
std::u16string WayOut(const GameList& games, BoardType board, Language language);

// "0, 4, 74"
std::u16string MappersOf(BoardType board);

}  // namespace bw
