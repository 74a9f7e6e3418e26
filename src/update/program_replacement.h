// A new program in the place of the running one. The old one is kept until the new one stands in
// its place, and goes at the next start; its name is never without a program, but for a moment on
// Windows (program_place.h).
#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <string_view>

#include "settings/settings_store.h"
#include "update/program_file.h"
#include "update/update_outcome.h"

namespace bw {

// Puts `downloaded`, which lies in the program's folder, in the program's place. Not done: program
// and settings are as they were, and `downloaded` is still there. A file by the old program's name
// that no update has left is the user's, and a reason not to. Killed on the way: the program's name
// has the old program or the new one, or on Windows none, until RemoveOldProgram() puts the old one
// back; what else is left that removes. The file isn't verified again: whoever can write in that
// folder could as well write to the program. `step` is called before each operation on files or
// settings, with its name; for tests.
UpdateOutcome ReplaceProgram(const ProgramFile& program, const std::filesystem::path& downloaded,
                             SettingsStore& store,
                             const std::function<void(std::string_view)>& step = {});

// Starts the program that stands in the place now, in its folder, without waiting for it.
bool StartProgram(const ProgramFile& program);

// Removes the program that an update has left: up to 5 times, 200 ms apart; what can't be removed
// then waits for the next start. Removes plain files only. Returns soon after `stop` was set.
void RemoveOldProgram(SettingsStore& store, const std::atomic<bool>& stop);

}  // namespace bw
