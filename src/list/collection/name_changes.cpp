#include "list/collection/name_changes.h"

#include <algorithm>
#include <utility>

namespace bw {
namespace {

size_t RoomOf(std::span<const size_t> rooms, uint32_t row) {
    return row < rooms.size() ? rooms[row] : std::u16string::npos;
}

// The change of one row, or nothing if its name stays.
std::optional<NameChange> ChangeTo(const GameList& games, uint32_t row, std::u16string name,
                                   std::span<const size_t> rooms) {
    const std::u16string& old = games[row].name;
    name = ShortenByWords(name, RoomOf(rooms, row));
    if (name.empty() || name == old) return std::nullopt;
    return NameChange{.row = row, .oldName = old, .newName = std::move(name)};
}

}  // namespace

std::vector<size_t> NameRooms(const GameList& games, const ConsoleMenu& menu) {
    const GameEntry nameless;
    const size_t checked = CountChecked(games);
    const std::vector<uint32_t> ordinals = Ordinals(games);
    const size_t line = ConsoleRoom(menu.nameColumn);
    std::vector<size_t> rooms;
    rooms.reserve(games.size());
    for (size_t row = 0; row < games.size(); ++row) {
        const size_t count = checked + (games[row].checked ? 0 : 1);
        const size_t number =
            DisplayName(nameless, ordinals[row], count, menu.numbers, NameRules::kRomBuild).size();
        rooms.push_back(line - std::min(number, line));
    }
    return rooms;
}

std::vector<NameChange> TidyChanges(const GameList& games, std::span<const uint32_t> rows,
                                    const TidyRules& rules, std::span<const size_t> rooms) {
    std::vector<NameChange> changes;
    for (const uint32_t row : rows) {
        if (row >= games.size()) continue;
        auto change = ChangeTo(games, row, TidyName(games[row].name, rules), rooms);
        if (change) changes.push_back(*std::move(change));
    }
    return changes;
}

std::unordered_set<uint32_t> WantedCrcs(const RowSums& sums) {
    std::unordered_set<uint32_t> wanted;
    for (const std::optional<ImageSums>& sum : sums) {
        if (sum) wanted.insert({sum->headerless, sum->whole});
    }
    return wanted;
}

DatChanges NamesFromDat(const GameList& games, std::span<const uint32_t> rows, const RowSums& sums,
                        const DatNames& names, const std::optional<TidyRules>& tidy,
                        std::span<const size_t> rooms) {
    DatChanges result;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i] >= games.size()) continue;
        if (!sums[i]) {
            ++result.unread;
            continue;
        }
        auto found = names.byCrc.find(sums[i]->headerless);
        if (found == names.byCrc.end()) found = names.byCrc.find(sums[i]->whole);
        if (found == names.byCrc.end()) {
            ++result.unknown;
            continue;
        }
        std::u16string name = tidy ? TidyName(found->second, *tidy) : found->second;
        auto change = ChangeTo(games, rows[i], std::move(name), rooms);
        if (change) {
            result.changes.push_back(*std::move(change));
        } else {
            ++result.same;
        }
    }
    return result;
}

}  // namespace bw
