#include "cli/collection_work.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "builder/build_words.h"
#include "cli/inputs.h"
#include "language/problem_text.h"
#include "list/collection/missing_games.h"
#include "list/collection/same_games.h"
#include "rom/image_files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kMostWarnings = 20;

std::vector<uint32_t> AllRows(const GameList& games) {
    std::vector<uint32_t> rows(games.size());
    std::iota(rows.begin(), rows.end(), 0u);
    return rows;
}

}  // namespace

std::u16string CollectionWork::Text(TextId id) const {
    return LoadText(id, user_.UiLanguage());
}

bool CollectionWork::Ended() {
    if (user_.Cancelled()) user_.Note(BuildStoppedText(user_.UiLanguage()));
    return user_.Cancelled() || user_.Refused();
}

bool CollectionWork::WarnOfAll(const std::vector<std::u16string>& lines) {
    for (size_t i = 0; i < std::min(lines.size(), kMostWarnings); ++i)
        user_.Warn(lines[i]);
    if (lines.size() > kMostWarnings) {
        user_.Warn(FormatText(Text(TextId::kAndMoreOfThem), lines.size() - kMostWarnings));
    }
    for (size_t i = kMostWarnings; i < lines.size(); ++i)
        user_.Detail(lines[i]);
    return !user_.Refused();
}

bool CollectionWork::ReadSums(const std::vector<uint32_t>& rows) {
    std::vector<std::filesystem::path> paths;
    for (const uint32_t row : rows)
        paths.push_back(TextPath(games_[row].path));
    const RowSums sums = ReadImageSums(paths, [&](size_t done, size_t total) {
        user_.Progress(FormatText(Text(TextId::kReadingSums), done, total));
        return !user_.Cancelled();
    });
    sums_.resize(games_.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        sums_[rows[i]] = sums[i];
        if (!sums[i]) continue;
        games_[rows[i]].crcs = sums[i]->data;
        games_[rows[i]].size = sums[i]->size;
    }
    return !Ended();
}

bool CollectionWork::FindMissing() {
    if (arguments_.lookIn.empty()) return true;
    const std::vector<uint32_t> missing = MissingRows(games_);
    if (missing.empty()) return true;
    const std::filesystem::path folder = FromCurrentFolder(arguments_.lookIn);
    if (const FileResult<std::vector<FolderItem>> there = ReadFolder(folder); !there) {
        user_.Error(ProblemText(there.Problem(), user_.UiLanguage()));
        return false;
    }
    std::vector<FoundGame> found =
        LookForMissing(games_, missing, folder, {}, [&](size_t done, size_t total) {
            user_.Progress(FormatText(Text(TextId::kReadingSums), done, total));
            return !user_.Cancelled();
        });
    if (Ended()) return false;
    user_.Note(FormatText(Text(TextId::kMissingFound), VisibleText(PathText(folder)), found.size(),
                          missing.size()));
    for (FoundGame& game : found)
        games_[game.row] = std::move(game.entry);
    std::vector<std::u16string> lines;
    for (const uint32_t row : missing) {
        if (!games_[row].missing) continue;
        lines.push_back(FormatText(Text(TextId::kStillMissing), VisibleText(games_[row].path)));
    }
    return WarnOfAll(lines);
}

void CollectionWork::SkipDamaged() {
    if (!arguments_.skipDamaged) return;
    for (size_t row = 0; row < games_.size(); ++row) {
        GameEntry& game = games_[row];
        if (!game.checked || !game.IsDamaged()) continue;
        game.checked = false;
        user_.Note(FormatText(Text(TextId::kGameLeftOut), row + 1, VisibleText(game.name),
                              Text(TextId::kFileIsDamaged)));
    }
}

