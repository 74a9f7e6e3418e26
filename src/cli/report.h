// What the commands print: tables for people and JSON for programs, all in UTF-8.
#pragma once

#include <string>

#include "builder/build_driver.h"
#include "language/language.h"
#include "list/game_list.h"
#include "support/file_problem.h"

namespace bw {

// One row for each game: sizes, mapper, flags and which boards take it; below them why a board
// doesn't. Nothing without games.
std::string InfoTable(const GameList& games, Language language);
std::string InfoJson(const GameList& games, Language language);

// One row for each entry: ordinal among the checked ones, name, remark, path.
std::string ListTable(const GameList& games);
// With "same", the index from 0 of the first entry that is a version of the same game.
std::string ListJson(const GameList& games);

// The report of a finished build: ROM size, board, and for each game its place, span, CRC and
// registers.
std::string BuildReportJson(const BuildOutcome& outcome);

// The same for people: one row for each game and the menu, with its places in the ROM.
std::string BuildTable(const BuildOutcome& outcome, Language language);
// How much of the board is in use.
std::u16string SpaceText(const BuildOutcome& outcome, Language language);

// To standard output, which a problem names "stdout".
FileResult<> PrintOut(const std::string& text);

}  // namespace bw
