// The check of a design.
#pragma once

#include "cli/arguments.h"

namespace bw {

// Prints what is wrong with the design. Exit codes as Execute gives them; 1 if a build would refuse
// the design.
int CheckDesignFile(const Arguments& arguments);

}  // namespace bw
