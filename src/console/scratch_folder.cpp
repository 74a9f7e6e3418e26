#include "console/scratch_folder.h"

#include <fmt/format.h>

#include "support/paths.h"

namespace bw {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder(std::string_view label) {
    RemoveAbandonedWorkFolders();
    std::error_code error;
    fs::create_directories(WorkFolder().parent_path(), error);
    for (int number = 1; !made_; ++number) {
        path_ = WorkFolder();
        path_ += fmt::format("-{}-{}", label, number);
        made_ = !error && fs::create_directory(path_, error);
        if (error) return;
    }
    fs::permissions(path_, fs::perms::owner_all, error);
    if (FileResult<FileLock> lock = FileLock::TryTake(path_)) lock_ = std::move(*lock);
}

ScratchFolder::~ScratchFolder() {
    if (made_) RemoveFolder(path_);
}

}  // namespace bw
