#include "shell/tasks/build_job.h"

#include "list/added_games.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

BuildJob::BuildJob(ListHost& host)
    : games(WithAbsolutePaths(host.Editor().Games(), host.Base())),
      settings(LoadBuildSettings(host.Store())),
      language(host.CurrentLanguage()),
      store(host.Store()),
      dialogs(host.Dialogs()),
      design(host.Design()) {
    std::filesystem::path& menu = settings.ExternMenuPath;
    if (!menu.empty()) menu = AbsolutePath(menu, host.Base());
}

void ShowUnfit(ListHost& host, const BuildJob& job) {
    if (job.outcome.unfit.empty()) return;
    const Diagnostic& first = job.outcome.unfit.front();
    if (first.place.row == 0 || first.place.row > host.Editor().Games().size()) return;
    host.Editor().SetFindRow(first.place.row - 1);
    host.ShowFound(true);
    host.Tell(FormatText(LoadText(TextId::kRefusedAtRow, job.language), first.place.row,
                         ToWide(BoardName(job.outcome.board))));
}

}  // namespace bw
