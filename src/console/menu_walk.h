// Ways through the built-in menu on a console that has a cart of ours in it.
#pragma once

#include <cstdint>

#include "console/emulator.h"

namespace bw {

// From power-on until the menu shows and rests. kRefused where it doesn't come.
ConsoleResult<> RunToMenu(Console& console);

// For a console whose menu shows. Items count from 0.
ConsoleResult<uint32_t> SelectedItem(Console& console);
// Turns to the page of an item of the list and selects it, without a button's sound. Comes back
// when the page is drawn.
ConsoleResult<> GoToItem(Console& console, uint32_t item, uint32_t pageSize);

}  // namespace bw
