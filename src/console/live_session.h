// A running console that somebody watches: a thread of its own runs it at its own speed and hands
// out its pictures.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "console/emulator.h"

namespace bw {

// Frames of the console in a second (NESdev wiki: Cycle reference chart, NTSC).
inline constexpr double kFramesPerSecond = 60.0988;

// Called on the session's thread, which waits for the return: quick work only.
class LiveWatcher {
  public:
    virtual ~LiveWatcher() = default;
    // One for each frame that is to be seen. `buttons` are those that made it.
    virtual void Shows(const ConsolePicture& picture, PadStates buttons) = 0;
    // The console is gone, or the last Load failed; pictures come again after the next Load.
    virtual void Failed(const ConsoleProblem& problem) = 0;
};

struct LiveOptions {
    std::filesystem::path rom;     // absolute
    std::filesystem::path save{};  // see ConsoleStart
    bool sound = false;
};

// All operations return at once, from any one thread; what they order is done at the next frame.
class LiveSession {
  public:
    // Called on the session's thread with a console that was just switched on, before any picture
    // of it is shown: brings it to where the watcher is to see it.
    using Prepare = std::function<ConsoleResult<>(Console&)>;

    // The emulator and the watcher must live longer.
    LiveSession(const Emulator& emulator, LiveWatcher& watcher, LiveOptions options,
                Prepare prepare = {});
    LiveSession(const LiveSession&) = delete;
    LiveSession& operator=(const LiveSession&) = delete;
    // Ends the console and waits for the thread's end (a frame's time, seldom more).
    ~LiveSession();

    // A button that is held only for a moment is held for a frame.
    void SetPads(PadStates pads);
    // No processor time passes while it pauses; a watcher that nobody sees should let it.
    void Pause(bool paused);
    void Step();                  // one frame while it pauses
    void FastForward(bool fast);  // as fast as it goes; pictures come at the usual pace
    void Mute(bool muted);        // a session with sound; at first it is heard
    void Reset();
    void Power();
    // Another ROM in the place of this one. The watcher keeps what it shows until the new one has
    // been prepared; one frame of that is shown even while it pauses. A Load that comes before the
    // last one is done takes its place. `leave` is called with the console as it was before, if
    // there is one.
    void Load(std::filesystem::path rom, Prepare prepare = {}, Prepare leave = {});

    struct Figures {
        uint64_t frames = 0;  // shown
        uint64_t late = 0;    // by more than 4 ms
    };
    Figures Measured() const;

  private:
    class Thread;
    std::unique_ptr<Thread> thread_;
};

}  // namespace bw
