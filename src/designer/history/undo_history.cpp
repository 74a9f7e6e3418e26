#include "designer/history/undo_history.h"

#include <algorithm>
#include <limits>

#include "designer/model/chunk_file.h"
#include "designer/model/stored_numbers.h"

namespace bw {

bool UndoHistory::CommitEditStep(const WorkState& state) {
    if (pending_.empty() || pending_ == state) return false;
    deltas_.erase(deltas_.begin() + static_cast<ptrdiff_t>(index_), deltas_.end());
    if (!empty_ && index_ != 0 && pending_ != current_) {
        const WorkState previous = deltas_.back().Backward(current_);
        deltas_.back() = StateDelta(previous, pending_);
    }
    deltas_.emplace_back(pending_, state);
    current_ = state;
    index_ = deltas_.size();
    empty_ = false;
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

void UndoHistory::MoveTo(size_t index) {
    for (; index_ > index; --index_)
        current_ = deltas_[index_ - 1].Backward(current_);
    for (; index_ < index; ++index_)
        current_ = deltas_[index_].Forward(current_);
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
    for (size_t i = index_; i > 0; --i)
        state = deltas_[i - 1].Backward(state);
    for (size_t i = 0;; ++i) {
        for (const uint32_t word : {kStateContainer, std::numeric_limits<uint32_t>::max(), 1u,
                                    static_cast<uint32_t>(state.size())}) {
            Append32(stored, word);
        }
        stored.insert(stored.end(), state.begin(), state.end());
        if (i == deltas_.size()) return stored;
        state = deltas_[i].Forward(state);
    }
}

void UndoHistory::Load(std::span<const uint8_t> stored, uint64_t index) {
    *this = UndoHistory();
    while (stored.size() >= kChunkHeaderSize && Read32(stored, 0) == kStateContainer) {
        const size_t size = Read32(stored, 12);
        if (size > stored.size() - kChunkHeaderSize) break;
        const auto state = stored.subspan(kChunkHeaderSize, size);
        Append({state.begin(), state.end()});
        stored = stored.subspan(kChunkHeaderSize + size);
    }
    MoveTo(static_cast<size_t>(std::min<uint64_t>(index, deltas_.size())));
}

}  // namespace bw
