#include "designer/history/undo_history.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "designer/model/chunk_file.h"
#include "designer/model/stored_numbers.h"

namespace bw {

UndoHistory::UndoHistory(WorkState present, std::vector<StateDelta> differences, size_t index)
    : empty_(false), current_(std::move(present)), deltas_(std::move(differences)), index_(index) {}

bool UndoHistory::CommitEditStep(const WorkState& state) {
    if (pending_.empty() || pending_ == state) return false;
    deltas_.erase(deltas_.begin() + static_cast<ptrdiff_t>(index_), deltas_.end());
    if (!empty_ && index_ != 0 && pending_ != current_) {
        WorkState previous = current_;
        deltas_.back().Backward(previous);
        deltas_.back() = StateDelta(previous, pending_);
    }
    deltas_.emplace_back(pending_, state);
    current_ = state;
    index_ = deltas_.size();
    empty_ = false;
    ++revision_;
    return true;
}

std::optional<WorkState> UndoHistory::Undo() {
    if (empty_) return std::nullopt;
    if (index_ != 0) MoveTo(index_ - 1);
    return current_;
}

std::optional<WorkState> UndoHistory::Redo() {
    if (!CanRedo()) return std::nullopt;
    MoveTo(index_ + 1);
    return current_;
}

std::optional<WorkState> UndoHistory::GoTo(size_t index) {
    if (index >= Count()) return std::nullopt;
    MoveTo(index);
    return current_;
}

void UndoHistory::MoveTo(size_t index) {
    Walk(current_, index_, index);
    index_ = index;
}

void UndoHistory::Walk(WorkState& state, size_t from, size_t to) const {
    for (; from > to; --from)
        deltas_[from - 1].Backward(state);
    for (; from < to; ++from)
        deltas_[from].Forward(state);
}

void UndoHistory::Append(const WorkState& state) {
    if (!empty_) {
        deltas_.emplace_back(current_, state);
        index_ = deltas_.size();
    }
    current_ = state;
    empty_ = false;
}

std::vector<uint8_t> UndoHistory::Store() const {
    std::vector<uint8_t> stored;
    if (empty_) return stored;
    WorkState state = current_;
    Walk(state, index_, 0);
    for (size_t i = 0;; ++i) {
        for (const uint32_t word : {kStateContainer, std::numeric_limits<uint32_t>::max(), 1u,
                                    static_cast<uint32_t>(state.size())}) {
            Append32(stored, word);
        }
        stored.insert(stored.end(), state.begin(), state.end());
        if (i == deltas_.size()) return stored;
        deltas_[i].Forward(state);
    }
}

UndoHistory UndoHistory::FromStored(std::span<const uint8_t> stored, uint64_t index) {
    UndoHistory history;
    while (stored.size() >= kChunkHeaderSize && Read32(stored, 0) == kStateContainer) {
        const size_t size = Read32(stored, 12);
        if (size > stored.size() - kChunkHeaderSize) break;
        const auto state = stored.subspan(kChunkHeaderSize, size);
        history.Append({state.begin(), state.end()});
        stored = stored.subspan(kChunkHeaderSize + size);
    }
    history.MoveTo(static_cast<size_t>(std::min<uint64_t>(index, history.deltas_.size())));
    return history;
}

void UndoHistory::ReplaceBy(UndoHistory other) {
    const uint64_t revision = revision_ + 1;
    *this = std::move(other);
    revision_ = revision;
}

}  // namespace bw
