#include "shell/dialogs/best_table.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

#include "list/list_columns.h"
#include "shell/framework/colors.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

constexpr float kFaint = 0.7F;  // share of the text's colour in a row that doesn't stay

TextId TitleOf(int column) {
    switch (column) {
        case BestTableModel::kOutcome:
            return TextId::kVersionOutcome;
        case BestTableModel::kNumber:
            return TraitsOf(ListColumn::kNumber).titleId;
        case BestTableModel::kName:
            return TraitsOf(ListColumn::kName).titleId;
        default:
            return TraitsOf(ListColumn::kPath).titleId;
    }
}

}  // namespace

void BestTableModel::SetLanguage(Language language) {
    language_ = language;
    emit headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    if (!lines_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

void BestTableModel::SetGroups(const RowGroups& groups, const BestRules& rules) {
    beginResetModel();
    lines_.clear();
    groups_ = groups.size();
    for (uint32_t group = 0; group < groups.size(); ++group) {
        const std::vector<uint32_t>& rows = groups[group];
        const auto byHand =
            std::ranges::find_if(rows, [this](uint32_t row) { return chosen_.contains(row); });
        const uint32_t best = byHand != rows.end() ? *byHand : BestOf(games_, rows, rules);
        for (const uint32_t row : rows)
            lines_.push_back({row, group, row == best});
    }
    endResetModel();
}

std::vector<uint32_t> BestTableModel::Surplus() const {
    std::vector<uint32_t> rows;
    for (const Line& line : lines_) {
        if (!line.stays) rows.push_back(line.row);
    }
    std::ranges::sort(rows);
    return rows;
}

QString BestTableModel::Text(const Line& line, Column column) const {
    const GameEntry& entry = games_[line.row];
    switch (column) {
        case kOutcome:
            return QtText(line.stays ? TextId::kVersionStays : TextId::kVersionGoes, language_);
        case kNumber:
            return QString::number(line.row + 1);
        case kName:
            return ToQt(entry.name);
        default:
            return ToQt(entry.path);
    }
}

int BestTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

int BestTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant BestTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const Line& line = lines_[static_cast<size_t>(index.row())];
    const auto column = static_cast<Column>(index.column());
    const QPalette palette = QGuiApplication::palette();
    switch (role) {
        case Qt::DisplayRole:
            return Text(line, column);
        case Qt::ToolTipRole:
            return QStringLiteral("<qt>%1</qt>").arg(Text(line, column).toHtmlEscaped());
        case Qt::CheckStateRole:
            if (column != kOutcome) return {};
            return line.stays ? Qt::Checked : Qt::Unchecked;
        case Qt::BackgroundRole:
            return palette.color(line.group % 2 != 0 ? QPalette::AlternateBase : QPalette::Base);
        case Qt::ForegroundRole:
            if (line.stays) return {};
            return Paled(palette.color(QPalette::Text), palette.color(QPalette::Base), kFaint);
        case Qt::FontRole: {
            if (!line.stays) return {};
            QFont font = QGuiApplication::font();
            font.setBold(true);
            return font;
        }
        default:
            return {};
    }
}

QVariant BestTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? QVariant(QtText(TitleOf(section), language_)) : QVariant();
}

Qt::ItemFlags BestTableModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == kOutcome) flags |= Qt::ItemIsUserCheckable;
    return flags;
}

bool BestTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    // One of each group stays: its mark goes when another one gets it.
    if (role != Qt::CheckStateRole || value.toInt() == Qt::Unchecked) return false;
    const auto place = static_cast<size_t>(index.row());
    const uint32_t group = lines_[place].group;
    for (size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].group != group) continue;
        lines_[i].stays = i == place;
        chosen_.erase(lines_[i].row);
    }
    chosen_.insert(lines_[place].row);
    emit dataChanged(this->index(0, 0), this->index(rowCount() - 1, kColumns - 1));
    return true;
}

}  // namespace bw
