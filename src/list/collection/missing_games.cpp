#include "list/collection/missing_games.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

// The last component of a path of any platform, letter case aside.
std::u16string FileName(std::u16string_view path) {
    path.remove_prefix(path.find_last_of(u"/\\") + 1);
    return FoldCase(path);
}

bool SizeFits(const GameEntry& row, const GameEntry& file) {
    return row.size == 0 || file.size == 0 || row.size == file.size;
}

uint64_t Key(const DataCrcs& crcs) {
    return uint64_t{crcs.prg} << 32 | crcs.chr;
}

// The files of a folder, and what is known of them so far.
class Files {
  public:
    explicit Files(const std::filesystem::path& folder) : entries_(ReadGameFolder(folder)) {
        std::erase_if(entries_, [](const GameEntry& entry) { return !entry.HasValidHeader(); });
        read_.resize(entries_.size());
        for (size_t i = 0; i < entries_.size(); ++i)
            byName_[FileName(entries_[i].path)].push_back(i);
    }

    size_t Count() const { return entries_.size(); }
    const GameEntry& operator[](size_t file) const { return entries_[file]; }

    // In the order of the folder.
    std::span<const size_t> Named(std::u16string_view path) const {
        const auto found = byName_.find(FileName(path));
        return found != byName_.end() ? std::span<const size_t>(found->second)
                                      : std::span<const size_t>();
    }

    // Of those that are wanted and haven't been read yet.
    void ReadSums(const std::vector<bool>& wanted, const ReadingProgress& progress) {
        std::vector<size_t> files;
        std::vector<std::filesystem::path> paths;
        for (size_t i = 0; i < entries_.size(); ++i) {
            if (!wanted[i] || read_[i]) continue;
            files.push_back(i);
            paths.push_back(TextPath(entries_[i].path));
        }
        if (files.empty()) return;
        const std::vector<std::optional<ImageSums>> sums = ReadImageSums(paths, progress);
        for (size_t i = 0; i < files.size(); ++i) {
            read_[files[i]] = true;
            if (!sums[i]) continue;
            entries_[files[i]].crcs = sums[i]->data;
            entries_[files[i]].size = sums[i]->size;
        }
    }

  private:
    std::vector<GameEntry> entries_;
    std::vector<bool> read_;
    std::unordered_map<std::u16string, std::vector<size_t>> byName_;
};

class Search {
  public:
    Search(const GameList& games, std::span<const uint32_t> rows, Files& files)
        : games_(games), files_(files) {
        for (const uint32_t row : rows) {
            if (row < games.size()) places_.try_emplace(row);
        }
    }

    void ByName(const ReadingProgress& progress) {
        std::vector<bool> wanted(files_.Count());
        ForNamed([&](uint32_t row, size_t file) {
            wanted[file] = wanted[file] || games_[row].crcs;
            return false;
        });
        files_.ReadSums(wanted, progress);
        ForNamed([&](uint32_t row, size_t file) {
            return !games_[row].crcs || files_[file].crcs == games_[row].crcs;
        });
    }

    // Rows whose sums are known; files of their sizes alone, where those are known too.
    void BySums(const ReadingProgress& progress) {
        std::unordered_set<uint64_t> sizes;
        bool all = false;
        for (const auto& [row, place] : places_) {
            if (place || !games_[row].crcs) continue;
            sizes.insert(games_[row].size);
            all = all || games_[row].size == 0;
        }
        if (sizes.empty()) return;
        std::vector<bool> wanted(files_.Count());
        for (size_t i = 0; i < files_.Count(); ++i)
            wanted[i] = all || files_[i].size == 0 || sizes.contains(files_[i].size);
        files_.ReadSums(wanted, progress);
        std::unordered_map<uint64_t, size_t> bySums;
        for (size_t i = 0; i < files_.Count(); ++i) {
            if (files_[i].crcs) bySums.try_emplace(Key(*files_[i].crcs), i);
        }
        for (auto& [row, place] : places_) {
            if (place || !games_[row].crcs) continue;
            const auto found = bySums.find(Key(*games_[row].crcs));
            if (found != bySums.end()) place = found->second;
        }
    }

    std::vector<FoundGame> Take(const std::filesystem::path& base) const {
        std::vector<FoundGame> games;
        for (const auto& [row, place] : places_) {
            if (!place) continue;
            FoundGame& game = games.emplace_back(FoundGame{row, files_[*place]});
            const GameEntry& old = games_[row];
            game.entry.path = PathText(RelativePath(TextPath(game.entry.path), base));
            game.entry.name = old.name;
            game.entry.remark = old.remark;
            game.entry.checked = old.checked;
        }
        return games;
    }

  private:
    // Tells of the files with a row's name that may have its size, until one is its place.
    template <typename IsPlace>
    void ForNamed(const IsPlace& isPlace) {
        for (auto& [row, place] : places_) {
            for (const size_t file : files_.Named(games_[row].path)) {
                if (!SizeFits(games_[row], files_[file]) || !isPlace(row, file)) continue;
                place = file;
                break;
            }
        }
    }

    const GameList& games_;
    Files& files_;
    std::map<uint32_t, std::optional<size_t>> places_;  // by row
};

}  // namespace

std::vector<uint32_t> MissingRows(const GameList& games) {
    std::vector<uint32_t> rows;
    for (uint32_t row = 0; row < games.size(); ++row) {
        if (games[row].missing) rows.push_back(row);
    }
    return rows;
}

std::vector<FoundGame> LookForMissing(const GameList& games, std::span<const uint32_t> rows,
                                      const std::filesystem::path& folder,
                                      const std::filesystem::path& base,
                                      const ReadingProgress& progress) {
    Files files(folder);
    Search search(games, rows, files);
    search.ByName(progress);
    search.BySums(progress);
    return search.Take(base);
}

}  // namespace bw
