// New names for rows of the list as a table, each to be taken or left, and changed by hand.
#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "language/language.h"
#include "list/collection/name_changes.h"
#include "list/list_editor.h"

namespace bw {

class NamesTableModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column : int { kNumber, kNameNow, kNewName, kConsole, kLength, kColumns };

    // `games` must live longer, and not change.
    NamesTableModel(const GameList& games, const ConsoleMenu& menu, Language language);

    void SetLanguage(Language language);
    // In rising order of rows. Rows that were left before are left again, and a name that was typed
    // stays in place of the one that is given.
    void SetChanges(std::vector<NameChange> changes);

    // Of all changes, or of these places among them.
    void SetTaken(bool taken);
    void SetTaken(std::span<const int> places, bool taken);
    void TurnTaken();

    struct Counts {
        size_t all = 0;
        size_t taken = 0;
        size_t tooLong = 0;  // among the taken ones
    };
    Counts Count() const;
    std::vector<RowName> Taken() const;
    // One for each row of the list; see NameRooms().
    std::span<const size_t> Rooms() const { return rooms_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    bool TooLong(const NameChange& change) const;
    QString Text(const NameChange& change, Column column) const;
    ConsoleLine LineOnConsole(const NameChange& change) const;
    void Take(NameChange& change, bool taken);
    void TellTaken();

    const GameList& games_;
    ConsoleMenu menu_;
    Language language_;
    std::vector<size_t> rooms_;
    std::vector<uint32_t> ordinals_;
    size_t checkedCount_;
    std::vector<NameChange> changes_;
    std::unordered_set<uint32_t> left_;                     // rows of the list
    std::unordered_map<uint32_t, std::u16string> typed_{};  // by the row of the list
};

// Space turns the marks of all highlighted rows.
class NamesTable : public QTableView {
  public:
    // `model` must live longer.
    explicit NamesTable(NamesTableModel& model);

    // Gives the columns the widths that suit the font.
    void FitColumns();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    NamesTableModel& model_;
};

}  // namespace bw
