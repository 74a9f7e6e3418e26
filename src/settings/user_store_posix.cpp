#include "settings/settings_store.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

std::filesystem::path SettingsFile() {
    return UserConfigFolder() / "settings.sqlite3";
}

}  // namespace

std::unique_ptr<SettingsStore> MakeUserStore() {
    return MakeSqliteStore(SettingsFile());
}

std::u16string UserStorePlace() {
    return PathText(SettingsFile());
}

}  // namespace bw
