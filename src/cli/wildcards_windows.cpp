#include <algorithm>

#include "cli/wildcards.h"
#include "rom/image_files.h"
#include "support/windows_path.h"

namespace bw {

namespace fs = std::filesystem;

std::vector<fs::path> NamedPaths(const std::string& name) {
    const fs::path pattern = NamePath(name);
    const std::wstring last = pattern.filename().native();
    std::vector<fs::path> found;
    if (last.find_first_of(L"*?") == last.npos) return {pattern};
    WIN32_FIND_DATAW file{};
    const HANDLE search = FindFirstFileW(CallPath(pattern.native()).c_str(), &file);
    if (search == INVALID_HANDLE_VALUE) return {pattern};
    do {
        const std::wstring_view match = file.cFileName;
        if (match != L"." && match != L"..") found.push_back(pattern.parent_path() / match);
    } while (FindNextFileW(search, &file));
    FindClose(search);
    std::ranges::sort(found);
    return found;
}

}  // namespace bw
