#include "cli/written_files.h"

#include <algorithm>
#include <utility>

#include "builder/build_driver.h"
#include "builder/output/kept_folder.h"
#include "builder/output/rom_writer.h"
#include "language/problem_text.h"
#include "list/list_file.h"
#include "rom/image_files.h"
#include "support/file_queries.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// A file that is there, behind all links. The size tells most files apart at half the cost.
struct Existing {
    fs::path path;
    uint64_t size;

    bool SameAs(const Existing& other) const {
        return size == other.size && IsSameFile(path, other.path);
    }
};

std::optional<Existing> Look(const fs::path& path) {
    const FileResult<uint64_t> size = FileSize(path);
    return size ? std::optional(Existing{path, *size}) : std::nullopt;
}

// The files of an export that are in the folder already.
void AddExported(const fs::path& folder, std::vector<fs::path>& files) {
    const auto entries = ListFolder(folder).ValueOr({});
    for (const FolderEntry& entry : entries) {
        if (IsExportedName(PathText(entry.path.filename()))) files.push_back(entry.path);
    }
}

fs::path PngFile(const fs::path& given) {
    fs::path file = NormalPath(FromCurrentFolder(given));
    if (!HasExtension(file, "png")) file += ".png";
    return file;
}

class Comparison {
  public:
    Comparison(const Arguments& arguments, const GatheredGames& gathered, Language language)
        : arguments_(arguments), gathered_(gathered), language_(language) {
        CollectOutputs();
        CollectInputs();
    }

    std::optional<Diagnostic> Find() const {
        if (auto twice = FindTwice()) return twice;
        if (auto replaced = FindReplacedInput()) return replaced;
        return arguments_.keepWork ? FindInKeptFolder(*arguments_.keepWork) : std::nullopt;
    }

  private:
    void CollectOutputs() {
        const bool builds = arguments_.command == Command::kBuild;
        if (builds && !arguments_.output.empty()) outputs_.push_back(RomFile(arguments_));
        if (!arguments_.report.empty() && arguments_.report != "-") {
            outputs_.push_back(NormalPath(FromCurrentFolder(arguments_.report)));
        }
        if (arguments_.command == Command::kList && !arguments_.output.empty()) {
            outputs_.push_back(ListFile(arguments_));
        }
        if (arguments_.command == Command::kDesignRender) {
            outputs_.push_back(PictureFile(arguments_));
        }
        if (arguments_.command == Command::kDesignImportPicture) {
            outputs_.push_back(DesignFileOf(arguments_));
        }
        if (!arguments_.checking.sheet.empty()) outputs_.push_back(SheetFile(arguments_));
        if (arguments_.command == Command::kExport) {
            AddExported(FromCurrentFolder(arguments_.folder), outputs_);
        }
        const fs::path& menu = arguments_.settings.ExternMenuPath;
        const bool assembles = builds || arguments_.command == Command::kCheck;
        if (assembles &&
            HasExtension(menu, "asm")) {  // leaves its ROM and its tables beside itself
            outputs_.push_back(NormalPath(fs::path(menu).replace_extension(".nes")));
            AddExported(menu.parent_path() / "build", outputs_);
        }
    }

    void CollectInputs() {
        // A list may be saved over itself: it is read whole before.
        if (arguments_.command != Command::kList) {
            for (const fs::path& input : arguments_.inputs)
                inputs_.push_back(ContainerOf(FromCurrentFolder(input)));
        }
        for (const GameEntry& game : gathered_.games)
            AddGame(ContainerOf(TextPath(game.path)));
        // A design that a picture goes into may be named as the output too: it is read whole
        // before.
        const fs::path design = NormalPath(FromCurrentFolder(arguments_.design));
        const bool again = arguments_.command == Command::kDesignImportPicture &&
                           design == DesignFileOf(arguments_);
        if (!design.empty() && !again) inputs_.push_back(design);
        for (const fs::path& names : arguments_.names)
            inputs_.push_back(FromCurrentFolder(names));
        // Only the ROM itself may take the place of the cart whose places it keeps.
        const auto& kept = arguments_.keepPlaces;
        if (kept && RealPath(*kept) != RealPath(RomFile(arguments_))) inputs_.push_back(*kept);
        if (!arguments_.picture.empty()) inputs_.push_back(FromCurrentFolder(arguments_.picture));
        if (arguments_.settings.ExternMenuEnable) {
            inputs_.push_back(arguments_.settings.ExternMenuPath);
        }
    }

