// Which program the desktop opens game lists (.fcl) with.
#pragma once

#include <optional>

#include "language/language.h"

namespace bw {

// Whether it is this program, for this user, as SetListsOpenHere has made it. Nothing where the
// package says it to the desktop and there is nothing to choose.
std::optional<bool> ListsOpenHere();

// Has lists open with this very program file, or takes that back and leaves nothing behind.
// `language` is that of the type's name, which the desktop shows. False if the system refuses.
bool SetListsOpenHere(bool here, Language language);

}  // namespace bw
