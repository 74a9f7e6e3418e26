// The commands that look at games and lists.
#pragma once

#include "cli/arguments.h"

namespace bw {

// Exit codes as Execute gives them.
int TellOfImages(const Arguments& arguments);
int ListGames(const Arguments& arguments);

}  // namespace bw
