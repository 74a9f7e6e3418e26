#include "support/paths.h"
#include "support/settings_store.h"

namespace bw {

std::unique_ptr<SettingsStore> MakeUserStore() {
    return MakeSqliteStore(UserConfigFolder() / "settings.sqlite3");
}

}  // namespace bw
