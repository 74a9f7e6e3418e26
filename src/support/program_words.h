// What stands behind a program's name on its command line.
#pragma once

#include <string>
#include <vector>

namespace bw {

// The words that main() was called with, without the program's own: as UTF-8 on Windows, where main
// gets them in a code page that doesn't hold every name; as they came elsewhere. On Windows the
// console is told too that what the program prints is UTF-8, and line ends are printed as they are.
std::vector<std::string> ProgramWords(int count, char** values);

}  // namespace bw
