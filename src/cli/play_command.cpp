#include "cli/play_command.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <vector>

#include "cli/inputs.h"
#include "cli/terminal_user.h"
#include "console/emulator.h"
#include "console/emulator_words.h"
#include "language/problem_text.h"
#include "rom/image_files.h"
#include "support/environment.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/process.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr int kFailed = 1;
constexpr int kMissing = 3;
constexpr const char* kWindowProgram = "bankweaver";
constexpr milliseconds kLook{200};

// Beside this program, else from PATH.
std::optional<fs::path> FindWindowProgram() {
    std::vector<fs::path> folders = ProgramFolders();
    folders.insert(folders.begin(), ExecutableFolder());
    return FindProgram(kWindowProgram, folders);
}

// What can't be played, in words; empty if the file may be.
std::u16string FileFault(const fs::path& file, Language language) {
    const FileResult<ImageFile> opened = OpenImage(file);
    if (!opened) return ProblemText(opened.Problem(), language);
    std::array<uint8_t, 4> magic{};
    const FileResult<size_t> read = opened->ReadAt(0, magic);
    if (!read) return ProblemText(read.Problem(), language);
    const std::string_view text(reinterpret_cast<const char*>(magic.data()), magic.size());
    if (text == "NES\x1A" || text == "UNIF") return {};
    return FormatText(LoadText(TextId::kPlayNoImage, language), PathText(file));
}

// Its words come while it runs.
int RunWindow(const fs::path& program, const fs::path& file) {
    Process window;
    if (!window.Start(program, {"--play", WideToBytes(PathText(file))}, {})) return kMissing;
    int status = Process::kStillRunning;
    while (status == Process::kStillRunning) {
        std::fputs(window.ReadOutput(kLook).c_str(), stderr);
        status = window.ExitStatus(kLook);
    }
    return status < 0 ? kFailed : status;
}

}  // namespace

int PlayFile(const Arguments& arguments) {
    const Language language = SystemLanguage();
    TerminalUser user(arguments, language);
    const fs::path file = FromCurrentFolder(arguments.played);
    if (const std::u16string fault = FileFault(file, language); !fault.empty()) {
        user.Error(fault);
        return kFailed;
    }
    if (!FindEmulator()) {
        user.Error(NoEmulatorText(language));
        return kMissing;
    }
    const std::optional<fs::path> program = FindWindowProgram();
    if (!program) {
        user.Error(LoadText(TextId::kPlayNoWindowProgram, language));
        return kMissing;
    }
    return RunWindow(*program, file);
}

}  // namespace bw
