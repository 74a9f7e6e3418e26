// What the commands print: tables for people and JSON for programs, all in UTF-8.
#pragma once

#include <string>

#include "builder/build_driver.h"
#include "designer/model/design_document.h"
#include "language/language.h"
#include "list/game_list.h"
#include "support/file_problem.h"

namespace bw {

// One row for each game: sizes, mapper, flags and which boards take it.
std::string InfoTable(const GameList& games, Language language);
std::string InfoJson(const GameList& games);

// One row for each entry: ordinal among the checked ones, name, remark, path.
std::string ListTable(const GameList& games);
std::string ListJson(const GameList& games);

// The report of a finished build: ROM size, board, and for each game its place, span, CRC and
// registers.
std::string BuildReportJson(const BuildOutcome& outcome);

// What a design holds: its texts and where they stand, how many tiles and sprites, which cursor.
std::string DesignTable(const DesignDocument& design, Language language);
std::string DesignJson(const DesignDocument& design);

// To standard output, which a problem names "stdout".
FileResult<> PrintOut(const std::string& text);

}  // namespace bw
