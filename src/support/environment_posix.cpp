#include <cstdlib>
#include <sstream>
#include <string>

#include "support/environment.h"

namespace bw {

namespace fs = std::filesystem;

std::optional<fs::path> EnvironmentPath(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::optional<fs::path>(value) : std::nullopt;
}

std::vector<fs::path> ProgramFolders() {
    std::vector<fs::path> folders;
    std::istringstream list(EnvironmentPath("PATH").value_or("").native());
    for (std::string folder; std::getline(list, folder, ':');) {
        if (!folder.empty()) folders.emplace_back(folder);
    }
    return folders;
}

bool IsProgram(const fs::path& file) {
    constexpr fs::perms kAnyExecution =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    std::error_code error;
    return fs::is_regular_file(file, error) &&
           (fs::status(file, error).permissions() & kAnyExecution) != fs::perms::none;
}

std::optional<fs::path> FindProgram(std::string_view name, const std::vector<fs::path>& folders) {
    for (const fs::path& folder : folders) {
        if (IsProgram(folder / name)) return folder / name;
    }
    return std::nullopt;
}

}  // namespace bw
