// The games of a list as a board would take them in, from headers and known sums alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "builder/input/build_settings.h"
#include "builder/layout/layout_shapes.h"
#include "list/game_list.h"
#include "rom/board_tables.h"
#include "rom/multicart_item.h"

namespace bw {

// As a build would read it, after its rounding but without its data: the sizes are those of bytes 4
// and 5 alone, also in a NES 2.0 header. A file that can't be read has PRG size 0 here, which no
// board takes.
MulticartItem ItemOfHeader(const InesHeader& header);
// With the least sizes that the board can mask; nothing if it can't run the game.
std::optional<MulticartItem> FitItem(const InesHeader& header, BoardType board);

// The rows of a list that a board runs, in the list's order: data is numbered over all of them.
// Games whose sums nobody knows have data unlike all other.
struct FitGames {
    struct Game {
        uint32_t row;
        GameShape shape;
    };
    enum class Rows : uint8_t { kChecked, kAll };

    FitGames(const GameList& list, const BuildSettings& settings, BoardType board, Rows rows);

    // Of the ROM with these games (rising numbers into `games`) and the menu.
    uint64_t RomSize(std::span<const uint32_t> some) const;
    bool Fit(std::span<const uint32_t> some) const {
        return some.size() <= gameLimit && RomSize(some) <= limitBytes;
    }

    BoardType board;
    uint32_t menuUnits;  // 16 KB
    uint64_t limitBytes;
    size_t gameLimit;
    std::vector<Game> games;
    // Bytes of each piece of data, by its number: the longest that one of its games takes.
    std::vector<uint32_t> prgBytes;
    std::vector<uint32_t> chrBytes;
};

// How much the menu and some games take if no alignment costs anything, each piece of data once.
// No ROM is smaller.
class DataSum {
  public:
    explicit DataSum(const FitGames& games);

    uint64_t Bytes() const { return bytes_; }
    // What a game would add of either; 0 for data that is there.
    uint32_t PrgAdded(const GameShape& game) const;
    uint32_t ChrAdded(const GameShape& game) const;
    void Add(const GameShape& game);
    void Remove(const GameShape& game);

  private:
    const FitGames& games_;
    std::vector<uint32_t> prgUsers_;  // by number of data
    std::vector<uint32_t> chrUsers_;
    uint64_t bytes_;
};

}  // namespace bw
