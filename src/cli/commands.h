// Carries out a parsed command line.
#pragma once

#include "cli/arguments.h"

namespace bw {

// The program's exit code: 0 done, 1 refused or failed; 2 and 3 see check_command.h. Data goes to
// standard output, everything else to standard error.
int Execute(const Arguments& arguments);

}  // namespace bw
