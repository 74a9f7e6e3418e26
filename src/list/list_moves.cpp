// The moves of rows. Each is worked out as a new order of the rows from the first to
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

void ListEditor::PlaceRows(std::span<const uint32_t> rows, size_t before) {
    if (rows.empty() || rows.back() >= games_.size()) return;
    before = std::min(before, games_.size());
    ReorderRows step =
        Unmoved(std::min<size_t>(rows.front(), before), std::max<size_t>(rows.back() + 1, before));
    // Above the place nothing of them stays, below it nothing of them comes to lie.
    const auto goes = [&](uint32_t i) { return std::ranges::binary_search(rows, step.first + i); };
    const auto place = step.from.begin() + static_cast<ptrdiff_t>(before - step.first);
    const auto first =
        std::stable_partition(step.from.begin(), place, [&](uint32_t i) { return !goes(i); });
    std::stable_partition(place, step.from.end(), goes);
    if (std::ranges::is_sorted(step.from)) return;
    const auto above = static_cast<size_t>(first - step.from.begin());
    ListResult result = undo_->Do(std::move(step), games_, sort_);
    result.reveal = *result.reveal + above;
    result.highlight = rows.size();
    findRow_ = *result.reveal;
    Tell(result);
}

void ListEditor::MoveRows(std::span<const uint32_t> rows, RowMove move, ShownRows shown) {
    if (rows.empty()) return;
    const size_t first = rows.front();
    const size_t last = rows.back();
    size_t before = 0;
    switch (move) {
        case RowMove::kUp: {
            before = first - std::min<size_t>(first, 1);
            if (!shown) break;
            const auto here = std::ranges::lower_bound(*shown, first);
            before = here == shown->begin() ? first : *(here - 1);
            break;
        }
        case RowMove::kDown: {
            before = last + 2;
            if (!shown) break;
            const auto next = std::ranges::upper_bound(*shown, last);
            before = (next == shown->end() ? last : *next) + 1;
            break;
        }
        case RowMove::kTop:
            break;
        case RowMove::kBottom:
            before = games_.size();
            break;
    }
    PlaceRows(rows, before);
}

}  // namespace bw
