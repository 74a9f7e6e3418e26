// The list kept while the program runs, so that a power cut or a kill costs a few seconds at most.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "list/game_list.h"
#include "list/remembered_list.h"
#include "support/files.h"

namespace bw {

// One running program's own file, "list_N.kept" in a folder; a lock says that its program runs.
class KeptList {
  public:
    // Takes the first number that is free. A folder that can't be made or locked is a problem; the
    // program runs on without.
    static FileResult<KeptList> Begin(const std::filesystem::path& folder);

    // Replaces what is kept. From a background thread, one at a time.
    FileResult<> Keep(const GameList& games, const std::filesystem::path& base);
    // Nothing is to be brought back: the list has gone to its usual place.
    void Forget();

  private:
    std::filesystem::path file_;
    FileLock lock_;
};

// Lists whose programs didn't end by themselves, the newest first. Taken over: their files go once
// the list is back in the window (`files`).
struct BroughtBack {
    GameList games;
    std::filesystem::path file;
    std::filesystem::file_time_type time;
};
std::vector<BroughtBack> FindKeptLists(const std::filesystem::path& folder,
                                       const std::filesystem::path& base);

}  // namespace bw
