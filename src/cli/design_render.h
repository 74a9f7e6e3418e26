// Pictures of designs.
#pragma once

#include <string>
#include <vector>

#include "cli/arguments.h"

namespace bw {

// The layers of the screen that a picture may show.
std::vector<std::string> LayerNames();

// Writes the picture that the arguments tell of. Exit codes as Execute gives them.
int RenderDesign(const Arguments& arguments);

}  // namespace bw
