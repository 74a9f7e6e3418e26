// What the commands on the list need of the window that owns it.
#pragma once

#include <filesystem>

#include "designer/model/design_store.h"
#include "language/language.h"
#include "list/list_editor.h"
#include "list/remembered_list.h"
#include "settings/settings_store.h"
#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/background_tasks.h"

namespace bw {

class ListHost {
  public:
    virtual ~ListHost() = default;

    // Whoever shows the list hears of its operations by itself.
    virtual ListEditor& Editor() = 0;
    virtual SettingsStore& Store() = 0;
    // The process's one design, with all that the settings have for it. Tasks take a copy.
    virtual const DesignStore& Design() = 0;
    // The file of the design's undo history; empty where the store keeps it.
    virtual std::filesystem::path DesignHistory() const { return {}; }
    virtual UserDialogs& Dialogs() = 0;
    virtual BackgroundTasks& Tasks() = 0;
    virtual Language CurrentLanguage() const = 0;
    // The folder that relative paths of the list count from: the program's.
    virtual const std::filesystem::path& Base() const = 0;

    // The row that a search has found is FindRow now; or nothing was found and FindRow loses its
    // mark. Also for a row that a message is about.
    virtual void ShowFound(bool found) = 0;
    // A cart of ours that was given among what is for the list: it is shown instead.
    virtual void ShowCart(const std::filesystem::path&) {}
    virtual void SetColumnWidths(const ColumnWidths& widths) = 0;
    // A line for the status bar that stays until the next one: how a task ended. `details` are for
    // the mouse that rests on it.
    virtual void Tell(std::u16string_view line, std::u16string_view details = {}) = 0;
    // What a search came to or what was wrong with it, shown where it is asked for; empty takes it
    // back.
    virtual void ShowSearchOutcome(std::u16string_view text) { Tell(text); }
};

// For a list task; null, after telling the user, if one is running.
[[nodiscard]] BackgroundTasks::Turn BeginListTask(ListHost& host);
// The same look at TaskBusy without setting it, for commands that end before they return.
bool RefusesWhileBusy(ListHost& host);
// A message with the title of warnings.
void Warn(ListHost& host, std::u16string_view text);

}  // namespace bw
