#include "cli/inputs.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

#include "language/problem_text.h"
#include "list/list_file.h"
#include "rom/image_files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

class Gatherer {
  public:
    Gatherer(const std::filesystem::path& output, Language language)
        : output_(PathText(output.lexically_normal())), language_(language) {}

    void Add(const std::filesystem::path& input) {
        if (std::error_code error; std::filesystem::is_directory(input, error)) {
            AddFolder(input);
        } else if (const FileResult<> file = CheckRegularFile(input); !file) {
            Tell(FileDiagnostic(file.Problem(), language_));
        } else if (HasExtension(input, "fcl")) {
            AddList(input);
        } else {
            AddImage(input);
        }
    }

    GatheredGames Take() {
        if (overLimit_ || result_.games.size() > kListLimit) {
            result_.games.resize(std::min(result_.games.size(), kListLimit));
            Tell({Severity::kWarning, FormatText(Text(TextId::kListCutToLimit), kListLimit)});
        }
        return std::move(result_);
    }

  private:
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    void Tell(Diagnostic diagnostic) { result_.diagnostics.push_back(std::move(diagnostic)); }

    // A file without a valid header: one that can't be read isn't to be taken for no image.
    void TellNoImage(const std::filesystem::path& file, Severity severity) {
        const FileResult<File> image = OpenImage(file);
        Tell(image ? Diagnostic{severity, FormatText(Text(TextId::kNotANesFile), PathText(file))}
                   : FileDiagnostic(image.Problem(), language_, severity));
    }

    void AddImage(const std::filesystem::path& file) {
        GameEntry entry(FromCurrentFolder(file));
        if (!entry.HasValidHeader()) {
            TellNoImage(file, Severity::kError);
            return;
        }
        entry.checked = true;
        result_.games.push_back(std::move(entry));
    }

    void AddFolder(const std::filesystem::path& folder) {
        size_t taken = 0;
        const std::filesystem::path absolute = FromCurrentFolder(folder).lexically_normal();
        std::vector<FileProblem> unread;
        for (GameEntry& entry : ReadGameFolder(absolute, &unread)) {
            if (entry.path == output_) {
                Tell({Severity::kWarning, FormatText(Text(TextId::kOutputIsNoGame), entry.path)});
                continue;
            }
            if (!entry.HasValidHeader()) {
                TellNoImage(TextPath(entry.path), Severity::kWarning);
                continue;
            }
            entry.checked = true;
            result_.games.push_back(std::move(entry));
            ++taken;
        }
        bool unreadItself = false;
        for (const FileProblem& problem : unread) {
            const bool itself = problem.file == absolute;
            Tell(
                FileDiagnostic(problem, language_, itself ? Severity::kError : Severity::kWarning));
            unreadItself = unreadItself || itself;
        }
        if (taken == 0 && !unreadItself) {
            Tell({Severity::kError, FormatText(Text(TextId::kNoImagesInFolder), PathText(folder))});
        }
    }

    // Relative paths of a list count from the program's folder, as the window writes them, and
    // where that names no file from the list's own folder, so that a list can travel with its
    // games.
    void AddList(const std::filesystem::path& file) {
        const std::filesystem::path own = FromCurrentFolder(file).parent_path();
        const FileResult<ListLoadResult> loaded =
            LoadListFile(file, ExecutableFolder(), result_.games, own);
        if (!loaded) {
            Tell(ListDiagnostic(loaded.Problem(), language_));
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
    for (const std::filesystem::path& input : inputs)
        gatherer.Add(input);
    return gatherer.Take();
}

const Diagnostic* GatheredGames::FirstError() const {
    const auto error = std::ranges::find(diagnostics, Severity::kError, &Diagnostic::severity);
    return error == diagnostics.end() ? nullptr : &*error;
}

std::vector<Diagnostic> FindDamagedImages(const GameList& games, Language language) {
    std::vector<Diagnostic> faults;
    uint32_t ordinal = 0;
    for (const GameEntry& entry : games) {
        if (!entry.checked) continue;
        ++ordinal;
        if (!entry.HasValidHeader()) {
            continue;  // the build tells of it
        }
        const auto add = [&](std::u16string text) {
            faults.push_back(
                {Severity::kError, std::move(text), {.row = ordinal, .name = entry.name}});
        };
        const InesHeader& header = entry.header;
        if (header.PrgCount() != header.PrgLow() || header.ChrCount() != header.ChrLow()) {
            add(FormatText(LoadText(TextId::kGameSizesNotSupported, language), ordinal, entry.name,
                           header.PrgCount() * 16, header.ChrCount() * 8));
            continue;
        }
        const uint64_t announced = kInesHeaderSize + (header.Trainer() ? kTrainerSize : 0) +
                                   uint64_t{header.PrgCount()} * kPrgUnit +
                                   uint64_t{header.ChrCount()} * kChrUnit;
        std::error_code error;
        const uint64_t size = std::filesystem::file_size(TextPath(entry.path), error);
        if (!error && size < announced) {
            add(FormatText(LoadText(TextId::kImageCutShort, language), ordinal, entry.name,
                           announced, size));
        }
    }
    return faults;
}

}  // namespace bw
