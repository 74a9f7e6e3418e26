// The settings stores that this system has.
#pragma once

#include <memory>
#include <vector>

#include "settings/settings_store.h"

namespace bw::test {

// "system" among them where the system has a store of its own.
std::vector<const char*> StoreKinds();
// A store of that kind with nothing in it, apart from the user's. One at a time.
std::unique_ptr<SettingsStore> MakeSystemStore();

}  // namespace bw::test
