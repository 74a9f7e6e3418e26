// Turns the inputs of the command line into one list of games.
#pragma once

#include <filesystem>
#include <span>
#include <vector>

#include "language/language.h"
#include "list/game_list.h"
#include "support/diagnostic.h"
#include "support/paths.h"

namespace bw {

struct GatheredGames {
    GameList games;
    // Errors: inputs that are missing or of no use. Warnings: what was left out without harm.
    std::vector<Diagnostic> diagnostics;

    // Null if there is none.
    const Diagnostic* FirstError() const;
};

// Images count as checked; a list file brings its own order, names, checks and remarks; a folder
// brings its images and those of its folders and archives in order of path, and so does an archive,
// but for `output`, if that is the ROM of an earlier build that this one replaces (absolute, or
// empty). The list is cut at its limit.
GatheredGames GatherGames(std::span<const std::filesystem::path> inputs,
                          const std::filesystem::path& output, Language language);

}  // namespace bw
