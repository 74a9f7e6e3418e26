#include "list/list_editor.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "list/list_order.h"
#include "list/list_undo.h"
#include "support/text.h"

namespace bw {
namespace {

std::vector<uint32_t> RowsFrom(size_t first, size_t count) {
    std::vector<uint32_t> rows(count);
    std::iota(rows.begin(), rows.end(), static_cast<uint32_t>(first));
    return rows;
}

// Those of the rows for which `wanted` says so.
template <typename Wanted>
std::vector<uint32_t> RowsThat(const GameList& games, ListEditor::ShownRows shown, Wanted wanted) {
    std::vector<uint32_t> rows;
    const size_t count = shown ? shown->size() : games.size();
    for (size_t i = 0; i < count; ++i) {
        const size_t row = shown ? (*shown)[i] : i;
        if (row < games.size() && wanted(row)) rows.push_back(static_cast<uint32_t>(row));
    }
    return rows;
}

// At most kCellTextLimit units, without half of a surrogate pair at the end.
std::u16string_view CutToCell(std::u16string_view text) {
    const bool pairAtEnd = text.size() > kCellTextLimit &&
                           (text[kCellTextLimit - 1] & 0xFC00) == 0xD800 &&
                           (text[kCellTextLimit] & 0xFC00) == 0xDC00;
    return text.substr(0, kCellTextLimit - (pairAtEnd ? 1 : 0));
}

bool StartsWith(std::u16string_view text, std::u16string_view folded) {
    return text.size() >= folded.size() &&
           std::equal(folded.begin(), folded.end(), text.begin(),
                      [](char16_t wanted, char16_t unit) { return FoldCase(unit) == wanted; });
}

}  // namespace

ListEditor::ListEditor(Listener listener)
    : listener_(std::move(listener)), undo_(std::make_unique<ListUndo>()) {}
ListEditor::~ListEditor() = default;

void ListEditor::Tell(const ListResult& result) const {
    const bool nothing = result.change == ListChange::kNothing && !result.reveal && !result.tooMany;
    if (listener_ && !nothing) listener_(result);
}

void ListEditor::Restore(GameList games) {
    games_ = std::move(games);
    *undo_ = ListUndo();
    Tell({ListChange::kSize});
}

void ListEditor::Append(std::vector<GameEntry> entries, Appending how) {
    const size_t room = kListLimit - std::min(games_.size(), kListLimit);
    if (how.limited && entries.size() > room) entries.resize(room);
    ListResult result;
    if (!entries.empty()) {
        PutRows step{RowsFrom(games_.size(), entries.size()), std::move(entries)};
        result.change = undo_->Do(std::move(step), games_, sort_).change;
    }
    if (how.reveal && !games_.empty()) result.reveal = games_.size() - 1;
    Tell(result);
}

void ListEditor::Replace(GameList games) {
    if (games.size() > kListLimit) games.resize(kListLimit);
    Tell(undo_->Do(SwapList{std::move(games)}, games_, sort_));
}

size_t ListEditor::Take(std::vector<uint32_t> rows, size_t highlight) {
    if (rows.empty()) return 0;
    const size_t count = rows.size();
    const size_t first = rows.front();
    ListResult result = undo_->Do(TakeRows{std::move(rows)}, games_, sort_);
    if (highlight > 0 && !games_.empty()) {
        result.reveal = std::min(first, games_.size() - 1);
        result.highlight = highlight;
        findRow_ = *result.reveal;
    }
    Tell(result);
    return count;
}

size_t ListEditor::Remove(ShownRows shown) {
    return Take(RowsThat(games_, shown, [&](size_t row) { return games_[row].checked; }), 0);
}

size_t ListEditor::Clear(ShownRows shown) {
    return Take(RowsThat(games_, shown, [](size_t) { return true; }), 0);
}

size_t ListEditor::RemoveRows(std::span<const uint32_t> rows) {
    return Take(RowsThat(games_, rows, [](size_t) { return true; }), 1);
}

void ListEditor::TurnChecks(ShownRows shown, const std::function<bool(size_t)>& turns) {
    std::vector<uint32_t> rows = RowsThat(games_, shown, turns);
    if (rows.empty()) return;
    // The user is looking at what was clicked: only undo goes there.
    Tell({undo_->Do(TurnedChecks{std::move(rows)}, games_, sort_).change});
}

void ListEditor::SelectAll(ShownRows shown) {
    TurnChecks(shown, [&](size_t row) { return !games_[row].checked; });
}

void ListEditor::SelectInverse(ShownRows shown) {
    TurnChecks(shown, [](size_t) { return true; });
}

void ListEditor::SetChecked(size_t row, bool checked) {
    const auto number = static_cast<uint32_t>(row);
    TurnChecks(std::span(&number, 1), [&](size_t) { return games_[row].checked != checked; });
}

void ListEditor::SetChecks(std::span<const uint32_t> rows, bool checked) {
    std::vector<uint32_t> turned(rows.begin(), rows.end());
    std::ranges::sort(turned);
    turned.erase(std::unique(turned.begin(), turned.end()), turned.end());
    TurnChecks(turned, [&](size_t row) { return games_[row].checked != checked; });
}

size_t ListEditor::CheckExactly(const std::function<bool(const GameEntry&)>& wanted,
                                ShownRows shown) {
    size_t count = 0;
    TurnChecks(shown, [&](size_t row) {
        const bool check = wanted(games_[row]);
        count += check ? 1 : 0;
        return games_[row].checked != check;
    });
    return count;
}

void ListEditor::Click(size_t row, const RowClick& click, ShownRows shown) {
    if (row >= games_.size()) return;
    if (click.shift) {
        const size_t first = std::min(row, findRow_);
        const size_t last = std::max(row, findRow_);
        TurnChecks(shown, [&](size_t between) {
            return between >= first && between <= last && !games_[between].checked;
        });
    } else if (click.ctrl) {
        SetChecked(row, true);
    } else {
        findRow_ = row;
        if (click.inCheckSquare) SetChecked(row, !games_[row].checked);
    }
}

void ListEditor::Sort(ListColumn column) {
    if (column == ListColumn::kNumber || column == ListColumn::kConsole) return;
    const int number = static_cast<int>(column);
    const SortOrder sort{number, number == sort_.column && !sort_.descending};
    std::optional<std::vector<uint32_t>> rows = SortedRows(games_, column, sort.descending);
    if (!rows || std::ranges::is_sorted(*rows)) {
        sort_ = sort;
        Tell({ListChange::kTitles});
        return;
    }
    Tell(undo_->Do(ReorderRows{0, *std::move(rows), sort}, games_, sort_));
}

void ListEditor::SetText(std::u16string GameEntry::*field, size_t row, std::u16string_view text) {
    text = CutToCell(text);
    if (row >= games_.size() || games_[row].*field == text) return;
    Tell(undo_->Do(SetTexts{field, {{row, std::u16string(text)}}}, games_, sort_));
}

void ListEditor::SetName(size_t row, std::u16string_view name) {
    SetText(&GameEntry::name, row, name);
}

void ListEditor::SetRemark(size_t row, std::u16string_view remark) {
    SetText(&GameEntry::remark, row, remark);
}

void ListEditor::Rename(std::vector<RowName> names) {
    std::erase_if(names, [&](const RowName& name) {
        return name.row >= games_.size() || games_[name.row].name == name.name;
    });
    if (names.empty()) return;
    Tell(undo_->Do(SetTexts{&GameEntry::name, std::move(names)}, games_, sort_));
}

void ListEditor::ReplaceEntries(std::vector<RowEntry> entries) {
    std::erase_if(entries, [&](const RowEntry& entry) { return entry.row >= games_.size(); });
    if (entries.empty()) return;
    for (RowEntry& entry : entries) {
        const GameEntry& old = games_[entry.row];
        entry.entry.name = old.name;
        entry.entry.remark = old.remark;
        entry.entry.checked = old.checked;
    }
    Tell(undo_->Do(SwapEntries{std::move(entries)}, games_, sort_));
}

void ListEditor::NoteSums(std::span<const uint32_t> rows,
                          std::span<const std::optional<ImageSums>> sums) {
    bool any = false;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i] >= games_.size() || !sums[i]) continue;
        GameEntry& entry = games_[rows[i]];
        any = any || entry.size != sums[i]->size || entry.crcs != sums[i]->data;
        entry.size = sums[i]->size;
        entry.crcs = sums[i]->data;
    }
    if (any) Tell({ListChange::kTexts});
}

std::optional<size_t> ListEditor::FindPrefix(std::u16string_view prefix, size_t start) const {
    const std::u16string folded = FoldCase(prefix);
    for (size_t row = start; row < games_.size(); ++row) {
        if (StartsWith(games_[row].name, folded)) return row;
    }
    return std::nullopt;
}

bool ListEditor::CanUndo() const {
    return undo_->CanUndo();
}
bool ListEditor::CanRedo() const {
    return undo_->CanRedo();
}
void ListEditor::Undo() {
    Tell(undo_->Undo(games_, sort_));
}
void ListEditor::Redo() {
    Tell(undo_->Redo(games_, sort_));
}

}  // namespace bw
