#include "console/fceux_program.h"
#include "support/environment.h"

namespace bw {

namespace fs = std::filesystem;

std::optional<fs::path> FindFceux() {
    if (const auto given = EnvironmentPath("BANKWEAVER_FCEUX")) {
        return IsProgram(*given) ? given : std::nullopt;
    }
    std::vector<fs::path> folders = ProgramFolders();
    folders.emplace_back("/usr/games");  // where Debian keeps it, not in every user's PATH
    return FindProgram("fceux", folders);
}

bool TellsVersion(const fs::path&) {
    return true;
}

fs::path FceuxPath(const fs::path& path) {
    return path;
}

PipedCommand CommandOf(const FceuxRun& run) {
    const std::string home = PathWord(run.home);
    PipedCommand command{
        .program = run.program,
        .arguments = {"--sound", run.sound ? "1" : "0", "--loadlua", PathWord(run.script),
                      PathWord(run.rom)},
        .environment = {"HOME=" + home, "XDG_CONFIG_HOME=" + home, "XDG_DATA_HOME=" + home,
                        "XDG_CACHE_HOME=" + home, "DISPLAY", "WAYLAND_DISPLAY",
                        "QT_QPA_PLATFORM=offscreen", "SDL_VIDEODRIVER=dummy"},
        .folder = run.home,
        .log = FceuxLog(run.home)};
    if (!run.sound) {
        command.environment.insert(command.environment.end(),
                                   {"SDL_AUDIODRIVER=dummy", "XDG_RUNTIME_DIR=" + home});
    }
    return command;
}

}  // namespace bw
