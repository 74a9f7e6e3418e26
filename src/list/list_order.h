// The order that a click on a column's title asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "list/game_list.h"
#include "list/list_columns.h"

namespace bw {

// For each new row the row that comes there. Rows with equal keys keep their order; descending is
// the ascending order turned round, theirs too. Nothing for a column that is no key.
std::optional<std::vector<uint32_t>> SortedRows(const GameList& games, ListColumn column,
                                                bool descending);

}  // namespace bw
