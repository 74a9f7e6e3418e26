#include "cli/inputs.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "list/list_file.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

class Gatherer {
  public:
    Gatherer(const std::filesystem::path& output, Language language)
        : output_(PathText(output.lexically_normal())), language_(language) {}

    void Add(const std::filesystem::path& input) {
        std::error_code error;
        const auto kind = std::filesystem::status(input, error);
        if (!std::filesystem::exists(kind)) {
            Problem(TextId::kFileMissing, input);
        } else if (std::filesystem::is_directory(kind)) {
            AddFolder(input);
        } else if (HasExtension(input, "fcl")) {
            AddList(input);
        } else {
            AddImage(input);
        }
    }

    GatheredGames Take() {
        if (overLimit_ || result_.games.size() > kListLimit) {
            result_.games.resize(std::min(result_.games.size(), kListLimit));
            result_.warnings.push_back(FormatText(Text(TextId::kListCutToLimit), kListLimit));
        }
        return std::move(result_);
    }

  private:
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    void Problem(TextId id, const std::filesystem::path& file) {
        result_.problems.push_back(FormatText(Text(id), PathText(file)));
    }

    void AddImage(const std::filesystem::path& file) {
        GameEntry entry(FromCurrentFolder(file));
        if (!entry.HasValidHeader()) {
            Problem(TextId::kNotANesFile, file);
            return;
        }
        entry.checked = true;
        result_.games.push_back(std::move(entry));
    }

    void AddFolder(const std::filesystem::path& folder) {
        size_t taken = 0;
        const std::filesystem::path absolute = FromCurrentFolder(folder).lexically_normal();
        for (GameEntry& entry : ReadGameFolder(absolute)) {
            if (entry.path == output_) {
                result_.warnings.push_back(FormatText(Text(TextId::kOutputIsNoGame), entry.path));
                continue;
            }
            if (!entry.HasValidHeader()) {
                result_.warnings.push_back(FormatText(Text(TextId::kNotANesFile), entry.path));
                continue;
            }
            entry.checked = true;
            result_.games.push_back(std::move(entry));
            ++taken;
        }
        if (taken == 0) {
            Problem(TextId::kNoImagesInFolder, folder);
        }
    }

    // Relative paths of a list count from the program's folder, as the window writes them, and
    // where that names no file from the list's own folder, so that a list can travel with its
    // games.
    void AddList(const std::filesystem::path& file) {
        const std::filesystem::path own = FromCurrentFolder(file).parent_path();
        const std::optional<ListLoadResult> loaded =
            LoadListFile(file, ExecutableFolder(), result_.games, own);
        if (!loaded) {
            Problem(TextId::kNotAList, file);
            return;
        }
        overLimit_ = overLimit_ || loaded->overLimit;
    }

    std::u16string output_;
    Language language_;
    GatheredGames result_;
    bool overLimit_ = false;
};

}  // namespace

std::filesystem::path FromCurrentFolder(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path absolute = path.empty() ? path : std::filesystem::absolute(path, error);
    return error ? path : absolute;
}

GatheredGames GatherGames(std::span<const std::filesystem::path> inputs,
                          const std::filesystem::path& output, Language language) {
    Gatherer gatherer(output, language);
    for (const std::filesystem::path& input : inputs) {
        gatherer.Add(input);
    }
    return gatherer.Take();
}

std::vector<std::u16string> FindDamagedImages(const GameList& games, Language language) {
    std::vector<std::u16string> lines;
    uint32_t ordinal = 0;
    for (const GameEntry& entry : games) {
        if (!entry.checked) {
            continue;
        }
        ++ordinal;
        if (!entry.HasValidHeader()) {
            continue;  // the build tells of it
        }
        const InesHeader& header = entry.header;
        if (header.PrgCount() != header.PrgLow() || header.ChrCount() != header.ChrLow()) {
            lines.push_back(FormatText(LoadText(TextId::kGameSizesNotSupported, language), ordinal,
                                       entry.name, header.PrgCount() * 16, header.ChrCount() * 8));
            continue;
        }
        const uint64_t announced = kInesHeaderSize + (header.Trainer() ? kTrainerSize : 0) +
                                   uint64_t{header.PrgCount()} * kPrgUnit +
                                   uint64_t{header.ChrCount()} * kChrUnit;
        std::error_code error;
        const uint64_t size = std::filesystem::file_size(TextPath(entry.path), error);
        if (!error && size < announced) {
            lines.push_back(FormatText(LoadText(TextId::kImageCutShort, language), ordinal,
                                       entry.name, announced, size));
        }
    }
    return lines;
}

}  // namespace bw
