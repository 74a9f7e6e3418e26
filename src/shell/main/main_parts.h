// The inside of the main window, which its handlers work on.
#pragma once

#include <QTimer>
#include <memory>
#include <optional>

#include "shell/dialogs/qt_user_dialogs.h"
#include "shell/dialogs/rename_dialog.h"
#include "shell/framework/command_menu.h"
#include "shell/framework/file_drop.h"
#include "shell/list/game_list_view.h"
#include "shell/main/button_column.h"
#include "shell/main/cart_part.h"
#include "shell/main/check_part.h"
#include "shell/main/collection_part.h"
#include "shell/main/design_commands.h"
#include "shell/main/fit_part.h"
#include "shell/main/main_dialog.h"
#include "shell/main/menu_settings.h"
#include "shell/main/play_commands.h"
#include "shell/main/qt_texts.h"
#include "shell/main/recent_menu.h"
#include "shell/main/row_menu.h"
#include "shell/main/status_line.h"
#include "shell/main/tray_icon.h"
#include "shell/main/update_commands.h"
#include "shell/tasks/build_commands.h"
#include "shell/tasks/find_commands.h"
#include "shell/tasks/list_files.h"
#include "shell/tasks/list_host.h"

namespace bw {

class CMainDialog::Parts final : public ListHost {
  public:
    Parts(CMainDialog& window, const MainDialogServices& services);

    // ListHost
    ListEditor& Editor() override { return editor; }
    SettingsStore& Store() override { return services.store; }
    DesignStore& Design() override;
    std::filesystem::path DesignHistory() const override { return services.designHistory; }
    UserDialogs& Dialogs() override;
    BackgroundTasks& Tasks() override { return tasks; }
    Language CurrentLanguage() const override { return window.UiLanguage(); }
    const std::filesystem::path& Base() const override { return services.base; }
    void ShowFound(bool found) override;
    void ShowSearchOutcome(std::u16string_view text) override;
    void ShowCart(const std::filesystem::path& file) override { carts.Open(file); }
    void SetColumnWidths(const ColumnWidths& widths) override { view.SetWidths(widths); }
    void Tell(std::u16string_view line, std::u16string_view details = {}) override {
        status.Tell(line, details);
    }

    // How the last task ended, which the next command makes old; a running one goes on telling.
    void ForgetNews();
    // Everything that says something about the list as it is now.
    void ShowList();
    void OpenRecent(RecentKind kind, const std::filesystem::path& file);
    // Everything that names the board of the first build button.
    void ShowBoard();
    // Whether a build's end starts a check.
    bool ChecksBuilds() const;
    // The menu's mark for the program that lists open with; without one where that isn't ours.
    void ShowFileTypes();
    // The boards' space, a moment after the last call.
    void SpaceChanged() { spaceTimer.start(); }

    // Shows the window over all others, from the tray or from an icon.
    void BringUp();
    // Off the screen and into the tray; without a tray, down to an icon.
    void PutAway();
    bool TrayAvailable() const;
    // Nothing is under way that a window coming up, or this one closing, would disturb.
    bool MayInterrupt() const;
    // All open dialogs; whatever waits for their answers goes on as if the user had closed them.
    void CloseDialogs();
    // False if tasks run and either the user lets them, or they are told to stop and the close
    // message comes again after their end.
    bool TasksEnded(int closeCode);
    // Stores the list, somewhere. False if the window has to stay for it.
    bool KeepList();
    void ShowRowMenu(const QPoint& place);

    CMainDialog& window;
    MainDialogServices services;
    QtTexts qtTexts;
    QtUserDialogs screenDialogs;
    ListEditor editor;
    DesignStore design;  // read and changed through Design()
    CommandMenu menu;
    MenuSettings settings;
    GameListView view;
    ButtonColumn buttons;
    StatusLine status;
    TrayIcon tray;
    std::unique_ptr<CRenameDialog> rename;
    std::unique_ptr<RowMenu> rowMenu;
    BackgroundTasks tasks;
    ListFiles files;
    FindCommands find;
    BuildCommands build;
    CheckPart check;
    CollectionPart collection;
    DesignCommands designs;
    PlayCommands play;
    CartPart carts;
    FitPart fit;
    RecentMenu recent;
    FileDrop drop;
    UpdateCommands updates;
    QTimer spaceTimer;
    QTimer watchTimer;

    // The remembered list is still being read.
    bool rememberedPending = false;
    // A question about closing is open.
    bool asking = false;
    // Who closes the window as soon as the running tasks have stopped.
    std::optional<int> closing;

  private:
    // What an operation of the editor has changed.
    void Follow(const ListResult& result);
    // After each build that has written a ROM.
    void FollowBuild();
    void TasksChanged();
    void ShowSpace();
    ConsoleMenu MenuOnConsole() const;
    // What can change without anybody telling: the tray, the store.
    void Watch();
};

}  // namespace bw
