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

std::vector<uint32_t> CheckedRows(const GameList& games) {
    std::vector<uint32_t> rows;
    for (size_t row = 0; row < games.size(); ++row) {
        if (games[row].checked) rows.push_back(static_cast<uint32_t>(row));
    }
    return rows;
}

std::vector<uint32_t> RowsFrom(size_t first, size_t count) {
    std::vector<uint32_t> rows(count);
    std::iota(rows.begin(), rows.end(), static_cast<uint32_t>(first));
    return rows;
}

// Calls visit(entry) for each of the rows.
template <typename Visit>
void ForRows(GameList& games, ListEditor::ShownRows shown, Visit visit) {
    if (!shown) {
        std::ranges::for_each(games, visit);
        return;
    }
    for (const uint32_t row : *shown) {
        if (row < games.size()) visit(games[row]);
    }
}

ListResult Checks(bool changed) {
    return {changed ? ListChange::kChecks : ListChange::kNothing};
}

// At most kCellTextLimit units, without half of a surrogate pair at the end.
std::u16string_view CutToCell(std::u16string_view text) {
    const bool pairAtEnd = text.size() > kCellTextLimit &&
                           (text[kCellTextLimit - 1] & 0xFC00) == 0xD800 &&
                           (text[kCellTextLimit] & 0xFC00) == 0xDC00;
    return text.substr(0, kCellTextLimit - (pairAtEnd ? 1 : 0));
}

// Whether `text` holds `folded`, whose letters are folded.
bool Holds(std::u16string_view text, std::u16string_view folded) {
    return std::search(text.begin(), text.end(), folded.begin(), folded.end(),
                       [](char16_t unit, char16_t wanted) { return FoldCase(unit) == wanted; }) !=
           text.end();
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

void ListEditor::Remove() {
    std::vector<uint32_t> rows = CheckedRows(games_);
    if (!rows.empty()) Tell(undo_->Do(TakeRows{std::move(rows)}, games_, sort_));
}

void ListEditor::Clear() {
    if (!games_.empty()) Tell(undo_->Do(TakeRows{RowsFrom(0, games_.size())}, games_, sort_));
}

void ListEditor::SelectAll(ShownRows shown) {
    bool changed = false;
    ForRows(games_, shown, [&](GameEntry& entry) {
        changed |= !entry.checked;
        entry.checked = true;
    });
    Tell(Checks(changed));
}

void ListEditor::SelectInverse(ShownRows shown) {
    bool changed = false;
    ForRows(games_, shown, [&](GameEntry& entry) {
        entry.checked = !entry.checked;
        changed = true;
    });
    Tell(Checks(changed));
}

void ListEditor::SetChecked(size_t row, bool checked) {
    if (row >= games_.size()) return;
    Tell(Checks(std::exchange(games_[row].checked, checked) != checked));
}

bool ListEditor::CheckBetween(size_t first, size_t last, ShownRows shown) {
    bool changed = false;
    const auto check = [&](size_t row) { changed |= !std::exchange(games_[row].checked, true); };
    last = std::min(last, games_.size() - 1);
    if (!shown) {
        for (size_t row = first; row <= last; ++row)
            check(row);
    } else {
        const auto end = std::ranges::upper_bound(*shown, last);
        std::for_each(std::ranges::lower_bound(*shown, first), end, check);
    }
    return changed;
}

void ListEditor::Click(size_t row, const RowClick& click, ShownRows shown) {
    if (row >= games_.size()) return;
    if (click.shift) {
        Tell(Checks(CheckBetween(std::min(row, findRow_), std::max(row, findRow_), shown)));
    } else if (click.ctrl) {
        SetChecked(row, true);
    } else {
        findRow_ = row;
        if (click.inCheckSquare) SetChecked(row, !games_[row].checked);
    }
}

void ListEditor::Sort(ListColumn column) {
    if (column == ListColumn::kNumber) return;
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

std::optional<size_t> ListEditor::FindPrefix(std::u16string_view prefix, size_t start) const {
    const std::u16string folded = FoldCase(prefix);
    for (size_t row = start; row < games_.size(); ++row) {
        if (StartsWith(games_[row].name, folded)) return row;
    }
    return std::nullopt;
}

std::vector<uint32_t> ListEditor::RowsWith(std::u16string_view text) const {
    const std::u16string folded = FoldCase(text);
    std::vector<uint32_t> rows;
    for (size_t row = 0; row < games_.size(); ++row) {
        const GameEntry& entry = games_[row];
        if (Holds(entry.name, folded) || Holds(entry.remark, folded) || Holds(entry.path, folded)) {
            rows.push_back(static_cast<uint32_t>(row));
        }
    }
    return rows;
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
