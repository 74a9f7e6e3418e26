#include "cli/commands.h"

#include <algorithm>
#include <cstdio>

#include "builder/build_driver.h"
#include "builder/build_words.h"
#include "builder/layout/build_checks.h"
#include "builder/output/rom_writer.h"
#include "builder/resources.h"
#include "cli/design_commands.h"
#include "cli/design_convert.h"
#include "cli/design_render.h"
#include "cli/inputs.h"
#include "cli/report.h"
#include "cli/terminal_user.h"
#include "designer/files/design_file.h"
#include "language/problem_text.h"
#include "list/list_file.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;

class CommandRun {
  public:
    explicit CommandRun(const Arguments& arguments)
        : arguments_(arguments),
          language_(SystemLanguage()),
          user_(language_, {FromCurrentFolder(arguments.output), arguments.format},
                FromCurrentFolder(arguments.folder)) {}

    int Run() {
        const bool builds = arguments_.command == Command::kBuild;
        gathered_ = GatherGames(
            arguments_.inputs,
            builds ? WithFormatExtension(FromCurrentFolder(arguments_.output), arguments_.format)
                   : std::filesystem::path(),
            language_);
        for (const Diagnostic& diagnostic : gathered_.diagnostics) {
            if (diagnostic.severity == Severity::kWarning) Warn(FullText(diagnostic));
        }
        Errors(gathered_.diagnostics);
        switch (arguments_.command) {
            case Command::kInfo:
                return Info();
            case Command::kList:
                return List();
            case Command::kExport:
                return Gathered() && Sound() && LoadScreen() ? Export() : kFailed;
            default:
                return Gathered() && Sound() && LoadScreen() ? Build() : kFailed;
        }
    }

  private:
    const GameList& Games() const { return gathered_.games; }
    std::u16string Text(TextId id) const { return LoadText(id, language_); }
    void Error(const std::u16string& text) {
        user_.Message(text, Text(TextId::kErrorTitle), MessageKind::kError);
    }
    void Errors(const std::vector<Diagnostic>& diagnostics) {
        for (const Diagnostic& diagnostic : diagnostics) {
            if (diagnostic.severity == Severity::kError) Error(FullText(diagnostic));
        }
    }
    // True if it is done; else the user has read why not.
    bool Done(const FileResult<>& result) {
        if (!result) Error(ProblemText(result.Problem(), language_));
        return static_cast<bool>(result);
    }
    bool Gathered() const { return gathered_.FirstError() == nullptr; }

    int Info() {
        const bool printed =
            Done(PrintOut(arguments_.json ? InfoJson(Games()) : InfoTable(Games(), language_)));
        return printed && Gathered() ? kDone : kFailed;
    }

    int List() {
        if (!Gathered()) return kFailed;
        if (arguments_.output.empty()) {
            return Done(PrintOut(arguments_.json ? ListJson(Games()) : ListTable(Games())))
                       ? kDone
                       : kFailed;
        }
        std::filesystem::path file = FromCurrentFolder(arguments_.output);
        if (!HasExtension(file, "fcl")) file += ".fcl";
        const bool saved = Done(SaveListFile(file, Games(), ExecutableFolder()));
        return saved && (!arguments_.json || Done(PrintOut(ListJson(Games())))) ? kDone : kFailed;
    }

    // What would go wrong on the console without a word from the build.
    bool Sound() {
        const std::vector<Diagnostic> damaged = FindDamagedImages(Games(), language_);
        Errors(damaged);
        return damaged.empty();
    }

    // What the designer's window does with a file: open with the defaults, load, close.
    bool LoadScreen() {
        if (arguments_.design.empty()) return true;
        DesignDocument document;
        LoadDesignData(document.store, *store_, DefaultTileSet());
        document.store.CaptionText = MulticartTitle(CountChecked(Games()));
        const std::filesystem::path file = FromCurrentFolder(arguments_.design);
        if (const DesignProblem problem = OpenDesign(file, document, language_)) {
            Error(FullText(*problem));
            return false;
        }
        StoreDesign(document, *store_);
        design_ = document.store;
        std::optional<Diagnostic> misplaced =
            CheckScreenPlaces(arguments_.settings, design_, CountChecked(Games()), language_);
        if (misplaced) {
            misplaced->place.file = PathText(file);
            Error(FullText(*misplaced));
            return false;
        }
        TellWhatLooksDifferent(document);
        return true;
    }

    void Warn(const std::u16string& text) {
        user_.Message(text, Text(TextId::kWarnTitle), MessageKind::kWarning);
    }

