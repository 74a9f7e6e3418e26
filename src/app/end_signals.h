// The system's wish that the program ends: at a shutdown, from a terminal, by kill.
#pragma once

#include <functional>
#include <memory>

namespace bw {

// While it lives, the first of SIGTERM, SIGINT and SIGHUP calls `end` with its number, on the
// thread that made this object, from its event loop. A second signal of the same number ends the
// program at once. A signal that was ignored before (as nohup has it) stays ignored.
// On Windows, where a program with windows hears of no console's Ctrl+C and taskkill closes the
// window as the user does, the one such wish is the end of the session: it comes as SIGTERM, once,
// and the system may end the process as soon as `end` has returned.
class EndSignals {
  public:
    explicit EndSignals(std::function<void(int signal)> end);
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals();

  private:
    class State;
    std::unique_ptr<State> state_;
};

}  // namespace bw
