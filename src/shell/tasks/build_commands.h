// Build and export from the window.
#pragma once

#include "rom/board_tables.h"
#include "shell/tasks/list_host.h"

namespace bw {

class BuildCommands {
  public:
    explicit BuildCommands(ListHost& host) : host_(host) {}

    // COOLBOY or MINDKIDS by the stored CoolboyType.
    void BuildCoolboy();
    void BuildCoolgirl();
    // Runs beside anything else: it works on a snapshot.
    void Export();

  private:
    void Build(BoardType board);
    ListHost& host_;
};

}  // namespace bw
