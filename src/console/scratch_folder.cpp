#include "console/scratch_folder.h"

#include <fmt/format.h>

#include "support/paths.h"

namespace bw {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder(std::string_view label) {
    RemoveAbandonedWorkFolders();
    const fs::path first = WorkFolder();
    std::error_code error;
    fs::create_directories(first.parent_path(), error);
    for (int number = 1; !error; ++number) {
        path_ = first;
        path_ += fmt::format("-{}-{}", label, number);
        if (fs::create_directory(path_, error)) break;
    }
    if (!error) fs::permissions(path_, fs::perms::owner_all, error);
    if (error) {
        path_.clear();
    } else if (FileResult<FileLock> lock = FileLock::TryTake(path_)) {
        lock_ = std::move(*lock);
    }
}

ScratchFolder::~ScratchFolder() {
    if (!path_.empty()) RemoveFolder(path_);
}

}  // namespace bw
