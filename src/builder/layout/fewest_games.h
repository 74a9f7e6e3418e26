// The smallest set of games whose leaving makes the rest fit a board.
#pragma once

#include <cstdint>
#include <vector>

#include "builder/layout/fit_games.h"

namespace bw {

// Rising numbers into games.games. Of the sets of that size one whose games stand far down in the
// list. Exact for lists in which the alignment leaves few games open, which is nearly all: the
// search among the open ones ends after a few milliseconds with one game more, if need be.
std::vector<uint32_t> FewestGames(const FitGames& games);

}  // namespace bw
