#include "shell/dialogs/names_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "list/list_columns.h"
#include "shell/framework/colors.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr int kMargin = 12;          // at both ends of a cell's text together, in pixels
constexpr int kConsoleColumns = 32;  // characters in a line of the console's screen

TextId TitleOf(int column) {
    switch (column) {
        case NamesTableModel::kNumber:
            return TraitsOf(ListColumn::kNumber).titleId;
        case NamesTableModel::kNameNow:
            return TextId::kNameNow;
        case NamesTableModel::kNewName:
            return TextId::kNewName;
        case NamesTableModel::kConsole:
            return TextId::kOnTheConsole;
        default:
            return TextId::kNameLength;
    }
}

}  // namespace

NamesTableModel::NamesTableModel(const GameList& games, const ConsoleMenu& menu, Language language)
    : games_(games),
      menu_(menu),
      language_(language),
      rooms_(NameRooms(games, menu)),
      ordinals_(Ordinals(games)),
      checkedCount_(CountChecked(games)) {}

void NamesTableModel::SetLanguage(Language language) {
    language_ = language;
    emit headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
}

void NamesTableModel::SetChanges(std::vector<NameChange> changes) {
    beginResetModel();
    changes_ = std::move(changes);
    // What was typed is a change of its own, whatever the rules make of the row.
    for (const auto& [row, name] : typed_) {
        const auto place = std::ranges::lower_bound(changes_, row, {}, &NameChange::row);
        if (place != changes_.end() && place->row == row) {
            place->newName = name;
        } else {
            changes_.insert(place, {row, games_[row].name, name, true});
        }
    }
    for (NameChange& change : changes_)
        change.taken = !left_.contains(change.row);
    endResetModel();
}

void NamesTableModel::Take(NameChange& change, bool taken) {
    change.taken = taken;
    if (taken) {
        left_.erase(change.row);
    } else {
        left_.insert(change.row);
    }
}

void NamesTableModel::TellTaken() {
    if (!changes_.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
    }
}

void NamesTableModel::SetTaken(bool taken) {
    for (NameChange& change : changes_)
        Take(change, taken);
    TellTaken();
}

void NamesTableModel::SetTaken(std::span<const int> places, bool taken) {
    for (const int place : places)
        Take(changes_[static_cast<size_t>(place)], taken);
    TellTaken();
}

void NamesTableModel::TurnTaken() {
    for (NameChange& change : changes_)
        Take(change, !change.taken);
    TellTaken();
}

bool NamesTableModel::TooLong(const NameChange& change) const {
    return change.newName.size() > rooms_[change.row];
}

NamesTableModel::Counts NamesTableModel::Count() const {
    Counts counts{.all = changes_.size()};
    for (const NameChange& change : changes_) {
        counts.taken += change.taken ? 1 : 0;
        counts.tooLong += change.taken && TooLong(change) ? 1 : 0;
    }
    return counts;
}

std::vector<RowName> NamesTableModel::Taken() const {
    std::vector<RowName> names;
    for (const NameChange& change : changes_) {
        if (change.taken) names.push_back({change.row, change.newName});
    }
    return names;
}

ConsoleLine NamesTableModel::LineOnConsole(const NameChange& change) const {
    GameEntry entry;
    entry.name = change.newName;
    const bool checked = games_[change.row].checked;
    return ConsoleLineOf(entry, ordinals_[change.row], checkedCount_ + (checked ? 0 : 1), menu_);
}

QString NamesTableModel::Text(const NameChange& change, Column column) const {
    switch (column) {
        case kNumber:
            return QString::number(change.row + 1);
        case kNameNow:
            return ToQt(change.oldName);
        case kNewName:
            return ToQt(change.newName);
        case kConsole:
            return QString::fromLatin1(LineOnConsole(change).text);
        default:
            return QStringLiteral("%1 / %2").arg(change.newName.size()).arg(rooms_[change.row]);
    }
}

int NamesTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(changes_.size());
}

int NamesTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant NamesTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const NameChange& change = changes_[static_cast<size_t>(index.row())];
    const auto column = static_cast<Column>(index.column());
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return Text(change, column);
        case Qt::ToolTipRole:
            return column == kConsole || column == kLength
                       ? QVariant()
                       : QStringLiteral("<qt>%1</qt>").arg(Text(change, column).toHtmlEscaped());
        case Qt::CheckStateRole:
            if (column != kNumber) return {};
            return change.taken ? Qt::Checked : Qt::Unchecked;
        case Qt::ForegroundRole:
            if (column == kLength && TooLong(change)) return WarningText();
            return {};
        case Qt::BackgroundRole:
            if (column == kLength && TooLong(change)) return WarningGround();
            return {};
        case Qt::TextAlignmentRole:
            return static_cast<int>((column == kLength ? Qt::AlignRight : Qt::AlignLeft) |
                                    Qt::AlignVCenter);
        default:
            return {};
    }
}

QVariant NamesTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>((section == kLength ? Qt::AlignRight : Qt::AlignLeft) |
                                Qt::AlignVCenter);
    }
    return role == Qt::DisplayRole ? QVariant(QtText(TitleOf(section), language_)) : QVariant();
}

Qt::ItemFlags NamesTableModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == kNumber) flags |= Qt::ItemIsUserCheckable;
    if (index.column() == kNewName) flags |= Qt::ItemIsEditable;
    return flags;
}

bool NamesTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid()) return false;
    NameChange& change = changes_[static_cast<size_t>(index.row())];
    if (role == Qt::CheckStateRole && index.column() == kNumber) {
        Take(change, value.toInt() != Qt::Unchecked);
    } else if (role == Qt::EditRole && index.column() == kNewName) {
        const std::u16string name = FromQt(value.toString()).substr(0, kCellTextLimit);
        if (name == change.newName) return false;
        change.newName = typed_[change.row] = name;
        Take(change, true);
    } else {
        return false;
    }
    emit dataChanged(this->index(index.row(), 0), this->index(index.row(), kColumns - 1));
    return true;
}

NamesTable::NamesTable(NamesTableModel& model) : model_(model) {
    setObjectName(QStringLiteral("names_table"));
    setModel(&model);
    setSelectionBehavior(SelectRows);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerPixel);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

void NamesTable::FitColumns() {
    const QFontMetrics metrics = fontMetrics();
    const int height = metrics.height() + kMargin / 2;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    QHeaderView& header = *horizontalHeader();
    const auto fit = [&](int column, int wanted) {
        header.resizeSection(column, std::max(wanted, header.sectionSizeHint(column)) + kMargin);
    };
    fit(NamesTableModel::kNumber, metrics.horizontalAdvance(QStringLiteral("00000")) + height);
    fit(NamesTableModel::kConsole, metrics.averageCharWidth() * kConsoleColumns);
    fit(NamesTableModel::kLength, metrics.horizontalAdvance(QStringLiteral("260 / 32")));
    for (const int column : {NamesTableModel::kNameNow, NamesTableModel::kNewName})
        header.setSectionResizeMode(column, QHeaderView::Stretch);
}

void NamesTable::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space || state() == EditingState) {
        QTableView::keyPressEvent(event);
        return;
    }
    std::vector<int> places;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        places.push_back(index.row());
    if (places.empty()) return;
    const QModelIndex first =
        currentIndex().isValid() ? currentIndex() : model_.index(places[0], 0);
    const QVariant mark = first.siblingAtColumn(0).data(Qt::CheckStateRole);
    model_.SetTaken(places, mark.toInt() == Qt::Unchecked);
}

}  // namespace bw
