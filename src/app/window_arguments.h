// The command line of the window program, parsed but not carried out.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace bw {

struct WindowArguments {
    // Images and list files to add, absolute; nothing if a text is to be shown instead.
    std::optional<std::vector<std::filesystem::path>> files;
    std::optional<std::filesystem::path> play{};  // shown in the play window alone; absolute
    std::string text;                             // help, version, or what is wrong with the usage
    int exitCode = 0;                             // with a text: 0 help and version, 2 wrong usage
};

// Options of Qt's own, such as "-platform offscreen", are passed over: they are its to read.
// `words` are those behind the program's name, in UTF-8.
WindowArguments ParseWindowArguments(const std::vector<std::string>& words);

}  // namespace bw
