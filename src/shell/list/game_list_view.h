// The list of games as the user sees it: its columns, check squares, in-place editing, a filter
// box. It shows a ListEditor's list without a copy and turns mouse and keys into its operations;
// what came of them it hears from the editor's listener.
#pragma once

#include <QWidget>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "language/language.h"
#include "list/console_name.h"
#include "list/list_editor.h"
#include "list/remembered_list.h"

namespace bw {

struct CheckMark;

class GameListView : public QWidget {
    Q_OBJECT
  public:
    // `editor` must live longer. Relative paths of entries count from `base`.
    GameListView(ListEditor& editor, std::filesystem::path base, Language language,
                 QWidget* parent = nullptr);
    ~GameListView() override;

    void SetLanguage(Language language);
    // How the menu is to look, for the column of its names.
    void SetConsoleMenu(const ConsoleMenu& menu);

    // See GameListModel.
    void SetMark(const std::u16string& path, std::optional<CheckMark> mark);
    void ClearMarks();

    // Brings the view up to date after an operation of the editor, whoever called it.
    void Apply(const ListResult& result);

    // Qt's logical pixels, which are alike on screens of any density. 0 keeps a column as it is,
    // and what makes no sense is cut to what does.
    ColumnWidths Widths() const;
    void SetWidths(const ColumnWidths& widths);

    // The rows that the filter leaves, or nothing if there is no filter.
    ListEditor::ShownRows ShownRows() const;
    // Puts the cursor into the filter box.
    void FocusFilter();
    // What stands in the filter box is let go, and all rows show.
    void ClearFilter();

    // The rows of the list that are highlighted, in rising order.
    std::vector<uint32_t> HighlightedRows() const;
    void ShowDropFrame(bool shown);

    // Marks FindRow as the selected row and makes it visible, or no row at all. A filter that hides
    // it is let go.
    void ShowFindRow();
    void Deselect();

    // The in-place editor. Ending it hides it and announces EditEnded; storing takes its text, and
    // ends it if need be. For a command that moves rows under it, store before.
    bool EditActive() const;
    void StoreEdit();
    // As a double click on the name or the remark of the selected row would.
    void EditSelected(ListColumn column);

  signals:
    void EditEnded();
    // A double click on a path: the file's folder is to be shown, or (`select`) the file in it.
    // `file` is absolute.
    void FolderWanted(const QString& file, bool select);
    // The highlighted rows are to go before this row of the list; are to be taken out.
    void PlaceWanted(size_t before);
    void RemoveWanted();
    // Where the user asked for a context menu, in global coordinates.
    void ContextMenuWanted(const QPoint& place);

  private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace bw
