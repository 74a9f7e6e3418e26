#include "cli/build_command.h"

#include "builder/build_driver.h"
#include "builder/build_words.h"
#include "builder/resources.h"
#include "cli/making_command.h"
#include "cli/report.h"
#include "cli/written_files.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

class RomCommand : MakingCommand {
  public:
    explicit RomCommand(const Arguments& arguments)
        : MakingCommand(arguments,
                        arguments.output.empty() ? arguments.output : RomFile(arguments)) {}

    int Run() {
        std::atomic<bool> taskBusy = false;
        CancelOnEndRequest();
        if (!Gathered() || !Collected() || !FitsBoard() || !LoadScreen() || !NamesGames() ||
            !UsesAllOptions() || !MayStartBuild(Games(), taskBusy, user_)) {
            return kFailed;
        }
        RemoveAbandonedWorkFolders();
        const BuildOutcome outcome = BuildRom(Context(), arguments_.board, taskBusy);
        if (!outcome.done) {
            if (user_.Cancelled()) user_.Note(BuildStoppedText(language_));
            TellWayOut();
            if (outcome.overLimits) {
                user_.Note(OverText(outcome.layout, arguments_.board, language_) + u"\n" +
                           Text(TextId::kTryLeavingOut));
            }
            return kFailed;
        }
        return Tell(outcome) && outcome.workKept ? kDone : kFailed;
    }

  private:
    // What was made, or would be.
    bool Tell(const BuildOutcome& outcome) {
        if (!arguments_.dryRun) {
            user_.Note(BuildSummary(outcome, language_));
            if (outcome.changes) user_.Note(ChangesText(*outcome.changes, language_));
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
        if (!Gathered() || !Collected() || !FitsBoard() || !LoadScreen() || !NamesGames()) {
            return kFailed;
        }
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
