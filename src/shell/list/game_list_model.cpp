#include "shell/list/game_list_model.h"

#include <algorithm>
#include <utility>

#include "list/search/list_filter.h"
#include "shell/dialogs/check_report.h"
#include "shell/framework/texts.h"
#include "shell/list/cell_tips.h"

namespace bw {

Qt::Alignment QtAlignment(ColumnAlignment alignment) {
    switch (alignment) {
        case ColumnAlignment::kRight:
            return Qt::AlignRight | Qt::AlignVCenter;
        case ColumnAlignment::kCentre:
            return Qt::AlignCenter;
        case ColumnAlignment::kLeft:
            break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

GameListModel::GameListModel(ListEditor& editor, Language language)
    : editor_(editor), language_(language), count_(static_cast<int>(editor.Games().size())) {
    CountChecks();
    GroupSame();
}

void GameListModel::SetLanguage(Language language) {
    language_ = language;
    TellChanged();
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void GameListModel::SetConsoleMenu(const ConsoleMenu& menu) {
    if (menu == menu_) return;
    menu_ = menu;
    TellChanged();
}

void GameListModel::SetMark(const std::u16string& path, std::optional<CheckMark> mark) {
    if (mark) {
        marks_.insert_or_assign(path, *std::move(mark));
    } else if (marks_.erase(path) == 0) {
        return;
    }
    TellChanged();
}

void GameListModel::ClearMarks() {
    if (marks_.empty()) return;
    marks_.clear();
    TellChanged();
}

const CheckMark* GameListModel::MarkAt(int viewRow) const {
    if (marks_.empty()) return nullptr;
    const GameEntry* entry = EntryAt(viewRow);
    if (entry == nullptr) return nullptr;
    const auto found = marks_.find(entry->path);
    return found != marks_.end() ? &found->second : nullptr;
}

void GameListModel::SetFilter(std::u16string text) {
    filter_ = std::move(text);
    shown_.reset();
    ApplyFilter();
    FitCount();
    TellChanged();
}

ListEditor::ShownRows GameListModel::ShownRows() const {
    if (!shown_) return std::nullopt;
    return std::span<const uint32_t>(*shown_);
}

bool GameListModel::Refresh(ListChange change) {
    if (change == ListChange::kNothing) return false;
    if (change >= ListChange::kChecks) CountChecks();
    if (change >= ListChange::kTexts) GroupSame();
    // The words of a filter may ask for checks.
    const bool others = change >= ListChange::kChecks && ApplyFilter();
    FitCount();
    TellChanged();
    return others;
}

bool GameListModel::ApplyFilter() {
    if (filter_.empty()) return false;
    std::vector<uint32_t> rows = FilteredRows(editor_.Games(), filter_);
    const bool others = rows != shown_;
    shown_ = std::move(rows);
    return others;
}

void GameListModel::GroupSame() {
    same_ = SameData(editor_.Games());
    sameGroup_.clear();
    for (uint32_t group = 0; group < same_.size(); ++group) {
        for (const uint32_t row : same_[group])
            sameGroup_.emplace(row, group);
    }
}

std::span<const uint32_t> GameListModel::SameAs(int viewRow) const {
    if (sameGroup_.empty()) return {};
    const auto found = sameGroup_.find(static_cast<uint32_t>(ListRow(viewRow)));
    if (found == sameGroup_.end()) return {};
    return same_[found->second];
}

void GameListModel::CountChecks() {
    ordinals_ = Ordinals(editor_.Games());
    checkedCount_ = bw::CountChecked(editor_.Games());
}

void GameListModel::FitCount() {
    const auto count = static_cast<int>(shown_ ? shown_->size() : editor_.Games().size());
    if (count > count_) {
        beginInsertRows({}, count_, count - 1);
        count_ = count;
        endInsertRows();
    } else if (count < count_) {
        beginRemoveRows({}, count, count_ - 1);
        count_ = count;
        endRemoveRows();
    }
}

void GameListModel::TellChanged() {
    if (count_ > 0) emit dataChanged(index(0, 0), index(count_ - 1, columnCount() - 1));
}

size_t GameListModel::ListRow(int viewRow) const {
    const auto row = static_cast<size_t>(viewRow);
    if (!shown_) return row;
    return row < shown_->size() ? (*shown_)[row] : editor_.Games().size();
}

std::optional<int> GameListModel::ViewRow(size_t listRow) const {
    if (!shown_) {
        return listRow < editor_.Games().size() ? std::optional(static_cast<int>(listRow))
                                                : std::nullopt;
    }
    const auto found = std::ranges::lower_bound(*shown_, listRow);
    if (found == shown_->end() || *found != listRow) return std::nullopt;
    return static_cast<int>(found - shown_->begin());
}

int GameListModel::ViewRowFrom(size_t listRow) const {
    if (!shown_) return static_cast<int>(std::min(listRow, editor_.Games().size()));
    return static_cast<int>(std::ranges::lower_bound(*shown_, listRow) - shown_->begin());
}

const GameEntry* GameListModel::EntryAt(int viewRow) const {
    if (viewRow < 0) return nullptr;
    const size_t row = ListRow(viewRow);
    return row < editor_.Games().size() ? &editor_.Games()[row] : nullptr;
}

QString GameListModel::Text(int viewRow, ListColumn column) const {
    const GameEntry* entry = EntryAt(viewRow);
    if (entry == nullptr) return {};
    if (column == ListColumn::kConsole) return QString::fromLatin1(LineOnConsole(viewRow).text);
    return ToQt(CellText(*entry, ListRow(viewRow), column, language_));
}

ConsoleLine GameListModel::LineOnConsole(int viewRow) const {
    const size_t row = ListRow(viewRow);
    const GameEntry& entry = editor_.Games()[row];
    return ConsoleLineOf(entry, ordinals_[row], checkedCount_ + (entry.checked ? 0 : 1), menu_);
}

std::optional<size_t> GameListModel::NumberInMenu(int viewRow) const {
    const GameEntry* entry = EntryAt(viewRow);
    if (entry == nullptr || !entry->checked) return std::nullopt;
    return ordinals_[ListRow(viewRow)];
}

QString GameListModel::SpokenState(int viewRow) const {
    QString words;
    if (const auto number = NumberInMenu(viewRow)) {
        words = QtText(TextId::kCommaChecked, language_) +
                QtText(TextId::kCommaNumberInMenu, language_).arg(*number);
    }
    if (EntryAt(viewRow)->missing || !EntryAt(viewRow)->headerRead)
        words += QtText(TextId::kCommaFileMissing, language_);
    if (const CheckMark* mark = MarkAt(viewRow)) {
        words += QStringLiteral(", ") + FindingLines(mark->findings, language_);
    }
    if (const QString same = SameText(*this, viewRow); !same.isEmpty())
        words += QStringLiteral(", ") + same;
    return words;
}

int GameListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

int GameListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kListColumns);
}

QVariant GameListModel::data(const QModelIndex& index, int role) const {
    const GameEntry* entry = EntryAt(index.row());
    if (entry == nullptr) return {};
    const auto column = static_cast<ListColumn>(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return Text(index.row(), column);
        case Qt::AccessibleTextRole: {
            // Several of the columns say yes or no: the title says to what.
            const QString title = QtText(TraitsOf(column).titleId, language_);
            const QString text = title + QStringLiteral(": ") + Text(index.row(), column);
            return column == ListColumn::kNumber ? text + SpokenState(index.row()) : text;
        }
        case Qt::TextAlignmentRole:
            return static_cast<int>(QtAlignment(TraitsOf(column).cell));
        case Qt::CheckStateRole:
            if (column != ListColumn::kNumber) return {};
            return entry->checked ? Qt::Checked : Qt::Unchecked;
        default:
            return {};
    }
}

QVariant GameListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const ListColumnTraits& traits = TraitsOf(static_cast<ListColumn>(section));
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:  // some titles are wider than their columns
            return QtText(traits.titleId, language_);
        case Qt::TextAlignmentRole:
            return static_cast<int>(QtAlignment(traits.header));
        default:
            return {};
    }
}

Qt::ItemFlags GameListModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == static_cast<int>(ListColumn::kNumber)) flags |= Qt::ItemIsUserCheckable;
    return flags;
}

bool GameListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable)) return false;
    const size_t row = ListRow(index.row());
    if (row >= editor_.Games().size()) return false;
    editor_.SetChecked(row, value.toInt() != Qt::Unchecked);
    return true;
}

}  // namespace bw
