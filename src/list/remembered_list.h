// The list that the program remembers from run to run: the text of a list file, and the widths of
// the columns.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

#include "list/game_list.h"
#include "list/list_columns.h"
#include "list/list_file.h"

namespace bw {

// Pixels; 0 for a column that keeps the width it has.
using ColumnWidths = std::array<uint32_t, kListColumns>;

struct RememberedList {
    GameList games;
    ListLoadResult load;
    ColumnWidths widths{};
};

// UTF-8 without a byte order mark. `base` is the program's folder.
std::string StoreRememberedList(const GameList& games, const ColumnWidths& widths,
                                const std::filesystem::path& base);

// Survives any bytes: what isn't there or makes no sense is left out, at most kListLimit entries
// come in.
RememberedList LoadRememberedList(std::span<const uint8_t> text, const std::filesystem::path& base);

}  // namespace bw
