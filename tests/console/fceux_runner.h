// Runs programs for the console in FCEUX, driven by a Lua script, and collects what the script
// found. Scripts use the helpers of prelude.lua.
//
// Environment:
//   BANKWEAVER_TEST_DISPLAY  an X display to use, e.g. ":0" to watch; without it one Xvfb is
//                            started for the whole test program and ended with it
//   BANKWEAVER_FCEUX         the emulator's file; without it fceux from PATH or /usr/games
//   BANKWEAVER_SCREENSHOTS   a folder for the pictures that scripts take with shot()
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/temporary_folder.h"

namespace bw::console {

// What work RAM, name tables, CHR RAM and cartridge RAM hold at power-on.
enum class PowerOnRam { kPattern, kZero };

struct ConsoleRun {
    std::filesystem::path rom;
    // Lua text, run after the prelude.
    std::string script;
    // Names the run in messages and its pictures' file names; no blanks or slashes.
    std::string label = "run";
    PowerOnRam ram = PowerOnRam::kPattern;
    // The emulator is killed when it takes longer.
    std::chrono::seconds patience{60};
    // More files that the script wrote with a relative name and that the test wants to read; their
    // bytes come back in ConsoleResult::files.
    std::vector<std::string> wantedFiles = {};
};

struct ConsoleResult {
    // Empty if the script ran to its end. Otherwise what went wrong, with the emulator's output.
    std::string problem;
    std::map<std::string, std::string, std::less<>> values;
    std::map<std::string, std::string, std::less<>> files;

    bool Ok() const { return problem.empty(); }
    // The value of a key; "<no KEY>" if the script put none, so that comparisons tell.
    std::string At(std::string_view key) const;
    // The value as a decimal number; -1 if there is none.
    long Number(std::string_view key) const;
};

ConsoleResult RunOnConsole(const ConsoleRun& run);

// Several runs, as many at a time as the machine has processors. Results in the order of the runs.
std::vector<ConsoleResult> RunAllOnConsole(std::span<const ConsoleRun> runs);

std::string ReadWholeFile(const std::filesystem::path& path);
void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace bw::console
