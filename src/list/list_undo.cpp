#include "list/list_undo.h"

#include <utility>

namespace bw {

ListResult ListUndo::Do(ListStep step, GameList& games, SortOrder& sort) {
    redo_.clear();
    AppliedStep applied = Apply(std::move(step), games, sort);
    undo_.push_back(std::move(applied.inverse));
    if (undo_.size() > kUndoLimit) undo_.pop_front();
    return applied.result;
}

ListResult ListUndo::Turn(Steps& from, Steps& to, GameList& games, SortOrder& sort) {
    if (from.empty()) return {};
    AppliedStep applied = Apply(std::move(from.back()), games, sort);
    from.pop_back();
    to.push_back(std::move(applied.inverse));
    return applied.result;
}

ListResult ListUndo::Undo(GameList& games, SortOrder& sort) {
    return Turn(undo_, redo_, games, sort);
}

ListResult ListUndo::Redo(GameList& games, SortOrder& sort) {
    return Turn(redo_, undo_, games, sort);
}

}  // namespace bw
