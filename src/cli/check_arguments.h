// The options of the command "check".
#pragma once

#include <functional>
#include <string>

#include "cli/arguments.h"
#include "cli/command_options.h"

namespace bw {

void AddCartCheckOptions(const CommandOptions& options, Arguments& arguments);

// Those that `add` adds say how to build: `given` becomes the name of one that stands on the
// command line.
void AddBuildingOptions(const CommandOptions& options, std::string& given,
                        const std::function<void()>& add);

}  // namespace bw
