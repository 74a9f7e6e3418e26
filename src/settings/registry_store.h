// The settings store of Windows.
#pragma once

#include <memory>
#include <string>

#include "settings/settings_store.h"

namespace bw {

// In the registry, with all keys below `base` of HKEY_CURRENT_USER; empty for that key itself. Safe
// for use from several threads and several running programs. Beyond ASCII, letter case doesn't
// count in names either.
std::unique_ptr<SettingsStore> MakeRegistryStore(std::string base = {});

}  // namespace bw
