#pragma once

#include <span>
#include <string>
#include <string_view>

namespace bw::nesasm {

enum class Action { Assemble, Help, Version, UsageError };

// What the words of the command line ask for.
struct CommandLine {
    Action action = Action::Assemble;
    std::string source;
    std::string output;   // the source with the extension .nes, if not named
    std::string listing;  // empty: none
    std::string symbols;  // empty: none
    std::string folder;   // that names start at; empty: the current one
    std::string error;    // what is wrong, at UsageError
};

CommandLine ParseCommandLine(std::span<const std::string_view> words);

std::string HelpText();

// A name on the command line or in a source as the system is to see it. One from the root of either
// kind of system stays as it is.
std::string FromFolder(std::string_view folder, std::string_view name);

// The path with the extension of its last part replaced by .nes, or with .nes added if it has none.
std::string DefaultOutput(std::string_view source);

}  // namespace bw::nesasm
