#include <csignal>

#include <sys/resource.h>

#include "common/file_size_limit.h"

struct FileSizeLimit::State {
    rlimit old{};
    void (*oldHandler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

FileSizeLimit::FileSizeLimit(uint64_t bytes) : state_(std::make_unique<State>()) {
    getrlimit(RLIMIT_FSIZE, &state_->old);
    const rlimit limit{bytes, state_->old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &state_->old);
    std::signal(SIGXFSZ, state_->oldHandler);
}
