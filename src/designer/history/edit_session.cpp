#include "designer/history/edit_session.h"

#include <cassert>

#include "designer/history/work_state.h"

namespace bw {

Views EditSession::Run(const std::function<Views(WorkingCopy&)>& command) {
    EditStep step(*this);
    const Views views = command(step.Copy());
    step.Commit();
    return views;
}

void EditSession::BeginEditStep() {
    assert(!stepOpen_);
    stepOpen_ = true;
    before_ = copy_;
    steps_.BeginEditStep(BuildWorkState(copy_));
}

void EditSession::CommitEditStep() {
    assert(stepOpen_);
    steps_.CommitEditStep(BuildWorkState(copy_));
    stepOpen_ = false;
}

void EditSession::RollBackEditStep() {
    std::swap(copy_, before_);
    stepOpen_ = false;
}

Views EditSession::Undo() {
    return Apply(steps_.Undo());
}

Views EditSession::Redo() {
    return Apply(steps_.Redo());
}

Views EditSession::GoTo(size_t state) {
    return Apply(steps_.GoTo(state));
}

Views EditSession::Apply(const std::optional<WorkState>& state) {
    assert(!stepOpen_);
    return state && ApplyWorkState(*state, copy_) ? Views::All() : Views();
}

}  // namespace bw
