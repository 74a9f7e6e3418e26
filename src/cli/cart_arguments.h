// The options of the commands that open a cart.
#pragma once

#include "cli/arguments.h"
#include "cli/command_options.h"

namespace bw {

void AddCartCommands(const CommandOptions& program, Arguments& arguments);

}  // namespace bw
