// The commands that convert designs.
#pragma once

#include "cli/arguments.h"

namespace bw {

// Exit codes as Execute gives them: a problem is told on standard error, and nothing is written.
int PackDesignFolder(const Arguments& arguments);
int UnpackDesignFile(const Arguments& arguments);

}  // namespace bw
