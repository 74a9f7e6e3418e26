// Knows the built-in menu program again in a ROM, by pieces of its code that are the same in every
// cart: the builder assembles it anew each time, so it has no fixed bytes as a whole.
#pragma once

#include <cstdint>
#include <optional>

#include "builder/tables/cart_file.h"
#include "rom/board_tables.h"

namespace bw {

// What the reset code in the menu's last bank tells.
struct MenuReset {
    BoardType board = BoardType::kCoolboy;  // that it writes to the registers of
    uint32_t units = 0;                     // 16 KB: what it has the board show
};

// Nothing if it isn't the built-in menu's.
std::optional<MenuReset> ReadMenuReset(const CartBank& lastBank);

// True if the menu's variables lie, and its last routine runs, where this version of the program
// has them.
bool IsThisMenuProgram(const CartBank& programBank);

}  // namespace bw
