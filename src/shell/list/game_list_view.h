// The list of games as the user sees it: twelve columns, check squares, in-place editing, a filter
// box. It shows a ListEditor's list without a copy and turns mouse and keys into its operations.
#pragma once

#include <QWidget>
#include <filesystem>
#include <memory>
#include <vector>

#include "rom/list_editor.h"
#include "rom/list_history.h"
#include "support/language.h"

namespace bw {

class GameListView : public QWidget {
    Q_OBJECT
  public:
    // `editor` must live longer. Relative paths of entries count from `base`.
    GameListView(ListEditor& editor, std::filesystem::path base, Language language,
                 QWidget* parent = nullptr);
    ~GameListView() override;

    void SetLanguage(Language language);

    // Brings the view up to date after an operation of the editor that somebody else has called.
    void Apply(const ListResult& result);

    // Pixels of the screen; 0 keeps a column as it is.
    ColumnWidths Widths() const;
    void SetWidths(const ColumnWidths& widths);

    // The rows that the filter leaves, or nothing if there is no filter.
    ListEditor::ShownRows ShownRows() const;
    // Puts the cursor into the filter box.
    void FocusFilter();
    // What stands in the filter box is let go, and all rows show.
    void ClearFilter();

    // Marks FindRow as the selected row and makes it visible, or no row at all.
    void ShowFindRow();
    void Deselect();

    // The in-place editor. Ending it hides it and announces EditEnded; storing takes its text.
    bool EditActive() const;
    void StoreEdit();

  signals:
    // Something was changed from within the view: a click, a sort, a text.
    void ListChanged();
    void EditEnded();
    // A double click on a path: the folder, or (`select`) the file in it.
    void FolderWanted(const QString& file, bool select);
    void FilesDropped(const QStringList& files);
    // Where the user asked for a context menu, in global coordinates.
    void ContextMenuWanted(const QPoint& place);

  private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace bw
