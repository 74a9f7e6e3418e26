#include "designer/history/edit_session.h"

#include "designer/history/work_state.h"

namespace bw {

Views EditSession::Run(const std::function<Views(WorkingCopy&)>& command) {
    BeginEditStep();
    const Views views = command(copy_);
    CommitEditStep();
    return views;
}

void EditSession::BeginEditStep() {
    history_.BeginEditStep(BuildWorkState(copy_));
}

void EditSession::CommitEditStep() {
    history_.CommitEditStep(BuildWorkState(copy_));
}

Views EditSession::Undo() {
    const std::optional<WorkState> state = history_.Undo();
    return state && ApplyWorkState(*state, copy_) ? Views::All() : Views();
}

Views EditSession::Redo() {
    const std::optional<WorkState> state = history_.Redo();
    return state && ApplyWorkState(*state, copy_) ? Views::All() : Views();
}

}  // namespace bw
