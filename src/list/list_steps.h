// The changes of a game list that can be taken back. Each applies itself and gives its inverse;
// entries move from the list into a step and back, they aren't copied.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "list/list_editor.h"

namespace bw {

// Rows are in rising order.
struct TakeRows {
    std::vector<uint32_t> rows;
};

// The entries' rows as they will be.
struct PutRows {
    std::vector<uint32_t> rows;
    std::vector<GameEntry> entries;
};

// The row first + i gets what is in the row first + from[i].
struct ReorderRows {
    uint32_t first;
    std::vector<uint32_t> from;
    std::optional<SortOrder> sort;  // for a sort the state that goes with the new order
};

// One after the other, so that a row may come twice.
struct SetTexts {
    std::u16string GameEntry::*field;
    std::vector<RowName> texts;
};

// Rows whose checks are turned round.
struct TurnedChecks {
    std::vector<uint32_t> rows;
};

// One after the other, as with texts.
struct SwapEntries {
    std::vector<RowEntry> entries;
};

// Another list in the place of all.
struct SwapList {
    GameList games;
};

using ListStep =
    std::variant<TakeRows, PutRows, ReorderRows, SetTexts, TurnedChecks, SwapEntries, SwapList>;

struct AppliedStep {
    ListStep inverse;
    ListResult result;
};

AppliedStep Apply(ListStep step, GameList& games, SortOrder& sort);

}  // namespace bw
