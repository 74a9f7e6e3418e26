#include "shell/dialogs/play_run.h"

#include <utility>

#include "console/save_file.h"
#include "support/files.h"

namespace bw {

// Its consoles find their save: looked for on the session's thread, since the ROM is read for it.
class PlayRun::SavingEmulator : public Emulator {
  public:
    SavingEmulator(std::unique_ptr<Emulator> emulator, std::shared_future<void> previous)
        : emulator_(std::move(emulator)), previous_(std::move(previous)) {}

    std::string Name() const override { return emulator_->Name(); }
    ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart& start) const override {
        if (previous_.valid()) previous_.wait();
        ConsoleStart saving = start;
        saving.save = SaveFileOf(start.rom);
        MakeFolders(saving.save.parent_path());
        return emulator_->Start(saving);
    }

  private:
    std::unique_ptr<Emulator> emulator_;
    std::shared_future<void> previous_;
};

PlayRun::PlayRun(std::unique_ptr<Emulator> emulator, const std::filesystem::path& rom,
                 std::function<void()> news, std::shared_future<void> previous)
    : news_(std::move(news)),
      emulator_(std::make_unique<SavingEmulator>(std::move(emulator), std::move(previous))) {
    session_ = std::make_unique<LiveSession>(*emulator_, static_cast<LiveWatcher&>(*this),
                                             LiveOptions{.rom = rom, .sound = true});
}

std::optional<ConsolePicture> PlayRun::TakePicture() {
    const std::lock_guard guard(lock_);
    told_ = false;
    return std::exchange(picture_, std::nullopt);
}

std::optional<ConsoleProblem> PlayRun::TakeProblem() {
    const std::lock_guard guard(lock_);
    told_ = false;
    return std::exchange(problem_, std::nullopt);
}

std::shared_future<void> PlayRun::End(std::unique_ptr<PlayRun> run) {
    {
        const std::lock_guard guard(run->lock_);
        run->news_ = {};
    }
    return std::async(std::launch::async, [run = std::move(run)]() mutable { run.reset(); });
}

void PlayRun::Shows(const ConsolePicture& picture, PadStates) {
    const std::lock_guard guard(lock_);
    picture_ = picture;
    Tell();
}

void PlayRun::Failed(const ConsoleProblem& problem) {
    const std::lock_guard guard(lock_);
    problem_ = problem;
    Tell();
}

// Under the lock. A window that hasn't come round yet gets no second word.
void PlayRun::Tell() {
    if (!std::exchange(told_, true) && news_) news_();
}

}  // namespace bw
