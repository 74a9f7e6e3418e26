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
            Problem(u"找不到 %s，请检查路径。", u"%s doesn't exist. Check the path.", input);
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
            result_.warnings.push_back(
                FormatText(LoadText(TextId::kListCutToLimit, language_), kListLimit));
        }
        return std::move(result_);
    }

  private:
    std::u16string Own(std::u16string_view chinese, std::u16string_view english) const {
        return OwnText(language_, chinese, english);
    }
    void Problem(std::u16string_view chinese, std::u16string_view english,
                 const std::filesystem::path& file) {
        result_.problems.push_back(FormatText(Own(chinese, english), PathText(file)));
    }

    void AddImage(const std::filesystem::path& file) {
        GameEntry entry(FromCurrentFolder(file));
        if (!entry.HasValidHeader()) {
            result_.problems.push_back(
                FormatText(LoadText(TextId::kNotANesFile, language_), PathText(file)));
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
                result_.warnings.push_back(
                    FormatText(Own(u"%s 是输出文件，不作为游戏。",
                                   u"%s is the output and no game of this build."),
                               entry.path));
                continue;
            }
            if (!entry.HasValidHeader()) {
                result_.warnings.push_back(
                    FormatText(LoadText(TextId::kNotANesFile, language_), entry.path));
                continue;
            }
            entry.checked = true;
            result_.games.push_back(std::move(entry));
            ++taken;
        }
        if (taken == 0) {
            Problem(u"%s 中没有游戏镜像（.nes）。", u"%s holds no game images (.nes).", folder);
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
            Problem(u"%s 不是游戏列表文件，或无法读取。",
                    u"%s is no list of games, or can't be read.", file);
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
        const bool chinese = language == Language::kChinese;
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
            lines.push_back(FormatText(
                chinese ? u"%d.%s 文件不完整：文件头声明 %d 字节，实际只有 %d "
                          u"字节。请换用完整的镜像，或取消选择。"
                        : u"%d.%s is cut short: its header announces %d bytes, the file has %d. "
                          u"Get a whole image, or leave the game out.",
                ordinal, entry.name, announced, size));
        }
    }
    return lines;
}

}  // namespace bw
