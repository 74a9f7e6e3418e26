#include "shell/tasks/scratch_cart.h"

#include <atomic>
#include <utility>

#include "shell/tasks/unwritten_settings.h"
#include "shell/tasks/window_build_user.h"
#include "support/paths.h"

namespace bw {
namespace {

// Knows where the ROM goes, and that nobody wants to see it there.
class ScratchUser final : public WindowBuildUser {
  public:
    ScratchUser(TaskControl& control, const BuildJob& job, std::filesystem::path file)
        : WindowBuildUser(control, job.dialogs, job.language), file_(std::move(file)) {}

    bool AskYesNo(std::u16string_view, std::u16string_view) override { return false; }
    std::optional<OutputChoice> AskOutput(const std::filesystem::path&) override {
        return OutputChoice{file_, RomFormat::kNes20};
    }

  private:
    std::filesystem::path file_;
};

}  // namespace

ScratchCart::ScratchCart() : folder_(WorkFolder()) {
    folder_ += "-check";
    file_ = folder_ / "cart.nes";
    RemoveFolder(folder_);
    MakeFolders(folder_);
    if (FileResult<FileLock> held = FileLock::TryTake(folder_)) held_ = std::move(*held);
}

ScratchCart::~ScratchCart() {
    RemoveFolder(folder_);
}

bool ScratchCart::Build(BuildJob& job, BoardType board, TaskControl& control) const {
    ScratchUser user(control, job, file_);
    UnwrittenSettings settings(job.store);
    std::atomic<bool> busy = false;  // the window's own flag is the task's
    const BuildContext context{job.games, job.settings,     settings, job.design,
                               user,      folder_ / "work", {}};
    job.outcome = BuildRom(context, board, busy);
    job.stopped = user.Cancelled();
    return job.outcome.done;
}

}  // namespace bw
