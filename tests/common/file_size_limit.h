// While it lives, this process can't make files longer than the limit: a full disk for tests.
#pragma once

#include <csignal>

#include <sys/resource.h>

class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(FileSizeLimit&&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }

  private:
    rlimit old_{};
    void (*oldHandler_)(int);
};
