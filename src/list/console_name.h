// How a game's name stands in the menu on the console.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "list/game_list.h"

namespace bw {

// In the console's alphabet: capitals, '?' for units above 128.
std::string ConsoleName(std::u16string_view name);

// The characters that a line of the screen has room for behind column `nameColumn` (0 to 31).
uint32_t ConsoleRoom(uint32_t nameColumn);

// What decides how a line of the menu looks.
struct ConsoleMenu {
    NumberSettings numbers;
    uint32_t nameColumn = 6;  // screen column at which a name starts
    bool operator==(const ConsoleMenu&) const = default;
};

struct ConsoleLine {
    std::string text;
    bool cut = false;      // characters are missing at the end
    bool unknown = false;  // a '?' stands for what the console has no tile for
};

// The line of the entry with this ordinal (from 1) among `checkedCount` in a built ROM. A name that
// opens a bank of the tables keeps its whole length there; which one that is, a build alone knows.
ConsoleLine ConsoleLineOf(const GameEntry& entry, size_t ordinal, size_t checkedCount,
                          const ConsoleMenu& menu);

}  // namespace bw
