// The list, when the settings can't take it.
#pragma once

#include <filesystem>
#include <optional>

#include "settings/guarded_store.h"

namespace bw {

// To be called at the end, when the list has been written to the store. If the store below doesn't
// have it, the list is saved as a list file of a new name: in UserConfigFolder(), else in the
// system's folder for temporary files. The file; nothing if there was nothing to save.
std::optional<std::filesystem::path> RescueList(GuardedStore& store);

}  // namespace bw
