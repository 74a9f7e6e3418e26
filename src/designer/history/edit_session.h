// The working copy with its undo history: what a window, a script or a test edits a design through.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

#include "designer/history/undo_history.h"
#include "designer/model/views.h"
#include "designer/model/working_copy.h"

namespace bw {

// The one door to the working copy. It opens in two ways: for an EditStep, which undo takes back,
// and for RunWithoutStep, which leaves no step.
class EditSession {
  public:
    EditSession() = default;
    explicit EditSession(WorkingCopy copy) : copy_(std::move(copy)) {}
    EditSession(const EditSession&) = delete;
    EditSession& operator=(const EditSession&) = delete;

    const WorkingCopy& Copy() const { return copy_; }
    const UndoHistory& Steps() const { return steps_; }

    // Runs a command as one step of the undo history; one that throws is rolled back. The result
    // names the views that are out of date.
    Views Run(const std::function<Views(WorkingCopy&)>& command);

    // Runs a command that is no step: what the user switches on to look at, the names and the page
    // shown, opening and closing. What it changes of the document all the same belongs to the state
    // in front of the next step. During a step it is part of that one, and rolled back with it. The
    // result is the command's.
    template <typename Command>
    auto RunWithoutStep(Command command) {
        return command(copy_);
    }

    // No views: there was nothing to go back or forward to. Not during a step.
    Views Undo();
    Views Redo();
    // In one jump to a state of the history, from 0 on; the same as that many undos or redos.
    Views GoTo(size_t state);

    // The steps of an earlier run, in place of those that are there.
    void LoadSteps(UndoHistory steps) { steps_.ReplaceBy(std::move(steps)); }

  private:
    friend class EditStep;

    void BeginEditStep();
    void CommitEditStep();
    void RollBackEditStep();
    Views Apply(const std::optional<WorkState>& state);

    WorkingCopy copy_;
    UndoHistory steps_;
    WorkingCopy before_;  // as the step at hand began; kept for its memory
    bool stepOpen_ = false;
};

// A step of the undo history while it is made, one at a time: commands as a rule come by Run, this
// is for gestures that last. Left without Commit, it brings back the working copy as it was when
// the step began, with all that the history doesn't hold.
class EditStep {
  public:
    // `session` must outlive the step.
    explicit EditStep(EditSession& session) : session_(&session) { session.BeginEditStep(); }
    ~EditStep() {
        if (session_ != nullptr) session_->RollBackEditStep();
    }
    EditStep(const EditStep&) = delete;
    EditStep& operator=(const EditStep&) = delete;

    // Until Commit.
    WorkingCopy& Copy() { return session_->copy_; }

    void Commit() { std::exchange(session_, nullptr)->CommitEditStep(); }

  private:
    EditSession* session_;  // none: the step is over
};

}  // namespace bw
