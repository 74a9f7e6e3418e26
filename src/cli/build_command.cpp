#include "cli/build_command.h"

#include <memory>

#include "builder/build_driver.h"
#include "builder/build_words.h"
#include "builder/layout/build_checks.h"
#include "builder/resources.h"
#include "builder/tables/design_compile.h"
#include "cli/game_command.h"
#include "cli/report.h"
#include "cli/unsupported_games.h"
#include "cli/written_files.h"
#include "designer/files/design_file.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

// What a build and an export have in common.
class MakingCommand : protected GameCommand {
  protected:
    MakingCommand(const Arguments& arguments, const std::filesystem::path& output)
        : GameCommand(arguments, output) {
        if (!arguments.skipUnsupported) return;
        for (const std::u16string& line :
             UncheckUnsupported(gathered_.games, arguments.board, language_)) {
            user_.Note(line);
        }
    }

    // What the designer's window does with a file: open with the defaults, load, close.
    bool LoadScreen() {
        if (arguments_.design.empty()) return true;
        DesignDocument document;
        LoadDesignData(document.store, *store_, DefaultTileSet());
        document.store.CaptionText = MulticartTitle(CountChecked(Games()));
        const std::filesystem::path file = FromCurrentFolder(arguments_.design);
        if (const DesignProblem problem = OpenDesign(file, document, language_)) {
            user_.Error(FullText(*problem));
            return false;
        }
        StoreDesign(document, *store_);
        design_ = document.store;
        std::optional<Diagnostic> misplaced =
            CheckScreenPlaces(arguments_.settings, design_, CountChecked(Games()), language_);
        if (misplaced) {
            misplaced->place.file = VisibleText(PathText(file));
            user_.Error(FullText(*misplaced));
            return false;
        }
        TellWhatLooksDifferent(document);
        return !user_.Refused();
    }

    BuildContext Context() {
        return {Games(),      arguments_.settings, *store_,          design_, user_,
                WorkFolder(), arguments_.keepWork, arguments_.dryRun};
    }

    // What to do about games that the board can't run, if it is those that were refused.
    void TellWayOut() {
        const std::u16string text = WayOut(Games(), arguments_.board, language_);
        if (!text.empty() && !user_.Cancelled()) user_.Note(text);
    }

  private:
    // What the console shows otherwise than a designer may expect.
    void TellWhatLooksDifferent(const DesignDocument& document) {
        std::vector<Pos> places{document.CaptionPos, document.ItemPos};
        if (arguments_.settings.PageNumber) places.push_back(document.PageNumberPos);
        for (const Pos& place : places) {
            const Pos shown = ConsoleCell(place);
            if (shown != place) {
                user_.Warn(FormatText(Text(TextId::kPlaceShownElsewhere), place.X, place.Y, shown.X,
                                      shown.Y));
            }
        }
        const size_t shown = SpritesShown(document.BigCursor != 0);
        if (document.store.SpriteTileList.size() > shown) {
            user_.Warn(FormatText(Text(TextId::kSpritesLeftOut),
                                  document.store.SpriteTileList.size(), shown));
        }
    }

    DesignStore design_;
    std::unique_ptr<SettingsStore> store_ = MakeMemoryStore();
};

class RomCommand : MakingCommand {
  public:
    explicit RomCommand(const Arguments& arguments)
        : MakingCommand(arguments,
                        arguments.output.empty() ? arguments.output : RomFile(arguments)) {}

    int Run() {
        std::atomic<bool> taskBusy = false;
        if (!Gathered() || !LoadScreen() || !SparesFiles() || !UsesAllOptions() ||
            !MayStartBuild(Games(), taskBusy, user_)) {
            return kFailed;
        }
        RemoveAbandonedWorkFolders();
        CancelOnEndRequest();
        const BuildOutcome outcome = BuildRom(Context(), arguments_.board, taskBusy);
        if (!outcome.done) {
            if (user_.Cancelled()) user_.Note(BuildStoppedText(language_));
            TellWayOut();
            return kFailed;
        }
        return Tell(outcome) && outcome.workKept ? kDone : kFailed;
    }

  private:
    bool UsesAllOptions() {
        const BuildSettings& settings = arguments_.settings;
        const bool unused = arguments_.board == BoardType::kCoolgirl &&
                            settings.MenuSize != BuildSettings().MenuSize &&
                            !settings.ExternMenuEnable;
        return !unused || user_.Warn(Text(TextId::kMenuSizeUnused));
    }

    // What was made, or would be.
    bool Tell(const BuildOutcome& outcome) {
        if (!arguments_.dryRun) {
            user_.Note(BuildSummary(outcome, language_));
            user_.Detail(SpaceText(outcome, language_));
            return WriteReport(outcome);
        }
        if (!arguments_.report.empty()) return WriteReport(outcome);
        return Done(PrintOut(BuildTable(outcome, language_) +
                             ToUtf8(SpaceText(outcome, language_)) + "\n"));
    }

    bool WriteReport(const BuildOutcome& outcome) {
        if (arguments_.report.empty()) return true;
        const std::string report = BuildReportJson(outcome);
        return Done(arguments_.report == "-" ? PrintOut(report)
                                             : WriteFile(arguments_.report, report));
    }
};

class TableExport : MakingCommand {
  public:
    explicit TableExport(const Arguments& arguments) : MakingCommand(arguments, {}) {}

    int Run() {
        std::filesystem::path folder = FromCurrentFolder(arguments_.folder);
        if (!Gathered() || !LoadScreen() || !SparesFiles()) return kFailed;
        if (CountChecked(Games()) == 0) {
            user_.Message(Text(TextId::kNoFilesSelected), Text(TextId::kTipsTitle),
                          MessageKind::kTips);
            return kFailed;
        }
        if (!Done(MakeFolders(folder))) return kFailed;
        if (!ExportInfo(Context(), static_cast<ExportType>(arguments_.settings.ExportRomType),
                        arguments_.settings.ExportMenuUnits(), folder, true)) {
            TellWayOut();
            return kFailed;
        }
        user_.Note(FormatText(Text(TextId::kTablesWritten), VisibleText(PathText(folder)),
                              CountChecked(Games())));
        return kDone;
    }
};

}  // namespace

int Build(const Arguments& arguments) {
    return RomCommand(arguments).Run();
}

int ExportTables(const Arguments& arguments) {
    return TableExport(arguments).Run();
}

}  // namespace bw
