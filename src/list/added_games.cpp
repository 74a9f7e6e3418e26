#include "list/added_games.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "rom/image_files.h"
#include "support/file_queries.h"
#include "support/parallel.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

namespace {

constexpr size_t kArchiveThreads = 4;

// What one archive gives.
struct ArchiveGames {
    std::vector<GameEntry> entries;
    std::vector<LeftOut> leftOut;
};

ArchiveGames ReadArchive(const std::filesystem::path& file) {
    ArchiveGames games;
    std::vector<FileProblem> unread;
    games.entries = ReadGameFolder(file, &unread, &games.leftOut);
    for (FileProblem& problem : unread)
        games.leftOut.push_back({std::move(problem.file), LeftOut::Reason::kDamaged});
    return games;
}

}  // namespace

std::vector<GameEntry> ReadAddedGames(std::span<const std::filesystem::path> files,
                                      const std::filesystem::path& base,
                                      std::vector<LeftOut>* leftOut) {
    std::vector<std::filesystem::path> images;
    std::vector<ArchiveGames> archives;
    std::vector<size_t> archiveFiles;
    for (size_t i = 0; i < files.size(); ++i) {
        if (IsArchiveFile(files[i])) {
            archiveFiles.push_back(i);
        } else {
            images.push_back(files[i]);
        }
    }
    archives.resize(archiveFiles.size());
    ForPieces(archives.size(), 1, kArchiveThreads,
              [&](size_t i, size_t) { archives[i] = ReadArchive(files[archiveFiles[i]]); });
    std::vector<GameEntry> entries = ReadGameEntries(images);

    std::vector<GameEntry> games;
    const auto take = [&](GameEntry& entry) {
        const std::filesystem::path file = TextPath(entry.path);
        if (entry.HasValidHeader()) {
            entry.path = PathText(RelativePath(file, base));
            games.push_back(std::move(entry));
        } else if (leftOut != nullptr) {
            leftOut->push_back({file, LeftOut::Reason::kNoGame});
        }
    };
    size_t image = 0;
    size_t archive = 0;
    for (size_t i = 0; i < files.size(); ++i) {
        if (archive == archives.size() || archiveFiles[archive] != i) {
            take(entries[image++]);
            continue;
        }
        ArchiveGames& read = archives[archive++];
        std::ranges::for_each(read.entries, take);
        if (leftOut != nullptr) std::ranges::move(read.leftOut, std::back_inserter(*leftOut));
    }
    return games;
}

bool IsArchiveFile(const std::filesystem::path& file) {
    return HasArchiveExtension(file) && IsFile(file);
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
        if (!IsAbsolutePath(path)) entry.path = PathText(AbsolutePath(path, base));
    }
    return absolute;
}

}  // namespace bw
