// What the program says without a window of its own.
#pragma once

#include <string>
#include <string_view>

namespace bw {

// An answer that somebody waits for: on standard output, or standard error for a problem. On
// Windows, where a program with windows has no such thing by itself: on the console that it was
// started from, else in a box. UTF-8, with a line's end.
void Answer(std::string_view text, bool problem);

// Words for whoever looks for them later; nobody has to answer or close them.
void NoteProblem(std::string_view line);

// Why there can't be a window. `reason` is what Qt says of it.
std::string NoWindowText(std::string_view reason);

}  // namespace bw
