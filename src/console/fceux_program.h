// FCEUX as a program of this system: where it lies and how it is run without a screen.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "console/piped_process.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

// The program's file; see FindEmulator.
std::optional<std::filesystem::path> FindFceux();
// Whether it prints its version and ends when it is asked to.
bool TellsVersion(const std::filesystem::path& program);

// A path by which FCEUX can open the file or folder, which is there.
std::filesystem::path FceuxPath(const std::filesystem::path& path);

// How the emulator runs under a script.
struct FceuxRun {
    std::filesystem::path program;
    std::filesystem::path home;    // a folder of its own, which holds all that it reads and writes
    std::filesystem::path script;  // in Lua, below `home`
    std::filesystem::path rom;     // absolute
    bool sound = false;            // on the user's loudspeakers
};
PipedCommand CommandOf(const FceuxRun& run);
// Where it puts what it prints.
std::filesystem::path FceuxLog(const std::filesystem::path& home);

// A path as a word of a command line.
inline std::string PathWord(const std::filesystem::path& path) {
    return WideToBytes(PathText(path));
}

}  // namespace bw
