// Names that stand for several files.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bw {

// The paths that a word of the command line means, in order of name. Where shells look for files by
// "*" and "?" it is the one of that name; on Windows, where programs do, all that match, or the
// name itself if none does.
std::vector<std::filesystem::path> NamedPaths(const std::string& name);

}  // namespace bw
