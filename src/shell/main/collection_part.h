// The main window's commands on a collection: names, copies, missing files.
#pragma once

#include <functional>
#include <memory>

#include "shell/framework/dialog_base.h"
#include "shell/list/game_list_view.h"
#include "shell/tasks/collection_tasks.h"

namespace bw {

class CollectionPart {
  public:
    // `menu`: how the menu on the console is to look. All must live longer.
    CollectionPart(ListHost& host, GameListView& view, CDialogBase& window,
                   std::function<ConsoleMenu()> menu);

    // Of the highlighted rows if they are several, else of all that show.
    void TidyNames();
    void NamesFromDatabase();
    void FindSame() { tasks_.FindSame(); }
    void KeepBest();
    void LookForMissing() { tasks_.LookForMissing(); }

    void CheckShown() { host_.Editor().SelectAll(view_.ShownRows()); }
    void UncheckShown();
    void CheckOnlyShown();

  private:
    std::vector<uint32_t> Rows() const;
    // Nothing else may change the list while the dialog is open.
    void ShowNames(std::vector<uint32_t> rows, std::optional<CollectionTasks::Named> named);

    ListHost& host_;
    GameListView& view_;
    CDialogBase& window_;
    std::function<ConsoleMenu()> menu_;
    CollectionTasks tasks_;
};

}  // namespace bw
