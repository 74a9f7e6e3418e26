// The rows of a ListEditor's list for Qt's views, without a copy: all of them, or those that a
// filter leaves.
#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "console/findings.h"
#include "language/language.h"
#include "list/collection/same_games.h"
#include "list/console_name.h"
#include "list/list_editor.h"
#include "rom/board_tables.h"

namespace bw {

// Of a column's title or cells.
Qt::Alignment QtAlignment(ColumnAlignment alignment);

// What a check has found of a game.
struct CheckMark {
    BoardType board = BoardType::kCoolboy;
    std::vector<CheckFinding> findings;  // at least one
};

// A view's row is a place among the shown rows; a list's row is a place in the whole list, which is
// what the first column says and what the editor's operations take.
class GameListModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    // `editor` must live longer.
    GameListModel(ListEditor& editor, Language language);

    Language UiLanguage() const { return language_; }
    void SetLanguage(Language language);
    // How the menu is to look, for the column of its names.
    void SetConsoleMenu(const ConsoleMenu& menu);

    // Marks belong to what the list calls a game's file, so they go wherever its entry goes, and
    // come back with it. Nothing takes a mark away.
    void SetMark(const std::u16string& path, std::optional<CheckMark> mark);
    void ClearMarks();
    // Null for a row without one.
    const CheckMark* MarkAt(int viewRow) const;
    // The rows of the list that have the same data as this one, and itself; empty if there are no
    // others.
    std::span<const uint32_t> SameAs(int viewRow) const;

    // An empty text shows all rows.
    void SetFilter(std::u16string text);
    const std::u16string& Filter() const { return filter_; }
    ListEditor::ShownRows ShownRows() const;

    // Brings the views up to date after a change of the list. They keep their place: rows come and
    // go at the end alone, and the others are asked for anew as far as they are visible. True if
    // the filter leaves other rows now.
    bool Refresh(ListChange change);

    size_t ListRow(int viewRow) const;
    // Nothing for a row that the filter hides, or behind the end.
    std::optional<int> ViewRow(size_t listRow) const;
    // That of the first shown row from this one on; behind the last one if none is.
    int ViewRowFrom(size_t listRow) const;
    // Null behind the list's end. Until the next change of the list.
    const GameEntry* EntryAt(int viewRow) const;

    // The cell's text; empty behind the list's end.
    QString Text(int viewRow, ListColumn column) const;
    // As the menu shows the row, or would if it were checked. For a row inside the list.
    ConsoleLine LineOnConsole(int viewRow) const;
    // The row's number in the menu, from 1; nothing for a row that isn't checked.
    std::optional<size_t> NumberInMenu(int viewRow) const;
    size_t CheckedCount() const { return checkedCount_; }
    // The whole list.
    const GameList& Games() const { return editor_.Games(); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // The check of a row, for assistive programs.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    // True if other rows are left now.
    bool ApplyFilter();
    void FitCount();
    void CountChecks();
    void GroupSame();
    // The check, the number in the menu and the marks, for assistive programs.
    QString SpokenState(int viewRow) const;
    void TellChanged();

    ListEditor& editor_;
    Language language_;
    std::u16string filter_;
    std::optional<std::vector<uint32_t>> shown_;
    int count_ = 0;  // rows that the views know of
    ConsoleMenu menu_;
    std::unordered_map<std::u16string, CheckMark> marks_;  // by path
    std::vector<uint32_t> ordinals_;  // of all rows of the list, also of the hidden ones
    size_t checkedCount_ = 0;
    RowGroups same_;
    std::unordered_map<uint32_t, uint32_t> sameGroup_;  // by the row of the list: index into same_
};

}  // namespace bw
