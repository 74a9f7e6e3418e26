#include "shell/tasks/collection_tasks.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <optional>
#include <utility>

#include "list/collection/missing_games.h"
#include "list/collection/same_games.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kDatFolder = "LastDatDir";
constexpr std::string_view kLookFolder = "LastLookDir";
constexpr uint64_t kShownUnit = 1024;  // bytes of a database that count as a step of progress

ReadingProgress Follow(TaskControl& control, std::u16string what) {
    return [&control, what = std::move(what)](size_t done, size_t total) {
        control.Progress({what, done, total});
        return !control.Stop();
    };
}

}  // namespace

// The task's thread alone uses it until it ends.
struct CollectionTasks::Reading {
    GameList games;
    std::vector<uint32_t> rows;  // those that it is about
    std::filesystem::path base;
    Language language;

    RowSums sums = {};
    std::optional<Result<DatNames, DatProblem>> names = {};
    std::vector<FoundGame> found = {};
    bool stopped = false;
    bool done = false;

    void ReadSums(TaskControl& control) {
        std::vector<std::filesystem::path> paths;
        for (const uint32_t row : rows)
            paths.push_back(AbsolutePath(TextPath(games[row].path), base));
        sums = ReadImageSums(paths, Follow(control, LoadText(TextId::kReadingData, language)));
    }
    // Games may have been cleared meanwhile.
    bool RowsStand(const GameList& now) const {
        return std::ranges::all_of(rows, [&](uint32_t row) {
            return row < now.size() && now[row].path == games[row].path;
        });
    }
};

void CollectionTasks::Start(BackgroundTasks::Turn turn, std::vector<uint32_t> rows,
                            std::function<void(Reading&, TaskControl&)> work,
                            std::function<void(Reading&)> finish) {
    host_.Tell({});
    const auto reading = std::make_shared<Reading>(
        Reading{host_.Editor().Games(), std::move(rows), host_.Base(), host_.CurrentLanguage()});
    host_.Tasks().StartListTask(
        std::move(turn),
        [reading, work = std::move(work)](TaskControl& control) {
            work(*reading, control);
            reading->stopped = control.Stop();
            reading->done = true;
        },
        [this, reading, finish = std::move(finish)] {
            if (!reading->done) return;
            const Language language = host_.CurrentLanguage();
            if (reading->stopped) {
                host_.Tell(LoadText(TextId::kStoppedListUnchanged, language));
            } else if (!reading->RowsStand(host_.Editor().Games())) {
                host_.Tell(LoadText(TextId::kListChangedMeanwhile, language));
            } else {
                finish(*reading);
            }
        });
}

void CollectionTasks::ReadDatabase(std::vector<uint32_t> rows, std::function<void(Named)> ready) {
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn) return;
    const Language language = host_.CurrentLanguage();
    const std::u16string types = LoadText(TextId::kDatFiles, language);
    const auto chosen = host_.Dialogs().AskFileToOpen({.title = types,
                                                       .start = StoredFolder(kDatFolder),
                                                       .types = {{types, "dat"}, {types, "xml"}}});
    if (!chosen) return;
    const std::filesystem::path file = chosen->path;
    host_.Store().RegWriteString(kMainKey, kDatFolder, PathText(file.parent_path()));
    Start(
        std::move(turn), std::move(rows),
        [file](Reading& reading, TaskControl& control) {
            reading.ReadSums(control);
            if (control.Stop()) return;
            const auto follow =
                Follow(control, FormatText(LoadText(TextId::kReadingDat, reading.language),
                                           PathText(file.filename())));
            reading.names =
                ReadDat(file, WantedCrcs(reading.sums), [&](uint64_t done, uint64_t total) {
                    return follow(done / kShownUnit, total / kShownUnit);
                });
        },
        [this, file, ready = std::move(ready)](Reading& reading) {
            // What was read of the games is worth keeping, whatever the database is.
            host_.Editor().NoteSums(reading.rows, reading.sums);
            if (!*reading.names) {
                Warn(host_,
                     DatProblemText(reading.names->Problem(), file, host_.CurrentLanguage()));
                return;
            }
            ready({file, std::move(reading.rows), std::move(reading.sums),
                   std::move(**reading.names)});
        });
}

void CollectionTasks::FindSame() {
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn) return;
    std::vector<uint32_t> rows(host_.Editor().Games().size());
    std::iota(rows.begin(), rows.end(), 0U);
    Start(
        std::move(turn), std::move(rows),
        [](Reading& reading, TaskControl& control) { reading.ReadSums(control); },
        [this](Reading& reading) {
            ListEditor& editor = host_.Editor();
            editor.NoteSums(reading.rows, reading.sums);
            const RowGroups groups = SameData(editor.Games());
            size_t rowsInGroups = 0;
            for (const auto& group : groups)
                rowsInGroups += group.size();
            const Language language = host_.CurrentLanguage();
            std::u16string line = groups.empty()
                                      ? LoadText(TextId::kNoneSame, language)
                                      : FormatText(LoadText(TextId::kSameFound, language),
                                                   rowsInGroups, groups.size());
            if (const auto unread =
                    std::ranges::count(reading.sums, false, &std::optional<ImageSums>::has_value);
                unread > 0)
                line += FormatText(LoadText(TextId::kSomeUnread, language), unread);
            host_.Tell(line);
        });
}

void CollectionTasks::LookForMissing() {
    BackgroundTasks::Turn turn = BeginListTask(host_);
    if (!turn) return;
    std::vector<uint32_t> rows = MissingRows(host_.Editor().Games());
    if (rows.empty()) {
        host_.Tell(LoadText(TextId::kNothingMissing, host_.CurrentLanguage()));
        return;
    }
    const auto folder = host_.Dialogs().AskFolder(StoredFolder(kLookFolder));
    if (!folder) return;
    host_.Store().RegWriteString(kMainKey, kLookFolder, PathText(*folder));
    Start(
        std::move(turn), std::move(rows),
        [folder = *folder](Reading& reading, TaskControl& control) {
            const auto follow = Follow(control, PathText(folder));
            follow(0, 0);
            reading.found =
                bw::LookForMissing(reading.games, reading.rows, folder, reading.base, follow);
        },
        [this, folder = *folder](Reading& reading) {
            const size_t found = reading.found.size();
            host_.Editor().ReplaceEntries(std::move(reading.found));
            host_.Tell(FormatText(LoadText(TextId::kMissingFound, host_.CurrentLanguage()),
                                  PathText(folder), found, reading.rows.size()));
        });
}

std::filesystem::path CollectionTasks::StoredFolder(std::string_view name) const {
    std::u16string folder;
    host_.Store().RegReadString(kMainKey, name, folder);
    return TextPath(folder);
}

}  // namespace bw
