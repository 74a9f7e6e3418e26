// How full a board gets with the checked games of a list (board_fit has the whole answer), and why
// a game doesn't run on it. From headers and known sums alone: fast enough to follow every click.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "builder/input/build_settings.h"
#include "language/language.h"
#include "list/game_list.h"

namespace bw {

struct BoardSpace {
    uint64_t usedBytes = 0;   // ROM size with the menu
    uint64_t limitBytes = 0;  // of the board
    size_t games = 0;         // checked
    size_t gameLimit = 0;
    size_t unfit = 0;  // checked games that the board can't run; not counted in usedBytes
};
BoardSpace EstimateSpace(const GameList& games, const BuildSettings& settings, BoardType board);

// What the game takes on the board: PRG and CHR after rounding, in bytes; nothing if it can't run.
std::optional<uint64_t> GameSpan(const GameEntry& entry, BoardType board);

// Why the board doesn't run the game, in words; empty if it does.
std::u16string WhyUnfit(const GameEntry& entry, BoardType board, Language language);
// Why neither, or only one, of the boards runs the game: lines for a tooltip, empty if all do.
std::u16string WhyUnfit(const GameEntry& entry, Language language);

}  // namespace bw
