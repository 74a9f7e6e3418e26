// What is told where there is no emulator.
#pragma once

#include <string>

#include "language/language.h"

namespace bw {

// What is missing, and what to install.
std::u16string NoEmulatorText(Language language);

}  // namespace bw
