// How the assembler is started.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bw {

struct AssemblerCall {
    std::vector<std::string> words;  // of its command line
    std::filesystem::path folder;    // that it starts in
};

// For `source` to be assembled in `folder`: started there with the source as its one argument, or,
// where the system starts no process in a folder of so long a name, told of the folder.
AssemblerCall CallOf(const std::filesystem::path& source, const std::filesystem::path& folder);

}  // namespace bw
