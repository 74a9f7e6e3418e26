// The file of the user's settings, where they are in a file.
#pragma once

#include <filesystem>

#include "support/paths.h"

namespace bw {

inline std::filesystem::path SettingsFile() {
    return UserConfigFolder() / "settings.sqlite3";
}

}  // namespace bw
