// What the HTTP client tells the debug output.
#pragma once

#include <string_view>

namespace bw {

// `code` is what the step's library or the host answered; 0 where neither said anything.
void LogHttpError(std::string_view step, int code);
void LogHttpWarning(std::string_view step, int code);

}  // namespace bw
