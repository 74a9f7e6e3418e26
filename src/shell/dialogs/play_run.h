// One game that is being played: the emulator, its session, and the way of its pictures to the
// window.
#pragma once

#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>

#include "console/live_session.h"

namespace bw {

class PlayRun final : private LiveWatcher {
  public:
    // `news` is called on the session's thread when there is something to take that wasn't there
    // before. The game doesn't start before `previous` has ended: it may be about to write the
    // save that this one reads. It sounds, unless it is muted.
    PlayRun(std::unique_ptr<Emulator> emulator, const std::filesystem::path& rom,
            std::function<void()> news, std::shared_future<void> previous);
    PlayRun(const PlayRun&) = delete;
    PlayRun& operator=(const PlayRun&) = delete;
    ~PlayRun() override = default;

    LiveSession& Session() { return *session_; }

    // The newest that has come since the last call.
    std::optional<ConsolePicture> TakePicture();
    std::optional<ConsoleProblem> TakeProblem();

    // Ends a run beside the window, which never waits for an emulator; what comes back is ready
    // when nothing is left of it. No news come any more.
    static std::shared_future<void> End(std::unique_ptr<PlayRun> run);

  private:
    class SavingEmulator;
    void Shows(const ConsolePicture& picture, PadStates buttons) override;
    void Failed(const ConsoleProblem& problem) override;
    void Tell();

    std::mutex lock_;
    std::function<void()> news_;             // under the lock
    std::optional<ConsolePicture> picture_;  // under the lock
    std::optional<ConsoleProblem> problem_;  // under the lock
    bool told_ = false;                      // under the lock
    std::unique_ptr<Emulator> emulator_;
    std::unique_ptr<LiveSession> session_;  // last: it uses the rest
};

}  // namespace bw