    // Of the games of an archive the archive, once for those that stand together.
    void AddGame(fs::path file) {
        if (inputs_.empty() || inputs_.back() != file) inputs_.push_back(std::move(file));
    }

    std::optional<Diagnostic> FindTwice() const {
        for (size_t i = 0; i < outputs_.size(); ++i) {
            for (size_t j = 0; j < i; ++j) {
                if (outputs_[i] == outputs_[j] || IsSameFile(outputs_[i], outputs_[j])) {
                    return Replaces(outputs_[i], outputs_[j]);
                }
            }
        }
        return std::nullopt;
    }

    std::optional<Diagnostic> FindReplacedInput() const {
        std::vector<std::pair<const fs::path*, Existing>> outputs;
        for (const fs::path& output : outputs_) {
            if (auto existing = Look(output)) outputs.emplace_back(&output, std::move(*existing));
        }
        if (outputs.empty()) return std::nullopt;
        for (const fs::path& path : inputs_) {
            const std::optional<Existing> input = Look(path);
            const auto same = std::ranges::find_if(
                outputs, [&](const auto& output) { return input && input->SameAs(output.second); });
            if (same != outputs.end()) return Replaces(*same->first, path);
        }
        return std::nullopt;
    }

    // What the user has there must stay, and nothing else of this command may go there.
    std::optional<Diagnostic> FindInKeptFolder(const fs::path& folder) const {
        const auto foreign = FindForeignFile(folder);
        if (!foreign) return FileDiagnostic(foreign.Problem(), language_);
        const fs::path whole = RealPath(folder);
        for (const std::vector<fs::path>* files : {&inputs_, &outputs_}) {
            for (const fs::path& file : *files) {
                const fs::path below = RealPath(file).lexically_relative(whole);
                if (!below.empty() && *below.begin() != ".." && below != ".") {
                    return Refusal(TextId::kKeptFolderHolds, file);
                }
            }
        }
        if (*foreign) return Refusal(TextId::kKeptFileChanged, **foreign);
        return std::nullopt;
    }

    Diagnostic Replaces(const fs::path& output, const fs::path& other) const {
        return {Severity::kError,
                FormatText(LoadText(TextId::kOutputReplacesAnother, language_),
                           VisibleText(PathText(output)), VisibleText(PathText(other)))};
    }
    Diagnostic Refusal(TextId id, const fs::path& file) const {
        return {Severity::kError, FormatText(LoadText(id, language_), VisibleText(PathText(file)))};
    }

    const Arguments& arguments_;
    const GatheredGames& gathered_;
    Language language_;
    std::vector<fs::path> outputs_;
    std::vector<fs::path> inputs_;
};

}  // namespace

std::optional<Diagnostic> FindOverwritten(const Arguments& arguments, const GatheredGames& gathered,
                                          Language language) {
    return Comparison(arguments, gathered, language).Find();
}

fs::path RomFile(const Arguments& arguments) {
    return WithFormatExtension(NormalPath(FromCurrentFolder(arguments.output)), arguments.format);
}

fs::path ListFile(const Arguments& arguments) {
    return WithListExtension(NormalPath(FromCurrentFolder(arguments.output)));
}

fs::path DesignFileOf(const Arguments& arguments) {
    fs::path file = NormalPath(FromCurrentFolder(arguments.output));
    if (!HasExtension(file, "fcm")) file += ".fcm";
    return file;
}

fs::path PictureFile(const Arguments& arguments) {
    return PngFile(arguments.output);
}

fs::path SheetFile(const Arguments& arguments) {
    return PngFile(arguments.checking.sheet);
}

}  // namespace bw
