// The menu that opens on a row of the list.
#pragma once

#include <QMenu>

#include "shell/framework/command_menu.h"
#include "shell/list/game_list_view.h"
#include "shell/tasks/list_host.h"

namespace bw {

// What can be done with the row that was clicked last, with all rows that are highlighted, and with
// the checked ones. Entries of the
// main menu stand in it too. All must live longer.
class RowMenu : public QMenu {
  public:
    RowMenu(ListHost& host, const CommandMenu& menu, GameListView& view);

  private:
    void AddRowEntries(ListHost& host, const CommandMenu& menu, GameListView& view);
    void AddCheckedEntries(const ListHost& host, size_t checked, const CommandMenu& menu);

    QMenu checked_;
};

}  // namespace bw
