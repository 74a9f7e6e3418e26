// New names for rows of the list, to be looked at before they are taken: tidied ones, and those of
// a database.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "list/collection/dat_file.h"
#include "list/collection/tidy_name.h"
#include "list/console_name.h"
#include "list/game_list.h"
#include "rom/image_crcs.h"

namespace bw {

struct NameChange {
    uint32_t row;
    std::u16string oldName;
    std::u16string newName;
    bool taken = true;
};

// The characters that the name of a row has room for on the console, behind its number; of a row
// that isn't checked as if it were. One value for each row of the list.
std::vector<size_t> NameRooms(const GameList& games, const ConsoleMenu& menu);

// Rows whose name changes, in the order of `rows`. `rooms`, if not empty: one for each row of the
// list; longer names are shortened to it by whole words.
std::vector<NameChange> TidyChanges(const GameList& games, std::span<const uint32_t> rows,
                                    const TidyRules& rules, std::span<const size_t> rooms = {});

// The sums of some rows of a list, to find them in databases by: one for each of `rows`, nothing
// for what can't be read.
using RowSums = std::vector<std::optional<ImageSums>>;
// What ReadDat is to look for.
std::unordered_set<uint32_t> WantedCrcs(const RowSums& sums);

struct DatChanges {
    std::vector<NameChange> changes;
    size_t unknown = 0;  // rows that the database doesn't have
    size_t unread = 0;   // rows without sums
    size_t same = 0;     // rows that have the database's name already
};
// By the CRC of the data without the header, then with it. `tidy`: rules that the database's names
// go through too.
DatChanges NamesFromDat(const GameList& games, std::span<const uint32_t> rows, const RowSums& sums,
                        const DatNames& names, const std::optional<TidyRules>& tidy,
                        std::span<const size_t> rooms = {});

}  // namespace bw
