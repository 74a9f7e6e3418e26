#include "settings/settings_file.h"
#include "settings/settings_store.h"
#include "support/text.h"

namespace bw {

std::unique_ptr<SettingsStore> MakeUserStore() {
    return MakeSqliteStore(SettingsFile());
}

std::u16string UserStorePlace() {
    return PathText(SettingsFile());
}

}  // namespace bw
