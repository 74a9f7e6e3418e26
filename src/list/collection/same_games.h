// Rows of the list that are the same game, and which of them is the best to keep.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "list/game_list.h"

namespace bw {

// Rows in rising order, groups in the order of their first rows; only groups of two and more.
using RowGroups = std::vector<std::vector<uint32_t>>;

// Same PRG and CHR data: rows whose sums are known (GameEntry::crcs) and equal, as their sizes are.
RowGroups SameData(const GameList& games);
// Versions of a game as well: the same title without tags, letter case and signs, by the file's
// name, or the same data.
RowGroups SameGames(const GameList& games);

// What makes one version better than another, asked in this order; each at most once.
enum class BestRule : uint8_t {
    kRegion,    // the earliest in the order of regions; none comes behind all that are named
    kRevision,  // the newest; a prototype or a beta is older than everything else
    kDump,      // the fewest marks that count against the image
    kFirst,     // the one that stands first in the list; decides all that is left
};
struct BestRules {
    std::vector<BestRule> order{BestRule::kDump, BestRule::kRegion, BestRule::kRevision,
                                BestRule::kFirst};
    std::vector<std::u16string> regions{u"USA", u"World", u"Europe", u"Japan"};
    bool operator==(const BestRules&) const = default;
};

// The best row of a group.
uint32_t BestOf(const GameList& games, std::span<const uint32_t> group, const BestRules& rules);

// The rows of each group but its best: what "keep the best of each" takes the checks of. A row
// whose file is missing is never the best while another one of the group is there.
std::vector<uint32_t> Surplus(const GameList& games, const RowGroups& groups,
                              const BestRules& rules);

}  // namespace bw
