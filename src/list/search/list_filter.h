// What the box above the list leaves: rows with a text in them, and words that ask for more.
//   board:coolboy|mindkids|coolgirl  mapper:4  size:>256k  battery:yes|no  missing:  damaged:  same: checked:
// A size is that of PRG and CHR; it has an optional <, >, <=, >= and k or m. A word with an empty
// value asks for "yes", and "missing:no" turns it round. "same:" is for versions of one game,
// "same:data" for equal bytes alone. What is no such word is looked for as it stands, blanks
// included, in name, remark and path, letter case aside; the blanks next to a word only part it
// from that. A word with a value that makes no sense is such a text. All of it must hold.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "list/game_list.h"

namespace bw {

// The rows that are left, in rising order; an empty text leaves all.
std::vector<uint32_t> FilteredRows(const GameList& games, std::u16string_view text);

}  // namespace bw
