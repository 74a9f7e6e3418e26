// The options of the commands on designs.
#pragma once

#include "cli/arguments.h"
#include "cli/command_options.h"

namespace bw {

// The options that concern the names on the screen, which a menu and a picture of it share.
void AddListOptions(const CommandOptions& options, BuildSettings& settings);

// "design" with the commands below it. What is parsed goes to `arguments`, its command too.
void AddDesignCommands(const CommandOptions& program, Arguments& arguments);

}  // namespace bw
