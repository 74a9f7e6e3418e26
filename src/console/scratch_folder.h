// A folder of this process's own for files that nobody keeps.
#pragma once

#include <filesystem>
#include <string_view>

#include "support/files.h"

namespace bw {

// Goes with all that it holds. What killed processes have left goes when the next one is made.
class ScratchFolder {
  public:
    // `label` is part of its name; several of one label don't meet.
    explicit ScratchFolder(std::string_view label);
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    // Absolute. Where no folder could be made there is none, and what is to be written there fails.
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
    bool made_ = false;
    FileLock lock_;
};

}  // namespace bw
