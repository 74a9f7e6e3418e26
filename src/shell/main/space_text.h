// How full a board is, in words.
#pragma once

#include <string>

#include "builder/layout/board_space.h"

namespace bw {

// More bytes or more games than the board takes, or games that it can't run: no ROM can be built.
bool IsOver(const BoardSpace& space);
// A few words, such as "COOLBOY 31.2 MB free, 3 can't run".
std::u16string SpaceText(BoardType board, const BoardSpace& space, Language language);
// All figures, line by line.
std::u16string SpaceDetails(BoardType board, const BoardSpace& space, Language language);

}  // namespace bw
