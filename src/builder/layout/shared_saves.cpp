#include "builder/layout/shared_saves.h"

#include <algorithm>

#include "builder/layout/board_space.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kNamed = 5;  // games that a message names

}  // namespace

std::vector<uint32_t> SharingSaves(const std::vector<bool>& batteries) {
    std::vector<uint32_t> sharing;
    for (uint32_t game = 0; game < batteries.size(); ++game) {
        if (batteries[game]) sharing.push_back(game);
    }
    return sharing.size() > 1 ? sharing : std::vector<uint32_t>();
}

std::vector<uint32_t> RowsSharingSaves(const GameList& games, BoardType board) {
    std::vector<bool> batteries;
    batteries.reserve(games.size());
    for (const GameEntry& game : games) {
        batteries.push_back(game.checked && game.header.Battery() &&
                            GameSpan(game, board).has_value());
    }
    return SharingSaves(batteries);
}

std::u16string SharedSavesText(const GameList& games, const std::vector<uint32_t>& rows,
                               Language language) {
    if (rows.empty()) return {};
    const std::vector<uint32_t> ordinals = Ordinals(games);
    std::u16string names;
    for (size_t i = 0; i < std::min(rows.size(), kNamed); ++i) {
        names += FormatText(names.empty() ? u"%d %s" : u", %d %s", ordinals[rows[i]],
                            VisibleText(games[rows[i]].name));
    }
    if (rows.size() > kNamed) {
        names += FormatText(LoadText(TextId::kAndMoreGames, language), rows.size() - kNamed);
    }
    return FormatText(LoadText(TextId::kSavesInOnePlace, language), rows.size(), names);
}

}  // namespace bw
