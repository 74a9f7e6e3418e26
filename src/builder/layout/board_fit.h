// What the checked games of a list take on a board, what each of them adds, and what to leave out
// or to add so that it is used well. From headers and known sums alone, no file is read: games
// whose sums (GameEntry::crcs) are known share equal data as a build shares it, the others count in
// full.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "builder/input/build_settings.h"
#include "list/game_list.h"
#include "rom/board_tables.h"

namespace bw {

// One checked game.
struct GameShare {
    uint32_t row;
    // Bytes of the ROM that it takes and no game before it in the list takes already. 0 for a game
    // that the board can't run.
    uint64_t adds = 0;
    bool runs = true;  // on the board
};

struct BoardFit {
    uint64_t usedBytes = 0;   // of the whole ROM, with the menu, as a build would lay it out
    uint64_t dataBytes = 0;   // the menu and what the games add
    uint64_t gapBytes = 0;    // used, and nothing lies there: the cost of the alignment
    uint64_t limitBytes = 0;  // of the board
    size_t games = 0;         // checked, that the board runs
    size_t gameLimit = 0;
    std::vector<GameShare> shares;  // in the order of the list

    uint64_t OverBytes() const { return usedBytes > limitBytes ? usedBytes - limitBytes : 0; }
    uint64_t LeftBytes() const { return usedBytes < limitBytes ? limitBytes - usedBytes : 0; }
    size_t OverGames() const { return games > gameLimit ? games - gameLimit : 0; }
    bool Fits() const { return OverBytes() == 0 && OverGames() == 0; }
};
BoardFit MeasureFit(const GameList& games, const BuildSettings& settings, BoardType board);

// Which checked games to leave out so that the rest fits: rows in rising order, empty if all fit.
// Games that the board can't run aren't among them, nor do they take room.
enum class LeavingOut : uint8_t {
    kFewest,      // as few games as it takes; among equals those further down in the list
    kLeastLoved,  // from the end of the list on
};
std::vector<uint32_t> RowsToLeaveOut(const GameList& games, const BuildSettings& settings,
                                     BoardType board, LeavingOut how);

// The unchecked rows that fit beside what is checked, taken one after the other in the order of
// `rows` (rising; all rows without it): those that the board runs and that have room. A game whose
// data is there already needs none.
std::vector<uint32_t> RowsToFillUp(const GameList& games, const BuildSettings& settings,
                                   BoardType board,
                                   std::optional<std::span<const uint32_t>> rows = {});

}  // namespace bw
