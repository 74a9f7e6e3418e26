// Files that the user adds to the list, and the paths by which the list remembers them.
#pragma once

#include <filesystem>
#include <span>
#include <vector>

#include "list/game_list.h"

namespace bw {

// The entries of those files that are game images, in the given order, an archive's in order of
// path; what is none is left out and goes to `leftOut`, if it is given. Paths are absolute. An
// entry keeps the path relative to `base`, the program's folder, where such a form exists. Reads on
// several threads; for a background task.
std::vector<GameEntry> ReadAddedGames(std::span<const std::filesystem::path> files,
                                      const std::filesystem::path& base,
                                      std::vector<LeftOut>* leftOut = nullptr);
// Whether what is added is an archive: a regular file with such a name.
bool IsArchiveFile(const std::filesystem::path& file);

// Checks the games that a board can run.
void CheckRunnable(GameList& games);

// A copy whose paths are absolute, so that the current folder doesn't matter: what a build takes.
GameList WithAbsolutePaths(const GameList& games, const std::filesystem::path& base);

}  // namespace bw
