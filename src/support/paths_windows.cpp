// The parts of paths.h and text.h that Windows answers in its own way.
#include <cstdlib>
#include <string>
#include <system_error>

#include "support/paths.h"
#include "support/text.h"
#include "support/windows_api.h"
// They need what windows.h declares.
#include <knownfolders.h>
#include <shlobj.h>

namespace bw {
namespace {

namespace fs = std::filesystem;

fs::path LocalDataFolder() {
    wchar_t* text = nullptr;
    fs::path folder;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &text))) folder = text;
    CoTaskMemFree(text);
    return folder;
}

// `standard` is where the folder lies if BANKWEAVER_HOME doesn't move it to its `own` one.
fs::path UserFolder(const char* own, const fs::path& standard) {
    const wchar_t* moved = _wgetenv(L"BANKWEAVER_HOME");
    if (moved == nullptr || *moved == L'\0') return standard;
    std::error_code error;
    const fs::path absolute = fs::absolute(moved, error);
    return (error ? fs::path(moved) : absolute) / own;
}

}  // namespace

fs::path ExecutablePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

fs::path UserConfigFolder() {
    return UserFolder("config", LocalDataFolder() / "Bankweaver");
}

fs::path UserDataFolder() {
    return UserFolder("data", LocalDataFolder() / "Bankweaver" / "Data");
}

fs::path UserScratchFolder() {
    return UserFolder("scratch", LocalDataFolder());
}

fs::path WorkFolder() {
    return UserScratchFolder() / "Temp" / "Bankweaver" / std::to_string(GetCurrentProcessId());
}

std::u16string PathText(const fs::path& path) {
    return {path.native().begin(), path.native().end()};
}

fs::path TextPath(std::u16string_view text) {
    return std::wstring(text.begin(), text.end());
}

}  // namespace bw
