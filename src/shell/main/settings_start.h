// The stored settings at the program's start.
#pragma once

#include <functional>

#include "settings/settings_store.h"
#include "shell/framework/command_menu.h"

namespace bw {

// High bits of a command's wParam: the command repeats a stored setting and tells nothing.
inline constexpr int kCommandAtStart = 1 << 16;

// The language that the window begins in: the stored one, else the system's.
Language StartLanguage(const SettingsStore& store);

// Sends the window the commands that the menu would send for what is stored. The pass starts from
// unmarked toggles; `post` are the commands that are to run after it. The arguments of both are
// wParams of kMessageCommand.
void ApplyStoredSettings(const SettingsStore& store, CommandMenu& menu,
                         const std::function<void(int)>& send,
                         const std::function<void(int)>& post);

}  // namespace bw
