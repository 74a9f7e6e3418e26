// "Check" in the main window: its command, the window with the pictures, the marks in the list.
#pragma once

#include <QFileSystemWatcher>
#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "shell/dialogs/check_dialog.h"
#include "shell/framework/command_menu.h"
#include "shell/list/game_list_view.h"
#include "shell/tasks/check_commands.h"

namespace bw {

class CheckPart {
  public:
    // All must live longer.
    CheckPart(ListHost& host, const BuildCommands& builds, GameListView& view, CommandMenu& menu,
              CDialogBase& window, CheckServices services);

    // Checks, or shows the check that runs.
    void Check();
    // The window as the last check has left it.
    void Show();
    // After each build; `wanted`: its cart is to be checked.
    void FollowBuild(bool wanted);
    // The board of the first build button is another one.
    void FollowBoard();
    // For an end that no window can prevent.
    void StoreAll() const;

  private:
    void Begun();
    void Mark(size_t game);
    void Unmark(const QString& file);
    void ClearMarks();
    void ShowRow(size_t game);
    void SaveSheet();

    ListHost& host_;
    const BuildCommands& builds_;
    GameListView& view_;
    CommandMenu& menu_;
    CDialogBase& window_;
    CheckCommands commands_;
    std::unique_ptr<CCheckDialog> dialog_;
    std::optional<BoardType> markedOn_;
    // The files of the marked games, or the archives that they are in, and what the list calls
    // them.
    QFileSystemWatcher watcher_;
    std::map<QString, std::set<std::u16string>> watched_;
};

}  // namespace bw
