#include "shell/tasks/game_intake.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "list/added_games.h"
#include "list/list_file.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kBatch = 256;  // images between two looks at the stop flag

// Archives count for more: each may hold a collection.
size_t BatchSize(std::span<const std::filesystem::path> files) {
    constexpr size_t kArchives = 8;
    size_t size = 0;
    size_t archives = 0;
    while (size < std::min(kBatch, files.size()) && archives < kArchives) {
        if (HasArchiveExtension(files[size])) ++archives;
        ++size;
    }
    return size;
}

bool IsList(const std::filesystem::path& file) {
    return HasExtension(file, "fcl");
}

}  // namespace

GameIntake::GameIntake(TaskControl& control, std::filesystem::path base, size_t present,
                       std::function<void()> overLimit)
    : control_(control),
      base_(std::move(base)),
      present_(present),
      overLimit_(std::move(overLimit)) {}

void GameIntake::AddImages(std::span<const std::filesystem::path> files) {
    filesInAll_ = std::max(filesInAll_, files.size());
    while (!files.empty() && !control_.Stop()) {
        const auto batch = files.first(BatchSize(files));
        control_.Progress({PathText(batch.front().filename()), filesDone_, filesInAll_});
        std::vector<LeftOut> others;
        GameList read = ReadAddedGames(batch, base_, &others);
        std::error_code error;
        for (LeftOut& other : others) {
            if (std::filesystem::is_directory(other.place, error)) {
                folders.push_back(std::move(other.place));
            } else {
                leftOut.push_back(std::move(other));
            }
        }
        // With the first games a cartridge can be built at once.
        if (present_ == 0) CheckRunnable(read);
        games.insert(games.end(), std::make_move_iterator(read.begin()),
                     std::make_move_iterator(read.end()));
        filesDone_ += batch.size();
        files = files.subspan(batch.size());
    }
}

FileResult<> GameIntake::AddList(const std::filesystem::path& file) {
    control_.Progress({PathText(file.filename()), filesDone_, filesInAll_});
    ++filesDone_;
    // A list travels with its games: paths that name nothing below the program's folder may do so
    // beside the list.
    GameList read;
    const auto loaded = LoadListFile(file, base_, read, file.parent_path());
    if (!loaded) {
        leftOut.push_back({file, LeftOut::Reason::kNoGame});
        return loaded.Problem();
    }
    if (loaded->announced > Room()) TellOverLimit();
    games.insert(games.end(), std::make_move_iterator(read.begin()),
                 std::make_move_iterator(read.end()));
    CutToRoom();
    return {};
}

void GameIntake::AddFiles(std::span<const std::filesystem::path> files) {
    filesInAll_ = files.size();
    if (files.size() > Room()) TellOverLimit();
    while (!files.empty() && Room() > 0 && !control_.Stop()) {
        const auto firstList = std::ranges::find_if(files, IsList);
        const auto images = static_cast<size_t>(firstList - files.begin());
        AddImages(files.first(images));
        CutToRoom();
        if (images < files.size() && Room() > 0) AddList(files[images]);
        files = files.subspan(std::min(images + 1, files.size()));
    }
}

size_t GameIntake::Room() const {
    return kListLimit - std::min(present_ + games.size(), kListLimit);
}

void GameIntake::CutToRoom() {
    const size_t room = kListLimit - std::min(present_, kListLimit);
    games.resize(std::min(games.size(), room));
}

void GameIntake::TellOverLimit() {
    if (const auto tell = std::exchange(overLimit_, {})) tell();
}

}  // namespace bw
