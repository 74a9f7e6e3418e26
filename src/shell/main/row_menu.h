// The menu that opens on a row of the list.
#pragma once

#include <QMenu>

#include "shell/list/game_list_view.h"
#include "shell/main/main_menu.h"
#include "shell/tasks/list_host.h"

namespace bw {

// What can be done with the row that was clicked last, with all rows that are highlighted, and with
// the checked ones. Entries of the
// main menu stand in it too. All must live longer.
class RowMenu : public QMenu {
  public:
    RowMenu(ListHost& host, const MainMenu& menu, GameListView& view);

  private:
    void AddRowEntries(ListHost& host, const MainMenu& menu, GameListView& view);
    void AddCheckedEntries(const ListHost& host, size_t checked, const MainMenu& menu);

    QMenu checked_;
};

}  // namespace bw
