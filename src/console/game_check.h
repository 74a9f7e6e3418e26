// The check of one game: runs it from the cart, and where that raises a doubt, by itself.
#pragma once

#include <filesystem>

#include "console/alone_player.h"
#include "console/cart_check.h"
#include "console/finding_words.h"
#include "console/menu_driver.h"

namespace bw {

struct GameCheckTools {
    const CheckSubject& subject;
    const CheckOptions& options;
    const FindingWords& words;
    Console& console;
    MenuDriver& menu;
    AlonePlayer& alone;
    std::filesystem::path scratch;  // a file for the image that a game is run by alone
};

// The game with its name and path, before anything is known of it.
CheckedGame UncheckedGame(const CheckSubject& subject, uint32_t index);

// A problem of either emulator. An image that none takes leaves a doubt unproved, and what can't be
// proved isn't said.
ConsoleResult<CheckedGame> CheckGame(const GameCheckTools& tools, uint32_t index);

}  // namespace bw
