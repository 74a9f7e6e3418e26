// Designs in numbers, and conversion between designs and their parts.
#pragma once

#include <string>
#include <vector>

#include "cli/arguments.h"

namespace bw {

// What a file may hold, by the names that users give it. The first list can be read, the second
// written.
std::vector<std::string> LoadedPartNames();
std::vector<std::string> SavedPartNames();

// Both carry out a command; exit codes as Execute gives them.
int DesignInfo(const Arguments& arguments);
int ConvertDesign(const Arguments& arguments);

}  // namespace bw
