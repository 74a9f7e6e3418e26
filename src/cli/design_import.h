// Pictures that become screens.
#pragma once

#include "cli/arguments.h"

namespace bw {

// Puts a picture into a design, or into the default screen. Exit codes as Execute gives them: a
// problem is told on standard error, and nothing is written.
int ImportPictureFile(const Arguments& arguments);

}  // namespace bw
