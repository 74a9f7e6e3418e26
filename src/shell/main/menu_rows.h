// What the main menu holds: popups and entries, from top to bottom.
#pragma once

#include <span>

#include "shell/framework/command_menu.h"

namespace bw {

std::span<const MenuRow> MainMenuRows();

}  // namespace bw
