// The system's wish that the program ends: at a shutdown, from a terminal, by kill.
#pragma once

#include <functional>
#include <memory>

namespace bw {

// While it lives, the first of SIGTERM, SIGINT and SIGHUP calls `end` with its number, on the
// thread that made this object, from its event loop. A second signal of the same number ends the
// program at once. A signal that was ignored before (as nohup has it) stays ignored.
// On Windows there are no such signals; a session's end comes by way of the window there.
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
