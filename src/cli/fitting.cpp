#include "cli/fitting.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <vector>

#include "builder/layout/board_fit.h"
#include "builder/layout/board_space.h"
#include "cli/json.h"
#include "cli/text_table.h"
#include "rom/image_crcs.h"
#include "support/text.h"

namespace bw {
namespace {

double Megabytes(uint64_t bytes) {
    return static_cast<double>(bytes) / 1048576;
}

BoardFit Measure(const GameList& games, const Arguments& arguments) {
    return MeasureFit(games, arguments.settings, arguments.board);
}

// The rows that could share the board's room and whose sums nobody has read.
std::vector<uint32_t> RowsWithoutSums(const GameList& games, BoardType board, bool all) {
    std::vector<uint32_t> rows;
    for (uint32_t row = 0; row < games.size(); ++row) {
        const GameEntry& game = games[row];
        if ((all || game.checked) && !game.crcs && GameSpan(game, board)) rows.push_back(row);
    }
    return rows;
}

std::vector<uint32_t> UncheckedRows(const GameList& games) {
    std::vector<uint32_t> rows;
    for (uint32_t row = 0; row < games.size(); ++row) {
        if (!games[row].checked) rows.push_back(row);
    }
    return rows;
}

void Check(GameList& games, std::span<const uint32_t> rows, bool checked,
           const Arguments& arguments, TerminalUser& user) {
    const Language language = user.UiLanguage();
    const TextId line = checked ? TextId::kTakenToFill : TextId::kLeftOutForRoom;
    for (const uint32_t row : rows) {
        games[row].checked = checked;
        const uint64_t bytes = GameSpan(games[row], arguments.board).value_or(0);
        user.Note(FormatText(LoadText(line, language), row + 1, VisibleText(games[row].name),
                             bytes / 1024));
    }
    if (rows.empty()) return;
    user.Note(
        FormatText(LoadText(checked ? TextId::kGamesTakenToFill : TextId::kGamesLeftOut, language),
                   rows.size(), CountChecked(games)));
}

// The two kinds of boards that run different games.
struct BoardKind {
    const char16_t* title;
    const char* key;
    BoardType board;
};
constexpr std::array kKinds{BoardKind{u"COOLBOY, MINDKIDS", "coolboy", BoardType::kCoolboy},
                            BoardKind{u"COOLGIRL", "coolgirl", BoardType::kCoolgirl}};

std::u16string Verdict(const BoardFit& fit, Language language) {
    std::u16string text;
    const auto add = [&](std::u16string_view words) {
        text.append(text.empty() ? u"" : u" ").append(words);
    };
    if (fit.OverBytes() != 0) {
        add(FormatText(LoadText(TextId::kOverByBytes, language), Megabytes(fit.OverBytes())));
    }
    if (fit.OverGames() != 0) {
        add(FormatText(LoadText(TextId::kOverByGames, language), fit.OverGames()));
    }
    if (fit.Fits()) {
        add(FormatText(LoadText(TextId::kRoomIsLeft, language), Megabytes(fit.LeftBytes())));
    }
    return text;
}

}  // namespace

bool ReadSharedSums(GameList& games, const Arguments& arguments, bool all, TerminalUser& user) {
    GameList whole = games;
    for (GameEntry& game : whole)
        game.checked = game.checked || all;
    const std::vector<uint32_t> rows = RowsWithoutSums(games, arguments.board, all);
    if (rows.empty() || Measure(whole, arguments).Fits()) return true;
    std::vector<std::filesystem::path> paths;
    for (const uint32_t row : rows)
        paths.push_back(TextPath(games[row].path));
    const auto sums = ReadImageSums(paths, [&](size_t done, size_t total) {
        user.Progress(
            FormatText(LoadText(TextId::kLookingForEqualData, user.UiLanguage()), done, total));
        return !user.Cancelled();
    });
    for (size_t i = 0; i < std::min(rows.size(), sums.size()); ++i) {
        if (sums[i]) games[rows[i]].crcs = sums[i]->data;
    }
    return !user.Cancelled();
}

bool FitToBoard(GameList& games, const Arguments& arguments, TerminalUser& user) {
    if (!arguments.leaveOut && !arguments.fillUp) return true;
    if (!ReadSharedSums(games, arguments, arguments.fillUp, user)) return false;
    const std::vector<uint32_t> unchecked = UncheckedRows(games);
    if (arguments.leaveOut) {
        Check(games,
              RowsToLeaveOut(games, arguments.settings, arguments.board, *arguments.leaveOut),
              false, arguments, user);
    }
    if (arguments.fillUp) {  // not from what has just been left out
        Check(games, RowsToFillUp(games, arguments.settings, arguments.board, unchecked), true,
              arguments, user);
    }
    return true;
}

std::string WhyTable(const GameList& games, Language language) {
    TextTable table;
    table.Row({LoadText(TextId::kFileName, language), kKinds[0].title, kKinds[1].title});
    for (const GameEntry& game : games) {
        std::vector<std::u16string> cells{game.name};
        for (const BoardKind& kind : kKinds) {
            const std::u16string why = WhyUnfit(game, kind.board, language);
            cells.push_back(why.empty() ? LoadText(TextId::kGameRuns, language) : why);
        }
        table.Row(std::move(cells));
    }
    return games.empty() ? std::string() : table.Text();
}

std::string WhyJson(const GameList& games, Language language) {
    Json json;
    json.BeginObject();
    json.BeginArray("games");
    for (const GameEntry& game : games) {
        json.BeginObject();
        json.String("name", game.name);
        json.String("path", game.path);
        for (const BoardKind& kind : kKinds)
            json.String(kind.key, WhyUnfit(game, kind.board, language));
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

std::string FitTable(const GameList& games, const Arguments& arguments, Language language) {
    const auto text = [language](TextId id) { return LoadText(id, language); };
    const BoardFit fit = Measure(games, arguments);
    TextTable table;
    table.Row({text(TextId::kNumber), text(TextId::kFileName), text(TextId::kGameAdds)});
    size_t number = 0;
    for (const GameShare& share : fit.shares) {
        table.Row(
            {FormatText(u"%d", ++number), games[share.row].name,
             share.runs ? FormatText(u"%dKB", share.adds / 1024) : text(TextId::kGameRunsNot)});
    }
    const auto line = [](const std::u16string& words) { return ToUtf8(words) + "\n"; };
    return table.Text() +
           line(FormatText(text(TextId::kFitOfBoard), BoardName(arguments.board), fit.games,
                           fit.gameLimit, Megabytes(fit.usedBytes), Megabytes(fit.limitBytes))) +
           line(FormatText(text(TextId::kFitGaps), Megabytes(fit.dataBytes),
                           Megabytes(fit.gapBytes))) +
           line(Verdict(fit, language));
}

std::string FitJson(const GameList& games, const Arguments& arguments) {
    const BoardFit fit = Measure(games, arguments);
    Json json;
    json.BeginObject();
    json.Utf8("board", BoardName(arguments.board));
    json.Bool("fits", fit.Fits());
    json.Number("used", fit.usedBytes);
    json.Number("data", fit.dataBytes);
    json.Number("gaps", fit.gapBytes);
    json.Number("limit", fit.limitBytes);
    json.Number("left", fit.LeftBytes());
    json.Number("over", fit.OverBytes());
    json.Number("gameLimit", fit.gameLimit);
    json.Number("gamesOver", fit.OverGames());
    json.BeginArray("games");
    for (const GameShare& share : fit.shares) {
        json.BeginObject();
        json.String("name", games[share.row].name);
        json.String("path", games[share.row].path);
        json.Bool("runs", share.runs);
        json.Number("adds", share.adds);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Take();
}

}  // namespace bw
