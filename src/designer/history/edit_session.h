// The working copy with its history: what a window, a script or a test edits a design through.
#pragma once

#include <functional>

#include "designer/history/history.h"
#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

class EditSession {
  public:
    EditSession() = default;
    explicit EditSession(WorkingCopy copy) : copy_(std::move(copy)) {}

    WorkingCopy& Copy() { return copy_; }
    const WorkingCopy& Copy() const { return copy_; }
    History& Steps() { return history_; }
    const History& Steps() const { return history_; }

    // Runs a command as one step of the history. The result names the views that are out of date.
    Views Run(const std::function<Views(WorkingCopy&)>& command);

    // The same in two halves, for gestures that last.
    void BeginEditStep();
    void CommitEditStep();

    // No views: there was nothing to go back or forward to.
    Views Undo();
    Views Redo();

  private:
    WorkingCopy copy_;
    History history_;
};

}  // namespace bw
