// The moves of the checked rows. Each is worked out as a new order of the rows from the first to
// the last that change their places, so that it goes the way of all reordering.
#include <algorithm>
#include <utility>

#include "list/list_undo.h"

namespace bw {
namespace {

// The checked rows that a move is about.
struct Marked {
    size_t count = 0;
    size_t first = 0;
    size_t last = 0;
};

Marked FindMarked(const GameList& games) {
    Marked marked;
    for (size_t row = 0; row < games.size(); ++row) {
        if (!games[row].checked) continue;
        if (marked.count++ == 0) marked.first = row;
        marked.last = row;
    }
    return marked;
}

ReorderRows Unmoved(size_t first, size_t end) {
    ReorderRows step{static_cast<uint32_t>(first), {}, {}};
    for (uint32_t i = 0; i < end - first; ++i)
        step.from.push_back(i);
    return step;
}

}  // namespace

void ListEditor::MoveUp() {
    const Marked marked = FindMarked(games_);
    if (marked.count == 0 || marked.first == 0) return;
    if (marked.count > kMoveLimit) return Tell({.tooMany = true});
    ReorderRows step = Unmoved(marked.first - 1, marked.last + 1);
    for (size_t i = 1; i < step.from.size(); ++i) {
        if (games_[step.first + i].checked) std::swap(step.from[i - 1], step.from[i]);
    }
    Tell(undo_->Do(std::move(step), games_, sort_));
}

void ListEditor::MoveDown() {
    const Marked marked = FindMarked(games_);
    if (marked.count == 0 || marked.last + 1 == games_.size()) return;
    if (marked.count > kMoveLimit) return Tell({.tooMany = true});
    ReorderRows step = Unmoved(marked.first, marked.last + 2);
    for (size_t i = step.from.size() - 1; i-- > 0;) {
        if (games_[step.first + i].checked) std::swap(step.from[i], step.from[i + 1]);
    }
    ListResult result = undo_->Do(std::move(step), games_, sort_);
    result.reveal = marked.last + 1;
    Tell(result);
}

void ListEditor::MoveTop() {
    const Marked marked = FindMarked(games_);
    if (marked.count == 0 || marked.first == 0) return;
    if (marked.count > kMoveLimit) return Tell({.tooMany = true});
    ReorderRows step = Unmoved(0, marked.last + 1);
    std::stable_partition(step.from.begin(), step.from.end(),
                          [&](uint32_t row) { return games_[row].checked; });
    Tell(undo_->Do(std::move(step), games_, sort_));
}

void ListEditor::MoveBottom() {
    const Marked marked = FindMarked(games_);
    if (marked.count == 0 || marked.last + 1 == games_.size()) return;
    if (marked.count > kMoveLimit) return Tell({.tooMany = true});
    ReorderRows step = Unmoved(marked.first, games_.size());
    std::stable_partition(step.from.begin(), step.from.end(),
                          [&](uint32_t row) { return !games_[step.first + row].checked; });
    ListResult result = undo_->Do(std::move(step), games_, sort_);
    result.reveal = games_.size() - 1;
    Tell(result);
}

}  // namespace bw
