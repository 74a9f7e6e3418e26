// "Does it fit?" in the main window.
#pragma once

#include "rom/board_tables.h"
#include "shell/list/game_list_view.h"
#include "shell/tasks/list_host.h"

namespace bw {

class FitPart {
  public:
    // All must live longer; the dialog belongs to `window`.
    FitPart(ListHost& host, const GameListView& view, QWidget& window)
        : host_(host), view_(view), window_(window) {}

    // The dialog; returns when it has closed. Refuses while a task has the list.
    void Show(BoardType board);

  private:
    ListHost& host_;
    const GameListView& view_;
    QWidget& window_;
};

}  // namespace bw
