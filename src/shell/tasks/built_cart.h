// The cart that the window has built last, as long as its file is what the build has left there.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "builder/build_driver.h"
#include "rom/board_tables.h"

namespace bw {

struct BuiltCart {
    std::filesystem::path file;  // absolute
    RomFormat format = RomFormat::kNes20;
    BoardType board = BoardType::kCoolboy;
    std::vector<std::filesystem::path> images;  // absolute, in the menu's order
    std::vector<std::u16string> names;          // as they stand on the console, in that order
    // Of the file, as the build has left it.
    uintmax_t bytes = 0;
    std::filesystem::file_time_type written{};
};

BuiltCart CartOf(const BuildOutcome& outcome);
// The file is what the build has left there. Looks at its size and time alone.
bool IsAsBuilt(const BuiltCart& cart);

}  // namespace bw
