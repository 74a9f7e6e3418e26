// Images that a build takes in though they aren't whole, or say that they are larger.
#pragma once

#include <span>
#include <vector>

#include "language/language.h"
#include "rom/multicart_item.h"
#include "support/diagnostic.h"

namespace bw {

// A warning for each item whose file is shorter than its header says (0xFF takes the place of what
// is missing), or whose NES 2.0 header asks for more than bytes 4 and 5 can tell, which is all that
// a build reads. The row is a game's ordinal; a menu is named by its file.
std::vector<Diagnostic> FindIncompleteImages(std::span<const MulticartItem> items,
                                             Language language);

}  // namespace bw
