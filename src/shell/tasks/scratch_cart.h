// A cart that is built for a check and gone after it.
#pragma once

#include <filesystem>

#include "shell/tasks/build_job.h"
#include "support/files.h"

namespace bw {

// For a task's thread. One at a time in a process.
class ScratchCart {
  public:
    ScratchCart();
    ScratchCart(const ScratchCart&) = delete;
    ScratchCart& operator=(const ScratchCart&) = delete;
    // Removes it, and the folder that it lies in.
    ~ScratchCart();

    const std::filesystem::path& File() const { return file_; }
    // What is wrong with the games or the settings is told to the user; nothing is asked, and no
    // setting is written. True if the cart is there.
    bool Build(BuildJob& job, BoardType board, TaskControl& control) const;

  private:
    std::filesystem::path folder_;
    std::filesystem::path file_;
    FileLock held_;  // against the removal of what killed processes have left
};

}  // namespace bw
