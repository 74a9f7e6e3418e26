#include <csignal>
#include <ctime>

#include "update/pipe_signal.h"

namespace bw {
namespace {

sigset_t PipeOnly() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    return set;
}

bool IsPending() {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

struct NoPipeSignal::Before {
    sigset_t mask;
    bool wasPending;
};

NoPipeSignal::NoPipeSignal() : before_(std::make_unique<Before>()) {
    before_->wasPending = IsPending();
    const sigset_t pipe = PipeOnly();
    pthread_sigmask(SIG_BLOCK, &pipe, &before_->mask);
}

NoPipeSignal::~NoPipeSignal() {
    // Our own goes before it could be delivered.
    const sigset_t pipe = PipeOnly();
    const timespec now{};
    if (!before_->wasPending && IsPending()) sigtimedwait(&pipe, nullptr, &now);
    pthread_sigmask(SIG_SETMASK, &before_->mask, nullptr);
}

}  // namespace bw
