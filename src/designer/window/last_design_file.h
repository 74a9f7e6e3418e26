// The file that the dialogs for designs and their parts start from, in the main window too.
#pragma once

#include <filesystem>

#include "settings/settings_store.h"

namespace bw {

// Its folder; empty if there is none yet.
std::filesystem::path LastDesignFolder(const SettingsStore& store);
void KeepLastDesignFile(SettingsStore& store, const std::filesystem::path& file);

}  // namespace bw
