#include "list/collection/name_changes.h"

namespace bw {

std::vector<size_t> NameRooms(const GameList& games, const ConsoleMenu&) {
    return std::vector<size_t>(games.size(), 20);
}

std::vector<NameChange> TidyChanges(const GameList&, std::span<const uint32_t>, const TidyRules&,
                                    std::span<const size_t>) {
    return {};
}

std::unordered_set<uint32_t> WantedCrcs(const RowSums&) {
    return {};
}

DatChanges NamesFromDat(const GameList&, std::span<const uint32_t>, const RowSums&, const DatNames&,
                        const std::optional<TidyRules>&, std::span<const size_t>) {
    return {};
}

}  // namespace bw
