// Making a list fit a board, and telling how it does.
#pragma once

#include <string>

#include "cli/arguments.h"
#include "cli/terminal_user.h"
#include "list/game_list.h"

namespace bw {

// Reads the sums of games by which a board's room could be shared: of the checked ones, and of all
// with `all`. Not if there is room for them even without. False if the user has stopped it.
bool ReadSharedSums(GameList& games, const Arguments& arguments, bool all, TerminalUser& user);

// What --leave-out and --fill-up ask for: changes the checks, with a line on each game. False if
// the user has stopped it.
bool FitToBoard(GameList& games, const Arguments& arguments, TerminalUser& user);

// Why boards don't run games: a row for each game, a column for each kind of board.
std::string WhyTable(const GameList& games, Language language);
std::string WhyJson(const GameList& games, Language language);

// What each checked game adds to the board; below it what is in use, what the gaps cost, and what
// is left.
std::string FitTable(const GameList& games, const Arguments& arguments, Language language);
std::string FitJson(const GameList& games, const Arguments& arguments);

}  // namespace bw
