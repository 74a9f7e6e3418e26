// What a build or an export from the window reads and makes: a snapshot of list and settings.
#pragma once

#include <filesystem>

#include "builder/build_driver.h"
#include "shell/tasks/list_host.h"

namespace bw {

// Made on the window's thread. The task's thread alone uses it until the task ends.
struct BuildJob {
    explicit BuildJob(ListHost& host);

    BuildContext Context(BuildUser& user, std::filesystem::path workFolder) {
        return {games, settings, store, design, user, std::move(workFolder), {}};
    }

    GameList games;  // with absolute paths
    BuildSettings settings;
    Language language;
    SettingsStore& store;
    UserDialogs& dialogs;
    // A copy, of which nothing goes back: the build sets the caption alone, and every other reader
    // of the caption sets it before.
    DesignStore design;
    BuildOutcome outcome;
    bool stopped = false;
    bool wantsFit = false;  // the games are too many, and the user wants to leave some out
};

// Shows the first game that the board can't run, if that has ended the build, and what to do about
// all of them.
void ShowUnfit(ListHost& host, const BuildJob& job);

}  // namespace bw
