// The user's settings in the registry. Where BANKWEAVER_HOME moves the user's files the registry is
// left alone, and they lie below that folder like everywhere else.
#include <cstdlib>

#include "settings/registry_store.h"
#include "settings/settings_file.h"
#include "support/text.h"

namespace bw {
namespace {

bool IsMoved() {
    const wchar_t* home = _wgetenv(L"BANKWEAVER_HOME");
    return home != nullptr && *home != L'\0';
}

}  // namespace

std::unique_ptr<SettingsStore> MakeUserStore() {
    return IsMoved() ? MakeSqliteStore(SettingsFile()) : MakeRegistryStore();
}

std::u16string UserStorePlace() {
    return IsMoved() ? PathText(SettingsFile())
                     : ToWide("HKEY_CURRENT_USER\\" + std::string(kMainKey));
}

}  // namespace bw
