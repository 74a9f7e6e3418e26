#include "cli/inputs.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <system_error>
#include <utility>

#include "language/problem_text.h"
#include "list/left_out.h"
#include "list/list_file.h"
#include "rom/image_files.h"
#include "support/file_queries.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

// What a build for one of the boards writes: NES 2.0, mapper 268 or 342.
bool IsCart(const InesHeader& header) {
    return header.IsNes20() && (header.Mapper() == 268 || header.Mapper() == 342);
}

class Gatherer {
  public:
    Gatherer(const std::filesystem::path& output, Language language)
        : output_(output), language_(language) {}

    void Add(const std::filesystem::path& input) {
        const bool inArchive = ContainerOf(input) != input;
        const bool image = HasExtension(input, "nes");
        if (!(inArchive && image)) AddWaitingImages();
        if (IsFolder(input)) {
            AddFolder(input);
        } else if (inArchive && image) {
            waiting_.push_back(input);
        } else if (inArchive) {
            AddFolder(input);
        } else if (const FileResult<> file = CheckRegularFile(input); !file) {
            Tell(FileDiagnostic(file.Problem(), language_));
        } else if (HasExtension(input, "fcl")) {
            AddList(input);
        } else if (HasArchiveExtension(input)) {
            AddFolder(input);
        } else {
            AddImage(input, GameEntry(FromCurrentFolder(input)));
        }
    }

    GatheredGames Take() {
        AddWaitingImages();
        TellLeftOut();
        TellDoubles();
        if (overLimit_ || result_.games.size() > kListLimit) {
            result_.games.resize(std::min(result_.games.size(), kListLimit));
            Tell({Severity::kWarning, FormatText(Text(TextId::kListCutToLimit), kListLimit)});
        }
        return std::move(result_);
    }

  private:
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    void Tell(Diagnostic diagnostic) { result_.diagnostics.push_back(std::move(diagnostic)); }

    // The output of an earlier build that this one replaces. A game that happens to have that name
    // stays a game, which the output then mustn't replace.
    bool IsOldCart(const GameEntry& entry) const {
        const std::filesystem::path file = TextPath(entry.path);
        if (output_.empty() || file.filename() != output_.filename()) return false;
        return IsSameFile(file, output_) && IsCart(entry.header);
    }

    // Warns of files that take part more than once, by whatever links they came.
    void TellDoubles() {
        std::map<std::filesystem::path, std::filesystem::path> folders;  // behind all links
        std::map<std::filesystem::path, size_t> ordinals;
        size_t ordinal = 0;
        for (const GameEntry& entry : result_.games) {
            if (!entry.checked) continue;
            ++ordinal;
            if (!entry.headerRead) continue;
            std::filesystem::path file = TextPath(entry.path);
            const std::filesystem::path container = ContainerOf(file);
            if (container == file && EntryKind(file) == FileKind::kLink) {
                file = RealPath(file);
            } else {
                // What behind all links is asked once for a folder or an archive.
                const auto above = container == file ? file.parent_path() : container;
                const auto [folder, added] = folders.try_emplace(above);
                if (added) folder->second = RealPath(folder->first);
                file = folder->second / file.lexically_relative(above);
            }
            const auto [first, isFirst] = ordinals.try_emplace(file, ordinal);
            if (!isFirst) {
                Tell({Severity::kWarning,
                      FormatText(Text(TextId::kSameFileTwice), VisibleText(entry.path),
                                 first->second, ordinal)});
            }
        }
    }

    // A file without a valid header: one that can't be read isn't to be taken for no image.
    void TellNoImage(const std::filesystem::path& file, Severity severity) {
        const FileResult<ImageFile> image = OpenImage(file);
        Tell(image ? Diagnostic{severity,
                                FormatText(Text(TextId::kNotANesFile), VisibleText(PathText(file)))}
                   : FileDiagnostic(image.Problem(), language_, severity));
    }

    // Images in archives that were named one behind the other, so that each archive is read once.
    void AddWaitingImages() {
        std::vector<std::filesystem::path> absolute;
        for (const std::filesystem::path& file : waiting_)
            absolute.push_back(NormalPath(FromCurrentFolder(file)));
        std::vector<GameEntry> entries = ReadGameEntries(absolute);
        for (size_t i = 0; i < entries.size(); ++i)
            AddImage(waiting_[i], std::move(entries[i]));
        waiting_.clear();
    }

    // The first few of each kind; the rest by their number.
    void TellLeftOut() {
        constexpr size_t kTold = 10;
        std::map<LeftOut::Reason, size_t> told;
        for (const LeftOut& item : leftOut_) {
            if (++told[item.reason] <= kTold) Tell(LeftOutDiagnostic(item, language_));
        }
        for (const auto& [reason, count] : told) {
            if (count <= kTold) continue;
            Diagnostic more = LeftOutDiagnostic({{}, reason}, language_);
            more.text += FormatText(Text(TextId::kArchiveMore), count - kTold);
            Tell(std::move(more));
        }
    }

    void AddImage(const std::filesystem::path& file, GameEntry entry) {
        if (!entry.HasValidHeader()) {
            TellNoImage(file, Severity::kError);
            return;
        }
        entry.checked = true;
        result_.games.push_back(std::move(entry));
    }

    void AddFolder(const std::filesystem::path& folder) {
        size_t taken = 0;
        const std::filesystem::path absolute = NormalPath(FromCurrentFolder(folder));
        std::vector<FileProblem> unread;
        std::vector<LeftOut> leftOut;
        for (GameEntry& entry : ReadGameFolder(absolute, &unread, &leftOut)) {
            if (IsOldCart(entry)) {
                Tell({Severity::kWarning,
                      FormatText(Text(TextId::kOutputIsNoGame), VisibleText(entry.path))});
                continue;
            }
            if (!entry.HasValidHeader()) {
                const std::filesystem::path file = TextPath(entry.path);
                if (ContainerOf(file) == file) {
                    TellNoImage(file, Severity::kWarning);
                } else {
                    leftOut.push_back({file, LeftOut::Reason::kNoGame});
                }
                continue;
            }
            entry.checked = true;
            result_.games.push_back(std::move(entry));
            ++taken;
        }
        std::ranges::move(leftOut, std::back_inserter(leftOut_));
        bool unreadItself = false;
        for (const FileProblem& problem : unread) {
            const bool itself = problem.file == absolute;
            Tell(
                FileDiagnostic(problem, language_, itself ? Severity::kError : Severity::kWarning));
            unreadItself = unreadItself || itself;
        }
        if (taken == 0 && !unreadItself) {
            Tell({Severity::kError,
                  FormatText(Text(TextId::kNoImagesInFolder), VisibleText(PathText(folder)))});
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

    std::filesystem::path output_;
    Language language_;
    GatheredGames result_;
    std::vector<std::filesystem::path> waiting_;
    std::vector<LeftOut> leftOut_;
    bool overLimit_ = false;
};

}  // namespace

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

}  // namespace bw
