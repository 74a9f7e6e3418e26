// How full a board is, in words.
#pragma once

#include <string>

#include "builder/layout/board_space.h"

namespace bw {

// More bytes or more games than the board takes.
bool IsOver(const BoardSpace& space);
// A few words, such as "COOLBOY 31.2 MB free".
std::u16string SpaceText(BoardType board, const BoardSpace& space, Language language);
// All figures, line by line.
std::u16string SpaceDetails(BoardType board, const BoardSpace& space, Language language);

}  // namespace bw
