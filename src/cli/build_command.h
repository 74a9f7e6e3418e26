// The commands that make a ROM, or the files for a menu of the user's own.
#pragma once

#include "cli/arguments.h"

namespace bw {

// Exit codes as Execute gives them.
int Build(const Arguments& arguments);
int ExportTables(const Arguments& arguments);

}  // namespace bw
