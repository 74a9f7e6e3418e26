#include "cli/unsupported_games.h"

#include <algorithm>

#include "builder/layout/board_space.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kMappers = 4096;  // that a header can tell

bool IsUnsupported(const GameEntry& game, BoardType board) {
    return game.checked && game.HasValidHeader() && !GameSpan(game, board);
}

// The board's line among the reasons: COOLBOY's and MINDKIDS' is the first, COOLGIRL's the last.
std::u16string Reason(const GameEntry& game, BoardType board, Language language) {
    const std::u16string lines = WhyUnfit(game, language);
    return board == BoardType::kCoolgirl ? lines.substr(lines.rfind(u'\n') + 1)
                                         : lines.substr(0, lines.find(u'\n'));
}

}  // namespace

std::vector<std::u16string> UncheckUnsupported(GameList& games, BoardType board,
                                               Language language) {
    std::vector<std::u16string> lines;
    size_t row = 0;  // as in the messages of a build that refuses them
    for (GameEntry& game : games) {
        ++row;
        if (!IsUnsupported(game, board)) continue;
        lines.push_back(FormatText(LoadText(TextId::kGameLeftOut, language), row,
                                   VisibleText(game.name), Reason(game, board, language)));
        game.checked = false;
    }
    return lines;
}

std::u16string WayOut(const GameList& games, BoardType board, Language language) {
    const auto unsupported = [&](BoardType on) {
        return std::ranges::count_if(
            games, [on](const GameEntry& game) { return IsUnsupported(game, on); });
    };
    const auto count = unsupported(board);
    if (count == 0) return {};
    std::u16string text = FormatText(LoadText(TextId::kBoardRunsMappers, language),
                                     BoardName(board), MappersOf(board)) +
                          u"\n";
    if (board != BoardType::kCoolgirl && unsupported(BoardType::kCoolgirl) < count) {
        text += LoadText(TextId::kTryCoolgirl, language) + u"\n";
    }
    return text + FormatText(LoadText(TextId::kTrySkipping, language), count);
}

std::u16string MappersOf(BoardType board) {
    std::u16string list;
    for (uint32_t mapper = 0; mapper < kMappers; ++mapper) {
        if (!BoardTakesMapper(board, mapper)) continue;
        list += FormatText(list.empty() ? u"%d" : u", %d", mapper);
    }
    return list;
}

}  // namespace bw
