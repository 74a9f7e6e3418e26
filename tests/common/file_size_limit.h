// While it lives, this process can't make files longer than the limit: a full disk for tests.
#pragma once

#include <cstdint>
#include <memory>

class FileSizeLimit {
  public:
    explicit FileSizeLimit(uint64_t bytes);
    FileSizeLimit(FileSizeLimit&&) = delete;
    ~FileSizeLimit();

  private:
    struct State;
    std::unique_ptr<State> state_;
};
