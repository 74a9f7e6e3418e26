// Build and export from the window.
#pragma once

#include "rom/board_tables.h"
#include "shell/tasks/list_host.h"

namespace bw {

class BuildCommands {
  public:
    explicit BuildCommands(ListHost& host) : host_(host) {}

    // Both refuse while a task runs or too many games are checked. They work on a snapshot of list
    // and settings, in the language of the moment.

    // COOLBOY or MINDKIDS by the stored CoolboyType.
    void BuildCoolboy();
    void BuildCoolgirl();
    // The same, but runs beside anything else.
    void Export();

  private:
    void Build(BoardType board);
    ListHost& host_;
    bool sweptFolders_ = false;  // work folders of builds that were killed
};

}  // namespace bw
