#pragma once

#include <string_view>

namespace bw {

// The program's version as shown and compared, e.g. "0.2.0".
std::string_view ProgramVersion();

}  // namespace bw
