#include <sstream>
#include <string>

#include "support/environment.h"
#include "support/windows_path.h"

namespace bw {

namespace fs = std::filesystem;

std::optional<fs::path> EnvironmentPath(const char* name) {
    const std::wstring wideName = WideOf(name);
    std::wstring value(MAX_PATH, L'\0');
    for (;;) {
        // The length without the closing zero, or with it where there isn't room enough.
        const DWORD length = GetEnvironmentVariableW(wideName.c_str(), value.data(),
                                                     static_cast<DWORD>(value.size()));
        if (length == 0) return std::nullopt;
        const bool fits = length < value.size();
        value.resize(length);
        if (fits) return value;
    }
}

std::vector<fs::path> ProgramFolders() {
    std::vector<fs::path> folders;
    std::wistringstream list(EnvironmentPath("PATH").value_or("").native());
    for (std::wstring folder; std::getline(list, folder, L';');) {
        std::erase(folder, L'"');  // stands around folders that hold a semicolon, for some
        if (!folder.empty()) folders.emplace_back(folder);
    }
    return folders;
}

bool IsProgram(const fs::path& file) {
    if (CompareStringOrdinal(file.extension().c_str(), -1, L".exe", -1, TRUE) != CSTR_EQUAL)
        return false;
    const DWORD attributes = GetFileAttributesW(CallPath(file.native()).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::optional<fs::path> FindProgram(std::string_view name, const std::vector<fs::path>& folders) {
    for (const fs::path& folder : folders) {
        const fs::path file = folder / (WideOf(name) + L".exe");
        if (IsProgram(file)) return file;
    }
    return std::nullopt;
}

}  // namespace bw
