// Reading the games that come into the list, on a background thread.
#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <vector>

#include "list/game_list.h"
#include "rom/image_files.h"
#include "shell/framework/background_tasks.h"
#include "support/file_problem.h"

namespace bw {

class GameIntake {
  public:
    // `base`: the folder that relative paths count from. `present`: the rows that the list has.
    // `overLimit` is called on the task's thread, once at most, before something is left out for
    // want of room.
    GameIntake(TaskControl& control, std::filesystem::path base, size_t present,
               std::function<void()> overLimit);

    // Images and archives of them, however many. Files that are none are left out.
    void AddImages(std::span<const std::filesystem::path> files);
    // A list file, as far as there is room.
    FileResult<> AddList(const std::filesystem::path& file);
    // Images, archives and list files, told apart by the extension, as far as there is room.
    void AddFiles(std::span<const std::filesystem::path> files);

    // What was read, in order.
    GameList games;
    // Files, and members of archives, that are neither an image nor a list, or can't be read; and
    // folders, which aren't opened.
    std::vector<LeftOut> leftOut;
    std::vector<std::filesystem::path> folders;

  private:
    size_t Room() const;
    void CutToRoom();
    void TellOverLimit();

    TaskControl& control_;
    std::filesystem::path base_;
    size_t present_;
    std::function<void()> overLimit_;
    size_t filesDone_ = 0;
    size_t filesInAll_ = 0;
};

}  // namespace bw
