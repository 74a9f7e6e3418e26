#include "list/list_steps.h"

#include <algorithm>
#include <utility>

namespace bw {
namespace {

std::optional<size_t> FirstOf(const std::vector<uint32_t>& rows) {
    return rows.empty() ? std::nullopt : std::optional<size_t>(rows.front());
}

AppliedStep ApplyTo(GameList& games, TakeRows step) {
    PutRows inverse;
    inverse.entries.reserve(step.rows.size());
    size_t kept = step.rows.empty() ? games.size() : step.rows.front();
    size_t next = 0;
    for (size_t row = kept; row < games.size(); ++row) {
        if (next < step.rows.size() && step.rows[next] == row) {
            inverse.entries.push_back(std::move(games[row]));
            ++next;
        } else {
            games[kept++] = std::move(games[row]);
        }
    }
    games.erase(games.begin() + static_cast<ptrdiff_t>(kept), games.end());
    inverse.rows = std::move(step.rows);
    return {std::move(inverse), {ListChange::kSize}};
}

AppliedStep ApplyTo(GameList& games, PutRows step) {
    size_t old = games.size();
    games.resize(old + step.rows.size());
    // From the end, so that every entry moves once. Below the first of the rows nothing moves.
    size_t put = step.rows.size();
    for (size_t row = games.size(); put > 0; --row) {
        const bool here = step.rows[put - 1] == row - 1;
        games[row - 1] = std::move(here ? step.entries[--put] : games[--old]);
    }
    const std::optional<size_t> reveal = FirstOf(step.rows);
    return {TakeRows{std::move(step.rows)}, {ListChange::kSize, reveal}};
}

AppliedStep ApplyTo(GameList& games, SortOrder& sort, ReorderRows step) {
    const size_t count = step.from.size();
    ReorderRows inverse{step.first, std::vector<uint32_t>(count), step.sort};
    if (step.sort) inverse.sort = std::exchange(sort, *step.sort);
    GameList moved;
    moved.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        moved.push_back(std::move(games[step.first + step.from[i]]));
        inverse.from[step.from[i]] = static_cast<uint32_t>(i);
    }
    if (count == games.size()) {
        games.swap(moved);
    } else {
        std::ranges::move(moved, games.begin() + static_cast<ptrdiff_t>(step.first));
    }
    ListResult result{ListChange::kOrder};
    if (!step.sort) result.reveal = step.first;
    return {std::move(inverse), result};
}

AppliedStep ApplyTo(GameList& games, SetTexts step) {
    const std::optional<size_t> reveal =
        step.texts.empty() ? std::nullopt : std::optional<size_t>(step.texts.front().row);
    for (RowName& text : step.texts)
        std::swap(games[text.row].*step.field, text.name);
    std::ranges::reverse(step.texts);
    return {std::move(step), {ListChange::kTexts, reveal}};
}

AppliedStep ApplyTo(GameList& games, TurnedChecks step) {
    for (const uint32_t row : step.rows)
        games[row].checked = !games[row].checked;
    const std::optional<size_t> reveal = FirstOf(step.rows);
    return {std::move(step), {ListChange::kChecks, reveal}};
}

AppliedStep ApplyTo(GameList& games, SwapEntries step) {
    const std::optional<size_t> reveal =
        step.entries.empty() ? std::nullopt : std::optional<size_t>(step.entries.front().row);
    for (RowEntry& entry : step.entries)
        std::swap(games[entry.row], entry.entry);
    std::ranges::reverse(step.entries);
    return {std::move(step), {ListChange::kTexts, reveal}};
}

AppliedStep ApplyTo(GameList& games, SwapList step) {
    games.swap(step.games);
    return {std::move(step), {ListChange::kSize}};
}

}  // namespace

AppliedStep Apply(ListStep step, GameList& games, SortOrder& sort) {
    if (auto* const take = std::get_if<TakeRows>(&step)) return ApplyTo(games, std::move(*take));
    if (auto* const put = std::get_if<PutRows>(&step)) return ApplyTo(games, std::move(*put));
    if (auto* const reorder = std::get_if<ReorderRows>(&step)) {
        return ApplyTo(games, sort, std::move(*reorder));
    }
    if (auto* const texts = std::get_if<SetTexts>(&step)) return ApplyTo(games, std::move(*texts));
    if (auto* const swap = std::get_if<SwapEntries>(&step)) return ApplyTo(games, std::move(*swap));
    if (auto* const list = std::get_if<SwapList>(&step)) return ApplyTo(games, std::move(*list));
    return ApplyTo(games, std::move(std::get<TurnedChecks>(step)));
}

}  // namespace bw
