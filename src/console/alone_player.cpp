#include "console/alone_player.h"

#include <utility>

namespace bw {

ConsoleResult<> AlonePlayer::SwitchOn(const std::filesystem::path& image) {
    if (console_) return console_->Load(image);
    start_.rom = image;
    ConsoleResult<std::unique_ptr<Console>> started = emulator_.Start(start_);
    if (!started) return started.Problem();
    console_ = std::move(*started);
    return {};
}

template <typename Work>
auto AlonePlayer::Try(const std::filesystem::path& image, const Work& work) -> decltype(work()) {
    for (bool again = false;; again = true) {
        const ConsoleResult<> on = SwitchOn(image);
        auto result = on ? work() : decltype(work())(on.Problem());
        if (result) return result;
        console_.reset();
        if (again || result.Problem().kind == ConsoleProblem::Kind::kStopped) return result;
    }
}

ConsoleResult<GameView> AlonePlayer::Watch(const std::filesystem::path& image,
                                           const std::vector<uint32_t>& lookFrames) {
    return Try(image, [&] { return WatchGame(*console_, lookFrames); });
}

ConsoleResult<std::vector<FrameCode>> AlonePlayer::Record(const std::filesystem::path& image,
                                                          uint32_t frames) {
    return Try(image, [&]() -> ConsoleResult<std::vector<FrameCode>> {
        ConsoleResult<ConsoleRun> run = console_->Run({.frames = frames, .codes = true});
        if (!run) return run.Problem();
        return std::move(run->codes);
    });
}

}  // namespace bw