bool CollectionWork::KeepBest() {
    if (!arguments_.keepBest) return true;
    std::vector<uint32_t> unread;
    for (uint32_t row = 0; row < games_.size(); ++row) {
        const GameEntry& entry = games_[row];
        if (entry.checked && entry.HasValidHeader() && !entry.crcs) unread.push_back(row);
    }
    if (!unread.empty() && !ReadSums(unread)) return false;
    sums_.clear();  // rows are about to go
    RowGroups groups = SameGames(games_);
    for (std::vector<uint32_t>& group : groups)
        std::erase_if(group, [&](uint32_t row) { return !games_[row].checked; });
    std::erase_if(groups, [](const std::vector<uint32_t>& group) { return group.size() < 2; });
    const std::vector<uint32_t> surplus = Surplus(games_, groups, BestRules());
    for (const uint32_t row : surplus) {
        user_.Detail(FormatText(Text(TextId::kVersionLeftOut), VisibleText(games_[row].path)));
    }
    size_t row = 0;
    std::erase_if(games_, [&](const GameEntry&) {
        return std::ranges::binary_search(surplus, static_cast<uint32_t>(row++));
    });
    user_.Note(FormatText(Text(TextId::kBestKept), groups.size(), surplus.size()));
    return true;
}

bool CollectionWork::NameFrom(const std::filesystem::path& file, std::vector<uint32_t>& rows) {
    RowSums sums;
    for (const uint32_t row : rows)
        sums.push_back(sums_[row]);
    const Language language = user_.UiLanguage();
    const auto shown = VisibleText(PathText(file.filename()));
    const auto names =
        ReadDat(FromCurrentFolder(file), WantedCrcs(sums), [&](uint64_t done, uint64_t total) {
            const uint64_t percent = total == 0 ? 0 : done * 100 / total;
            user_.Progress(FormatText(Text(TextId::kReadingDatabase), shown, percent));
            return !user_.Cancelled();
        });
    if (!names) {
        user_.Error(DatProblemText(names.Problem(), file, language));
        return false;
    }
    if (Ended()) return false;
    const DatChanges changes = NamesFromDat(games_, rows, sums, *names, std::nullopt);
    Take(changes.changes);
    user_.Note(FormatText(Text(TextId::kNamesFromDatabase), shown,
                          changes.changes.size() + changes.same, rows.size()));
    std::erase_if(rows, [&](uint32_t row) {
        return sums_[row] && (names->byCrc.contains(sums_[row]->headerless) ||
                              names->byCrc.contains(sums_[row]->whole));
    });
    return true;
}

bool CollectionWork::Rename(const ConsoleMenu& menu) {
    const std::vector<uint32_t> all = AllRows(games_);
    if (!arguments_.names.empty()) {
        if (!ReadSums(all)) return false;
        std::vector<uint32_t> unknown = all;
        for (const std::filesystem::path& file : arguments_.names) {
            if (!NameFrom(file, unknown)) return false;
        }
        std::vector<std::u16string> lines;
        for (const uint32_t row : unknown) {
            const TextId id = sums_[row] ? TextId::kNotInDatabase : TextId::kSumsNotRead;
            lines.push_back(FormatText(Text(id), VisibleText(games_[row].path)));
        }
        if (!WarnOfAll(lines)) return false;
    }
    if (!arguments_.tidyNames && !arguments_.shortenNames) return true;
    TidyRules rules{false, false, false, false, false, false, false, false};
    if (arguments_.tidyNames) rules = TidyRules();
    std::vector<size_t> rooms;
    if (arguments_.shortenNames) rooms = NameRooms(games_, menu);
    const std::vector<NameChange> changes = TidyChanges(games_, all, rules, rooms);
    Take(changes);
    user_.Note(FormatText(Text(TextId::kNamesTidied), changes.size()));
    return true;
}

void CollectionWork::Take(const std::vector<NameChange>& changes) {
    for (const NameChange& change : changes) {
        user_.Detail(
            FormatText(u"%s -> %s", VisibleText(change.oldName), VisibleText(change.newName)));
        games_[change.row].name = change.newName;
    }
}

}  // namespace bw
