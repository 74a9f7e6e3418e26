// The names of the games as the menu shows them, and the title line.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

#include "builder/tables/table_banks.h"
#include "support/file_problem.h"

namespace bw {

struct NameTableOptions {
    uint32_t nameColumn = 6;     // screen column (0 to 31) at which a name starts
    std::string removalPattern;  // ECMAScript; what matches is cut out of the names; may be empty
    TableWriteOptions files;
};

// game_list_0.asm to game_list_F.asm, game_list_bank.asm and game_title.asm. `bankCount` receives
// the number of banks, also when files fail; it keeps its value if `names` is empty or the pattern
// isn't valid, of which no table can be made.
//
// A name is cut to the screen's 32 columns, except the one that opens a bank after the first: that
// one stays whole, and so it is meant.
FileResult<> GenerateNameTables(std::span<const std::u16string> names,
                                const std::filesystem::path& folder,
                                const NameTableOptions& options, uint32_t& bankCount);

}  // namespace bw
