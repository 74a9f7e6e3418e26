// A peer that has closed its connection must not end the program.
#pragma once

#include <memory>

namespace bw {

// While it lives, writing to a closed connection is an error and nothing else, on this thread. The
// encryption library writes in a way that would otherwise raise SIGPIPE. Made and destroyed on
// the same thread.
class NoPipeSignal {
  public:
    NoPipeSignal();
    NoPipeSignal(NoPipeSignal&&) = delete;
    ~NoPipeSignal();

  private:
    struct Before;
    std::unique_ptr<Before> before_;
};

}  // namespace bw
