// There are two programs of this name for Windows: the one that other systems have too, with SDL
// and Qt (qfceux.exe), and an older one with windows of the system's own (fceux.exe, fceux64.exe).
// Their options stand in the manual's chapter "Command line options".
#include <algorithm>

#include "console/fceux_program.h"
#include "support/environment.h"
#include "support/windows_path.h"
// It needs what windows.h declares.
#include <shlobj.h>

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNames[] = {"qfceux", "fceux64", "fceux"};

bool IsSdlProgram(const fs::path& program) {
    const std::wstring name = program.filename().native();
    return !name.empty() && (name.front() == L'q' || name.front() == L'Q');
}

void AddKnownFolder(std::vector<fs::path>& folders, const KNOWNFOLDERID& id) {
    wchar_t* text = nullptr;
    if (SUCCEEDED(SHGetKnownFolderPath(id, 0, nullptr, &text))) folders.emplace_back(text);
    CoTaskMemFree(text);
}

// It comes as an archive that is unpacked anywhere: PATH, beside this program, where programs are
// kept. Its own archive has the programs in a folder "bin" or on top.
std::vector<fs::path> Places() {
    std::vector<fs::path> folders = ProgramFolders();
    std::vector<fs::path> parents{ExecutableFolder()};
    folders.push_back(ExecutableFolder());
    AddKnownFolder(parents, FOLDERID_ProgramFiles);
    AddKnownFolder(parents, FOLDERID_ProgramFilesX86);
    AddKnownFolder(parents, FOLDERID_UserProgramFiles);
    for (const fs::path& parent : parents) {
        for (const wchar_t* below : {L"fceux", L"fceux\\bin"})
            folders.push_back(parent / below);
    }
    return folders;
}

}  // namespace

std::optional<fs::path> FindFceux() {
    if (const auto given = EnvironmentPath("BANKWEAVER_FCEUX")) {
        return IsProgram(*given) ? given : std::nullopt;
    }
    for (const fs::path& folder : Places()) {
        for (const std::string_view name : kNames) {
            if (auto program = FindProgram(name, {folder})) return program;
        }
    }
    return std::nullopt;
}

// The older one has no console to print to, and would open its window.
bool TellsVersion(const fs::path& program) {
    return IsSdlProgram(program);
}

// It opens files by names in the system's code page, which doesn't hold every name; most disks
// have a second name for each file, of ASCII alone.
fs::path FceuxPath(const fs::path& path) {
    const std::wstring& name = path.native();
    if (name.size() < MAX_PATH &&
        std::ranges::all_of(name, [](wchar_t unit) { return unit < 0x80; })) {
        return path;
    }
    const std::wstring whole = CallPath(name);
    std::wstring other(GetShortPathNameW(whole.c_str(), nullptr, 0), L'\0');
    other.resize(GetShortPathNameW(whole.c_str(), other.data(), static_cast<DWORD>(other.size())));
    if (other.starts_with(LR"(\\?\)") && !other.starts_with(LR"(\\?\UNC)")) other.erase(0, 4);
    return other.empty() ? path : fs::path(other);
}

PipedCommand CommandOf(const FceuxRun& run) {
    const std::string home = PathWord(run.home);
    PipedCommand command{.program = run.program,
                         .arguments = {"-lua", PathWord(run.script), PathWord(run.rom)},
                         .environment = {},
                         .folder = run.home,
                         .log = FceuxLog(run.home)};
    if (!IsSdlProgram(run.program)) return command;
    command.arguments = {"--sound", run.sound ? "1" : "0", "--loadlua", PathWord(run.script),
                         PathWord(run.rom)};
    // Not every copy of it has the part for no screen; Qt takes the first that it finds.
    command.environment = {"FCEUX_HOME=" + home,   "HOME=" + home,
                           "USERPROFILE=" + home,  "APPDATA=" + home,
                           "LOCALAPPDATA=" + home, "QT_QPA_PLATFORM=offscreen;windows",
                           "SDL_VIDEODRIVER=dummy"};
    if (!run.sound) command.environment.emplace_back("SDL_AUDIODRIVER=dummy");
    return command;
}

}  // namespace bw
