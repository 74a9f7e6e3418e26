// The commands that open a cart.
#pragma once

#include <filesystem>
#include <optional>

#include "cli/arguments.h"

namespace bw {

// Lists the cart that is the one input of "list"; nothing if that is no cart, but games.
std::optional<int> ListCart(const Arguments& arguments);

// 0: all games are written, and none has other data than was built in; else 1.
int SplitCartFile(const Arguments& arguments);

// 0: no byte of the cart differs; else 1.
int CompareCartFiles(const Arguments& arguments);

}  // namespace bw
