// The designer's undo: a list of work states, of which only one is held whole and the others as
// differences to their neighbours. Nothing limits its length.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "designer/history/state_delta.h"

namespace bw {

class UndoHistory {
  public:
    UndoHistory() = default;
    // What Present, Differences and Index of another one have given; `index` is at most the number
    // of differences, and each of them fits.
    UndoHistory(WorkState present, std::vector<StateDelta> differences, size_t index);

    // A command is about to change the document, which is at `state`.
    void BeginEditStep(WorkState state) { pending_ = std::move(state); }

    // The command is done and the document at `state`. Equal states leave no trace; otherwise the
    // states behind the present one are dropped, the present one is replaced by what the document
    // was when the step began (things may have changed outside of any step), and `state` joins
    // behind it. True if a step was made.
    bool CommitEditStep(const WorkState& state);

    // The state to go back or forward to; nothing if there is none at all (or, for Redo, none
    // further on). At the first state Undo gives that one again.
    std::optional<WorkState> Undo();
    std::optional<WorkState> Redo();

    // The state with this number; nothing beyond the last one.
    std::optional<WorkState> GoTo(size_t index);

    bool CanUndo() const { return index_ != 0; }
    bool CanRedo() const { return index_ < deltas_.size(); }
    size_t Count() const { return empty_ ? 0 : deltas_.size() + 1; }
    // HistoryDataIndex: of the state that the document equals.
    size_t Index() const { return index_; }

    // Takes the states of another one in place of its own.
    void ReplaceBy(UndoHistory other);

    // The state at Index, empty if there is none; and the differences from each state to the next.
    const WorkState& Present() const { return current_; }
    const std::vector<StateDelta>& Differences() const { return deltas_; }
    // Turns the state numbered `from` into the one numbered `to`.
    void Walk(WorkState& state, size_t from, size_t to) const;
    // Another number whenever states have come or gone; going from one to another changes nothing.
    uint64_t Revision() const { return revision_; }

    // For the settings: each state behind a header of four 32-bit numbers, 16, 0xFFFFFFFF, 1 and
    // its length. Every state is whole there, some 10 to 40 KB each.
    std::vector<uint8_t> Store() const;
    // The other way: the states up to the first damaged one. An index beyond the last state becomes
    // the last.
    static UndoHistory FromStored(std::span<const uint8_t> stored, uint64_t index);

  private:
    void Append(const WorkState& state);
    void MoveTo(size_t index);

    uint64_t revision_ = 0;
    bool empty_ = true;
    WorkState pending_;               // PendingWorkState; empty until the first step
    WorkState current_;               // the state at index_
    std::vector<StateDelta> deltas_;  // from each state to the next
    size_t index_ = 0;
};

}  // namespace bw
