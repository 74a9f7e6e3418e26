// Runs programs for the console in FCEUX, without a display, driven by a Lua script, and collects
// what the script found. Scripts use the helpers of prelude.lua.
//
// Environment:
//   BANKWEAVER_FCEUX        the emulator's file; without it fceux from PATH or /usr/games
//   BANKWEAVER_SCREENSHOTS  a folder's whole path, for the pictures that scripts take with shot()
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "common/game_image.h"
#include "common/temporary_folder.h"

namespace bw::console {

using test::ReadText;
using test::WriteText;

// A run that didn't come to its end, in words with the emulator's output. Fails the test.
struct ConsoleFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct ScriptRun {
    std::filesystem::path rom;
    // Lua text, run after the prelude.
    std::string script;
    // Names the run in messages and its pictures' file names; no blanks, quotes or slashes.
    std::string label = "run";
    // What work RAM, name tables, CHR RAM and cartridge RAM hold at power-on: zeros, or a pattern.
    bool zeroRam = false;
    // The emulator is killed when it takes longer; long enough for a busy machine.
    std::chrono::seconds patience{300};
    // More files that the script wrote with a relative name and that the test wants to read; their
    // bytes come back in ScriptResult::files.
    std::vector<std::string> wantedFiles = {};
};

struct ScriptResult {
    std::map<std::string, std::string, std::less<>> values;
    std::map<std::string, std::string, std::less<>> files;

    // The value of a key; "<no KEY>" if the script put none, so that comparisons tell.
    std::string At(std::string_view key) const;
    // The value as a decimal number; -1 if there is none.
    long Number(std::string_view key) const;
};

ScriptResult RunOnConsole(const ScriptRun& run);

// Several runs, some at a time. Results in the order of the runs.
std::vector<ScriptResult> RunAllOnConsole(std::span<const ScriptRun> runs);

}  // namespace bw::console