    // What the console shows otherwise than a designer may expect.
    void TellWhatLooksDifferent(const DesignDocument& document) {
        // A column left or right of the screen counts on in the neighbouring row.
        for (const Pos& place : {document.CaptionPos, document.PageNumberPos, document.ItemPos}) {
            if (place.X < 0 || place.X >= kScreenColumns) {
                const uint32_t cell = PpuAddress(place) - PpuAddress({});
                Warn(FormatText(Text(TextId::kPlaceShownElsewhere), place.X, place.Y,
                                cell % kScreenColumns, cell / kScreenColumns));
            }
        }
        const size_t shown = document.BigCursor != 0 ? 60 : 63;
        if (document.store.SpriteTileList.size() > shown) {
            Warn(FormatText(Text(TextId::kSpritesLeftOut), document.store.SpriteTileList.size(),
                            shown));
        }
    }

    BuildContext Context() {
        return {Games(),      arguments_.settings, *store_, design_, user_,
                WorkFolder(), arguments_.keepWork};
    }

    int Export() {
        std::filesystem::path folder = FromCurrentFolder(arguments_.folder);
        if (CountChecked(Games()) == 0) {
            user_.Message(Text(TextId::kNoFilesSelected), Text(TextId::kTipsTitle),
                          MessageKind::kTips);
            return kFailed;
        }
        if (!Done(MakeFolders(folder))) return kFailed;
        return ExportInfo(Context(), static_cast<ExportType>(arguments_.settings.ExportRomType),
                          arguments_.settings.ExportMenuUnits(), folder, true)
                   ? kDone
                   : kFailed;
    }

    int Build() {
        std::atomic<bool> taskBusy = false;
        if (ReplacesAnInput() || !MayStartBuild(Games(), taskBusy, user_)) return kFailed;
        TellUnusedOptions();
        RemoveAbandonedWorkFolders();
        CancelOnInterrupt();
        const BuildOutcome outcome = BuildRom(Context(), arguments_.board, taskBusy);
        if (!outcome.done) {
            if (user_.Cancelled()) user_.Line(BuildStoppedText(language_));
            return kFailed;
        }
        user_.Line(BuildSummary(outcome, language_));
        return WriteReport(outcome) ? kDone : kFailed;
    }

    void TellUnusedOptions() {
        const BuildSettings& settings = arguments_.settings;
        if (arguments_.board == BoardType::kCoolgirl &&
            settings.MenuSize != BuildSettings().MenuSize && !settings.ExternMenuEnable) {
            Warn(Text(TextId::kMenuSizeUnused));
        }
    }

    // Writing a file of the build would replace one that it reads. The games themselves are the
    // build's to compare; this is about lists, reports and the two outputs.
    bool ReplacesAnInput() {
        const std::filesystem::path output =
            WithFormatExtension(FromCurrentFolder(arguments_.output), arguments_.format);
        const std::filesystem::path report =
            arguments_.report == "-" ? "" : FromCurrentFolder(arguments_.report);
        const auto same = [](const std::filesystem::path& a, const std::filesystem::path& b) {
            std::error_code error;
            return a == b || (std::filesystem::equivalent(a, b, error) && !error);
        };
        std::vector<std::filesystem::path> inputs(arguments_.inputs.begin(),
                                                  arguments_.inputs.end());
        if (arguments_.settings.ExternMenuEnable) {  // a source leaves its ROM beside itself
            std::filesystem::path menu = arguments_.settings.ExternMenuPath;
            inputs.push_back(menu);
            inputs.push_back(menu.replace_extension(".nes"));
        }
        if (!arguments_.design.empty()) inputs.push_back(FromCurrentFolder(arguments_.design));
        const auto isInput = [&](const std::filesystem::path& file) {
            return std::any_of(
                inputs.begin(), inputs.end(),
                [&](const std::filesystem::path& input) { return same(input, file); });
        };
        const bool outputIsWrong = isInput(output);
        if (!outputIsWrong && (report.empty() || (!isInput(report) && !same(report, output)))) {
            return false;
        }
        Error(FormatText(Text(TextId::kOutputReplacesAnother),
                         PathText(outputIsWrong ? output : report)));
        return true;
    }

    bool WriteReport(const BuildOutcome& outcome) {
        if (arguments_.report.empty()) return true;
        const std::string report = BuildReportJson(outcome);
        return Done(arguments_.report == "-" ? PrintOut(report)
                                             : WriteFile(arguments_.report, report));
    }

    const Arguments& arguments_;
    Language language_;
    TerminalUser user_;
    GatheredGames gathered_;
    DesignStore design_;
    std::unique_ptr<SettingsStore> store_ = MakeMemoryStore();
};

}  // namespace

int Execute(const Arguments& arguments) {
    if (arguments.command == Command::kDesignPack) return PackDesignFolder(arguments);
    if (arguments.command == Command::kDesignUnpack) return UnpackDesignFile(arguments);
    if (arguments.command == Command::kDesignRender) return RenderDesign(arguments);
    if (arguments.command == Command::kDesignInfo) return DesignInfo(arguments);
    if (arguments.command == Command::kDesignConvert) return ConvertDesign(arguments);
    return CommandRun(arguments).Run();
}

}  // namespace bw
