#include "system_store.h"

namespace bw::test {

std::vector<const char*> StoreKinds() {
    return {"memory", "sqlite", "guarded"};
}

std::unique_ptr<SettingsStore> MakeSystemStore() {
    return nullptr;
}

}  // namespace bw::test
