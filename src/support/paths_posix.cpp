// The parts of paths.h and text.h that a POSIX system answers in its own way.
#include <cstdlib>
#include <string>

#include <pwd.h>
#include <unistd.h>

#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

fs::path EnvironmentPath(const char* variable) {
    const char* value = std::getenv(variable);
    return value == nullptr ? fs::path{} : fs::path{value};
}

fs::path HomeFolder() {
    if (fs::path home = EnvironmentPath("HOME"); !home.empty()) return home;
    const passwd* user = getpwuid(getuid());
    return user == nullptr || user->pw_dir == nullptr ? fs::path{"/"} : fs::path{user->pw_dir};
}

// XDG base directories: a relative path in one of their variables is to be ignored.
fs::path UserFolder(const char* own, const char* xdgVariable, const char* xdgDefault) {
    if (const fs::path moved = EnvironmentPath("BANKWEAVER_HOME"); !moved.empty()) {
        std::error_code error;
        const fs::path absolute = fs::absolute(moved, error);
        return (error ? moved : absolute) / own;
    }
    fs::path base = EnvironmentPath(xdgVariable);
    if (!base.is_absolute()) base = HomeFolder() / xdgDefault;
    return base / "bankweaver";
}

}  // namespace

fs::path ExecutablePath() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

fs::path UserConfigFolder() {
    return UserFolder("config", "XDG_CONFIG_HOME", ".config");
}

fs::path UserDataFolder() {
    return UserFolder("data", "XDG_DATA_HOME", ".local/share");
}

fs::path UserScratchFolder() {
    return UserFolder("scratch", "XDG_CACHE_HOME", ".cache");
}

fs::path WorkFolder() {
    return UserScratchFolder() / "Temp" / "Bankweaver" / std::to_string(getpid());
}

std::u16string PathText(const fs::path& path) {
    return BytesToWide(path.native());
}

fs::path TextPath(std::u16string_view text) {
    return WideToBytes(text);
}

}  // namespace bw
