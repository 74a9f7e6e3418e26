// Rows of the list that are the same game, group by group, and which of them stays.
#pragma once

#include <QAbstractTableModel>
#include <unordered_set>
#include <vector>

#include "language/language.h"
#include "list/collection/same_games.h"

namespace bw {

class BestTableModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column : int { kOutcome, kNumber, kName, kPath, kColumns };

    // `games` must live longer, and not change.
    BestTableModel(const GameList& games, Language language) : games_(games), language_(language) {}

    void SetLanguage(Language language);
    // The best of each stays, but where a person has chosen another one.
    void SetGroups(const RowGroups& groups, const BestRules& rules);

    size_t Groups() const { return groups_; }
    // The rows that don't stay, in rising order.
    std::vector<uint32_t> Surplus() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // A mark makes its row the one that stays.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    struct Line {
        uint32_t row;
        uint32_t group;
        bool stays;
    };
    QString Text(const Line& line, Column column) const;

    const GameList& games_;
    Language language_;
    std::vector<Line> lines_;
    size_t groups_ = 0;
    std::unordered_set<uint32_t> chosen_;  // by hand; rows of the list
};

}  // namespace bw
