#include "builder/assembler_call.h"
#include "support/paths.h"
#include "support/text.h"
#include "support/windows_path.h"

namespace bw {
namespace {

std::string Word(const std::filesystem::path& path) {
    return ToUtf8(PathText(path));
}

// It is there on every system, and its name is short.
std::filesystem::path ShortFolder() {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetSystemWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size())));
    return folder;
}

}  // namespace

AssemblerCall CallOf(const std::filesystem::path& source, const std::filesystem::path& folder) {
    if (CallPath(folder.native()) == folder.native()) return {{Word(source)}, folder};
    return {{"--folder", Word(folder), Word(source)}, ShortFolder()};
}

}  // namespace bw
