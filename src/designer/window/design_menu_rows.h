// What the designer's menu holds, from top to bottom.
#pragma once

#include <span>

#include "shell/framework/command_menu.h"

namespace bw {

std::span<const MenuRow> DesignMenuRows();

}  // namespace bw
