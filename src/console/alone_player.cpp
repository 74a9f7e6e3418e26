#include "console/alone_player.h"

#include <utility>

namespace bw {

ConsoleResult<> AlonePlayer::SwitchOn(const AloneGame& game) {
    if (game.battery) console_.reset();
    if (console_) return console_->Load(game.image);
    start_.rom = game.image;
    ConsoleResult<std::unique_ptr<Console>> started = emulator_.Start(start_);
    if (!started) return started.Problem();
    console_ = std::move(*started);
    return {};
}

template <typename Work>
auto AlonePlayer::Try(const AloneGame& game, const Work& work) -> decltype(work()) {
    for (bool again = false;; again = true) {
        const ConsoleResult<> on = SwitchOn(game);
        auto result = on ? work() : decltype(work())(on.Problem());
        if (result) return result;
        console_.reset();
        if (again || result.Problem().kind == ConsoleProblem::Kind::kStopped) return result;
    }
}

ConsoleResult<GameView> AlonePlayer::Watch(const AloneGame& game,
                                           const std::vector<uint32_t>& lookFrames) {
    return Try(game, [&] { return WatchGame(*console_, lookFrames); });
}

ConsoleResult<std::vector<FrameCode>> AlonePlayer::Record(const AloneGame& game, uint32_t frames) {
    return Try(game, [&]() -> ConsoleResult<std::vector<FrameCode>> {
        ConsoleResult<ConsoleRun> run = console_->Run({.frames = frames, .codes = true});
        if (!run) return run.Problem();
        return std::move(run->codes);
    });
}

}  // namespace bw
