// The steps that a list editor can take back and do again.
#pragma once

#include <cstddef>
#include <deque>

#include "list/list_steps.h"

namespace bw {

inline constexpr size_t kUndoLimit = 500;  // steps; most are a check or two

class ListUndo {
  public:
    // A new step forgets those that were taken back.
    ListResult Do(ListStep step, GameList& games, SortOrder& sort);
    // Nothing happens without a step.
    ListResult Undo(GameList& games, SortOrder& sort);
    ListResult Redo(GameList& games, SortOrder& sort);
    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }

  private:
    using Steps = std::deque<ListStep>;
    static ListResult Turn(Steps& from, Steps& to, GameList& games, SortOrder& sort);
    Steps undo_;  // the last one is the next
    Steps redo_;
};

}  // namespace bw
