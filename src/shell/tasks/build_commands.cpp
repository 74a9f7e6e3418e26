#include "shell/tasks/build_commands.h"

#include <memory>
#include <utility>

#include "builder/build_driver.h"
#include "builder/build_words.h"
#include "list/added_games.h"
#include "shell/tasks/window_build_user.h"
#include "support/paths.h"

namespace bw {
namespace {

// What a build or an export reads and makes. The task's thread alone uses it until it ends.
struct Job {
    explicit Job(ListHost& host)
        : games(WithAbsolutePaths(host.Editor().Games(), host.Base())),
          settings(LoadBuildSettings(host.Store())),
          language(host.CurrentLanguage()),
          store(host.Store()),
          dialogs(host.Dialogs()),
          design(host.Design()) {
        std::filesystem::path& menu = settings.ExternMenuPath;
        if (!menu.empty()) menu = AbsolutePath(menu, host.Base());
    }

    BuildContext Context(BuildUser& user, std::filesystem::path workFolder) {
        return {games, settings, store, design, user, std::move(workFolder), {}};
    }

    GameList games;
    BuildSettings settings;
    Language language;
    SettingsStore& store;
    UserDialogs& dialogs;
    // A copy, of which nothing goes back: the build sets the caption alone, and every other reader
    // of the caption sets it before.
    DesignStore design;
    BuildOutcome outcome;
    bool stopped = false;
};

std::u16string EndText(const Job& job) {
    if (job.outcome.done) return BuildSummary(job.outcome, job.language);
    if (job.stopped) return BuildStoppedText(job.language);
    return LoadText(TextId::kNoRomWritten, job.language);
}

std::u16string ExportEndText(const Job& job) {
    return LoadText(job.outcome.done ? TextId::kInfoExported : TextId::kExportIncomplete,
                    job.language);
}

}  // namespace

void BuildCommands::BuildCoolboy() {
    Build(LoadBuildSettings(host_.Store()).CoolboyBoard());
}

void BuildCommands::BuildCoolgirl() {
    Build(BoardType::kCoolgirl);
}

void BuildCommands::Build(BoardType board) {
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
    const auto job = std::make_shared<Job>(host_);
    tasks.StartListTask(
        std::move(turn),
        [job, board, sweep](TaskControl& control) {
            if (sweep) RemoveAbandonedWorkFolders();
            WindowBuildUser user(control, job->dialogs, job->language);
            // The build would clear the window's flag before the window has heard of its end, and
            // another task could slip in; the window's flag is the task's, this one the build's.
            std::atomic<bool> buildBusy = false;
            job->outcome = BuildRom(job->Context(user, WorkFolder()), board, buildBusy);
            job->stopped = user.Cancelled();
        },
        [this, job] { host_.Tell(EndText(*job)); });
}

void BuildCommands::Export() {
    host_.Tell({});
    const auto job = std::make_shared<Job>(host_);
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
