// The command that tries a cart's games in an emulator.
#pragma once

#include "cli/arguments.h"

namespace bw {

// 0: no game has an error; 1: one has, or couldn't be tried, or the check failed; 2: --only names a
// game that isn't there; 3: there is no emulator.
int Check(const Arguments& arguments);

}  // namespace bw
