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
    if (const fs::path moved = EnvironmentPath("BANKWEAVER_HOME"); !moved.empty())
        return FromCurrentFolder(moved) / own;
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

bool IsAbsolutePath(const fs::path& path) {
    return path.is_absolute();
}

fs::path NormalPath(const fs::path& path) {
    return path.lexically_normal();
}

fs::path FromCurrentFolder(const fs::path& path) {
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    return error ? path : absolute;
}

fs::path AbsolutePath(const fs::path& path, const fs::path& base) {
    return (base / path).lexically_normal();
}

fs::path RelativePath(const fs::path& path, const fs::path& base) {
    fs::path relative = path.lexically_normal().lexically_relative(base.lexically_normal());
    return relative.empty() ? path : relative;
}

std::u16string PathText(const fs::path& path) {
    return BytesToWide(path.native());
}

fs::path TextPath(std::u16string_view text) {
    return WideToBytes(text);
}

}  // namespace bw
