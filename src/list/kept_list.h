// The list kept while the program runs, so that a power cut or a kill costs a few seconds at most.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "list/game_list.h"
#include "support/files.h"

namespace bw {

// One running program's own file, "list_N.kept" in a folder: a list file that tells more. A lock
// beside it says that its program runs.
class KeptList {
  public:
    // Takes the first number that is free. A folder that can't be made or locked is a problem; the
    // program runs on without.
    static FileResult<KeptList> Begin(const std::filesystem::path& folder);

    // Replaces what is kept. From a background thread, one at a time. `origin`: the sum of the
    // stored list that this one has come out of, 0 where it has come out of none.
    FileResult<> Keep(const GameList& games, const std::filesystem::path& base, uint32_t origin);
    // Nothing is to be brought back: the list has gone to its usual place. Keep may follow.
    FileResult<> Forget() { return DeleteFile(file_); }

  private:
    std::filesystem::path file_;
    FileLock lock_;
};

// A list whose program didn't end by itself.
struct BroughtBack {
    GameList games;
    uint32_t origin = 0;  // as given to Keep
    std::filesystem::path file;
    std::filesystem::file_time_type time;
    FileLock lock;  // no other program brings it back meanwhile
};
struct KeptLists {
    std::vector<BroughtBack> lists;  // the newest first, empty ones last
    std::vector<std::filesystem::path> damaged;
};
// Their files stay; whoever has the lists safe removes them.
KeptLists FindKeptLists(const std::filesystem::path& folder, const std::filesystem::path& base);

}  // namespace bw
