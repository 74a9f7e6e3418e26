#include "list/added_games.h"

#include <utility>

#include "support/paths.h"
#include "support/text.h"

namespace bw {

std::vector<GameEntry> ReadAddedGames(std::span<const std::filesystem::path> files,
                                      const std::filesystem::path& base,
                                      std::vector<std::filesystem::path>* leftOut) {
    std::vector<GameEntry> entries = ReadGameEntries(files);
    std::vector<GameEntry> games;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (!entries[i].HasValidHeader()) {
            if (leftOut != nullptr) leftOut->push_back(files[i]);
            continue;
        }
        entries[i].path = PathText(RelativePath(files[i], base));
        games.push_back(std::move(entries[i]));
    }
    return games;
}

void CheckRunnable(GameList& games) {
    for (GameEntry& entry : games)
        entry.checked = entry.coolboySupported || entry.coolgirlSupported;
}

GameList WithAbsolutePaths(const GameList& games, const std::filesystem::path& base) {
    GameList absolute = games;
    for (GameEntry& entry : absolute) {
        // An entry without a path, and one of another platform, fail in a build under their own
        // name.
        if (entry.path.empty() || IsAbsoluteElsewhere(entry.path)) continue;
        const std::filesystem::path path = TextPath(entry.path);
        if (path.is_relative()) entry.path = PathText(AbsolutePath(path, base));
    }
    return absolute;
}

}  // namespace bw
