#include "list/collection/same_games.h"

namespace bw {

RowGroups SameData(const GameList&) {
    return {};
}

RowGroups SameGames(const GameList&) {
    return {};
}

uint32_t BestOf(const GameList&, std::span<const uint32_t> group, const BestRules&) {
    return group[0];
}

std::vector<uint32_t> Surplus(const GameList&, const RowGroups&, const BestRules&) {
    return {};
}

}  // namespace bw
