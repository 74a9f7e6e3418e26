// What the box above the list leaves: rows with a text in them, and words that ask for more.
//   board:coolboy|mindkids|coolgirl  mapper:4  size:>256k  battery:yes|no  missing:  same: checked:
// A size has an optional <, >, <=, >= and k or m; a word with an empty value asks for "yes", and
// "missing:no" turns it round. What is no such word is looked for as it stands, blanks included, in
// name, remark and path, letter case aside. A word with a value that makes no sense is such a text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "list/game_list.h"
#include "rom/board_tables.h"

namespace bw {

// The rows that are left, in rising order; an empty text leaves all.
std::vector<uint32_t> FilteredRows(const GameList& games, std::u16string_view text);

}  // namespace bw
