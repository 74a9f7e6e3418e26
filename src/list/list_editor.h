// The commands that work on a game list: order, checks, names, removal and the way back. One
// object owns the list of a window; it lives on the window's thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "list/game_list.h"
#include "list/list_columns.h"

namespace bw {

// What a view has to bring up to date, each including the ones before it.
enum class ListChange : uint8_t {
    kNothing,
    kTitles,  // SortColumn() and SortDescending()
    kChecks,
    kTexts,
    kOrder,
    kSize
};

// What came of an operation.
struct ListResult {
    ListChange change = ListChange::kNothing;
    std::optional<size_t> reveal = {};  // a row to make visible
    bool tooMany = false;               // more than kMoveLimit rows are checked: nothing was done
    // Where rows were moved or taken as such, not for their checks: so many rows from `reveal` on
    // are those that the user goes on with.
    size_t highlight = 0;
};

// A new name for a row.
struct RowName {
    size_t row;
    std::u16string name;
};

// What comes into the place of a row.
struct RowEntry {
    uint32_t row;
    GameEntry entry;
};

// Where rows go that are moved.
enum class RowMove : uint8_t { kUp, kDown, kTop, kBottom };

// The last sort. No column before the first one.
struct SortOrder {
    int column = -1;
    bool descending = false;
};

// How a row was clicked.
struct RowClick {
    bool shift = false;
    bool ctrl = false;
    bool inCheckSquare = false;
};

class ListUndo;

class ListEditor {
  public:
    // The one who brings everything up to date that shows the list. Told once of each operation
    // that came to anything, after it is done; may call operations itself.
    using Listener = std::function<void(const ListResult&)>;

    explicit ListEditor(Listener listener = {});
    ~ListEditor();
    ListEditor(const ListEditor&) = delete;
    ListEditor& operator=(const ListEditor&) = delete;

    const GameList& Games() const { return games_; }

    // The row last clicked, found or selected. May lie behind the list's end after a removal.
    size_t FindRow() const { return findRow_; }
    void SetFindRow(size_t row) { findRow_ = row; }
    // The row at which the next search starts.
    size_t FindNextRow() const { return findNextRow_; }
    void SetFindNextRow(size_t row) { findNextRow_ = row; }

    // The list that the program starts with: replaces what is there, and is no step.
    void Restore(GameList games);

    // At the end; what exceeds kListLimit is dropped only if `limited`. Reveals the list's last
    // row if `reveal`, even if there was nothing to append.
    struct Appending {
        bool limited = true;
        bool reveal = true;
    };
    void Append(std::vector<GameEntry> entries, Appending how);

    // In place of all that is there; one step of the undo. What exceeds kListLimit is dropped.
    void Replace(GameList games);

    // `shown`: the rows of a filtered view, in rising order; without it all rows.
    using ShownRows = std::optional<std::span<const uint32_t>>;

    // The checked rows, at once; all rows. What a filter hides stays. Each gives the number of rows
    // that it has taken.
    size_t Remove(ShownRows shown = {});
    size_t Clear(ShownRows shown = {});
    // These rows, in rising order, whether checked or not.
    size_t RemoveRows(std::span<const uint32_t> rows);

    // The checked rows. Nothing happens if the first one (the last one, downward) is at its end
    // already, even to the others.
    void MoveUp();
    void MoveDown();
    void MoveTop();
    void MoveBottom();

    // These rows, in rising order, whether checked or not and however many. They come together, in
    // their order. Up and down go past the next row that shows.
    void MoveRows(std::span<const uint32_t> rows, RowMove move, ShownRows shown = {});
    // To before the row `before`; behind the last one if that is the list's size.
    void PlaceRows(std::span<const uint32_t> rows, size_t before);

    void SelectAll(ShownRows shown = {});
    void SelectInverse(ShownRows shown = {});
    void SetChecked(size_t row, bool checked);
    // These rows, in any order; one step of the undo. Rows beyond the end are ignored.
    void SetChecks(std::span<const uint32_t> rows, bool checked);
    // Checks the (shown) games that are wanted and no other one of them; gives how many are wanted.
    size_t CheckExactly(const std::function<bool(const GameEntry&)>& wanted, ShownRows shown = {});
    // With Shift all (shown) rows between FindRow and the clicked one get checked and FindRow
    // stays; with Ctrl alone the row gets checked; with neither, a click in the check square flips
    // the check, and FindRow becomes the row.
    void Click(size_t row, const RowClick& click, ShownRows shown = {});

    // A click on a column's title. The first column does nothing, and neither number of the board
    // columns is a key: the eighth sorts by the remark and the ninth and tenth change the
    // direction's state alone. That is meant; users know it.
    void Sort(ListColumn column);
    // -1 before the first sort.
    int SortColumn() const { return sort_.column; }
    bool SortDescending() const { return sort_.descending; }

    // At most kCellTextLimit 16-bit units are kept.
    void SetName(size_t row, std::u16string_view name);
    void SetRemark(size_t row, std::u16string_view remark);
    // One step of the undo. Rows beyond the end are ignored.
    void Rename(std::vector<RowName> names);

    // Other files for rows; names, remarks and checks stay those of the rows. One step of the undo.
    // Rows beyond the end are ignored.
    void ReplaceEntries(std::vector<RowEntry> entries);
    // What was read of the rows' files, one for each of `rows`: notes their sizes and sums, where
    // they are known. No step, since nothing of the user's changes; told as a change of texts.
    void NoteSums(std::span<const uint32_t> rows, std::span<const std::optional<ImageSums>> sums);

    // The first row from `start` on whose name begins with `prefix`, letter case aside.
    std::optional<size_t> FindPrefix(std::u16string_view prefix, size_t start) const;

    // Undoes appending, removal, clearing, moves, sorts, texts and checks, up to kUndoLimit of
    // them. Rows that come back have the checks that they had.
    bool CanUndo() const;
    bool CanRedo() const;
    void Undo();
    void Redo();

  private:
    void SetText(std::u16string GameEntry::*field, size_t row, std::u16string_view text);
    void Tell(const ListResult& result) const;
    // Turns the checks of those (shown) rows round for which `turns` says so.
    void TurnChecks(ShownRows shown, const std::function<bool(size_t row)>& turns);
    size_t Take(std::vector<uint32_t> rows, size_t highlight);

    Listener listener_;
    GameList games_;
    size_t findRow_ = 0;
    size_t findNextRow_ = 0;
    SortOrder sort_;
    std::unique_ptr<ListUndo> undo_;
};

}  // namespace bw
