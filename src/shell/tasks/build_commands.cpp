#include "shell/tasks/build_commands.h"

#include <memory>
#include <utility>

#include "builder/build_driver.h"
#include "builder/build_words.h"
#include "builder/layout/board_space.h"
#include "builder/layout/shared_saves.h"
#include "shell/tasks/build_job.h"
#include "shell/tasks/window_build_user.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::u16string_view kUnnamed = u"multicart";

std::u16string EndText(const BuildJob& job) {
    if (job.outcome.done) return BuildSummary(job.outcome, job.language);
    if (job.stopped) return BuildStoppedText(job.language);
    return LoadText(TextId::kNoRomWritten, job.language);
}

std::u16string ExportEndText(const BuildJob& job) {
    return LoadText(job.outcome.done ? TextId::kInfoExported : TextId::kExportIncomplete,
                    job.language);
}

// What to know of the saves of a cart that was built.
std::u16string SharedSaves(const BuildJob& job, BoardType board) {
    if (!job.outcome.done) return {};
    return SharedSavesText(job.games, RowsSharingSaves(job.games, board), job.language);
}

}  // namespace

TextId FitEntry(BoardType board) {
    switch (board) {
        case BoardType::kCoolgirl:
            return TextId::kFitCoolgirlEntry;
        case BoardType::kMindkids:
            return TextId::kFitMindkidsEntry;
        default:
            return TextId::kFitCoolboyEntry;
    }
}

void BuildCommands::BuildCoolboy(std::u16string_view name) {
    Build(LoadBuildSettings(host_.Store()).CoolboyBoard(), name);
}

void BuildCommands::BuildCoolgirl(std::u16string_view name) {
    Build(BoardType::kCoolgirl, name);
}

void BuildCommands::CheckFitting(BoardType board, ListEditor::ShownRows shown) {
    ListEditor& editor = host_.Editor();
    const size_t all = shown ? shown->size() : editor.Games().size();
    const size_t fitting = editor.CheckExactly(
        [board](const GameEntry& entry) { return GameSpan(entry, board).has_value(); }, shown);
    host_.Tell(FormatText(LoadText(TextId::kFittingChecked, host_.CurrentLanguage()), fitting,
                          ToWide(BoardName(board)), all - fitting));
}

void BuildCommands::Build(BoardType board, std::u16string_view name) {
    BackgroundTasks& tasks = host_.Tasks();
    if (const auto problem =
            CheckBuildStart(host_.Editor().Games(), tasks.TaskBusy(), host_.CurrentLanguage())) {
        Warn(host_, problem->text);
        return;
    }
    BackgroundTasks::Turn turn = tasks.TryBegin();
    if (!turn) return;
    host_.Tell({});
    const bool sweep = !std::exchange(sweptFolders_, true);
    const auto job = std::make_shared<BuildJob>(host_);
    tasks.StartListTask(
        std::move(turn),
        [job, board, sweep,
         name = std::u16string(name.empty() ? kUnnamed : name)](TaskControl& control) {
            if (sweep) RemoveAbandonedWorkFolders();
            WindowBuildUser user(control, job->dialogs, job->language, name);
            // The build would clear the window's flag before the window has heard of its end, and
            // another task could slip in; the window's flag is the task's, this one the build's.
            std::atomic<bool> buildBusy = false;
            job->outcome = BuildRom(job->Context(user, WorkFolder()), board, buildBusy);
            job->stopped = user.Cancelled();
            job->wantsFit = user.WantsFit();
        },
        [this, job, board] {
            host_.Tell(EndText(*job), SharedSaves(*job, board));
            ShowUnfit(host_, *job);
            if (job->wantsFit && listener_.tooMuch) listener_.tooMuch(board);
            if (!job->outcome.done) return;
            built_ = CartOf(job->outcome);
            if (listener_.built) listener_.built();
        });
}

void BuildCommands::Export() {
    host_.Tell({});
    const auto job = std::make_shared<BuildJob>(host_);
    host_.Tasks().StartFreeTask(
        [job](TaskControl& control) {
            WindowBuildUser user(control, job->dialogs, job->language);
            // A build that runs beside it removes its own folder at its end.
            std::filesystem::path folder = WorkFolder();
            folder += "-export";
            job->outcome.done = RunExport(job->Context(user, folder));
        },
        [this, job] { host_.Tell(ExportEndText(*job)); });
}

}  // namespace bw
