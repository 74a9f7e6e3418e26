#include "shell/main/row_menu.h"

#include "shell/framework/commands.h"
#include "shell/framework/texts.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

RowMenu::RowMenu(ListHost& host, const CommandMenu& menu, GameListView& view) {
    setObjectName(QStringLiteral("row_menu"));
    if (host.Editor().FindRow() < host.Editor().Games().size()) AddRowEntries(host, menu, view);
    if (const size_t checked = CountChecked(host.Editor().Games()); checked > 0) {
        AddCheckedEntries(host, checked, menu);
    }
    addSeparator();
    addAction(&menu.Entry(kCommandUndo));
    addAction(&menu.Entry(kCommandRedo));
}

void RowMenu::AddRowEntries(ListHost& host, const CommandMenu& menu, GameListView& view) {
    const Language language = host.CurrentLanguage();
    const size_t row = host.Editor().FindRow();
    const GameEntry& entry = host.Editor().Games()[row];
    addAction(QtText(TextId::kEditNameEntry, language), this,
              [&view] { view.EditSelected(ListColumn::kName); });
    addAction(QtText(TextId::kEditRemarkEntry, language), this,
              [&view] { view.EditSelected(ListColumn::kRemark); });
    const bool check = entry.checked == 0;
    addAction(QtText(check ? TextId::kCheckEntry : TextId::kUncheckEntry, language), this,
              [&host, row, check, rows = view.HighlightedRows()] {
                  if (rows.size() < 2) return host.Editor().SetChecked(row, check);
                  host.Editor().CheckExactly([check](const GameEntry&) { return check; }, rows);
              });
    const std::filesystem::path file = AbsolutePath(TextPath(entry.path), host.Base());
    addAction(QtText(TextId::kShowInFolderEntry, language), this,
              [&host, file] { host.Dialogs().ShowInFileManager(file); });
    addAction(&menu.Entry(kCommandPlayGame));
    addSeparator();
    for (const int id : {kCommandRowsUp, kCommandRowsDown, kCommandRowsTop, kCommandRowsBottom,
                         kCommandRowsRemove})
        addAction(&menu.Entry(id));
}

void RowMenu::AddCheckedEntries(const ListHost& host, size_t checked, const CommandMenu& menu) {
    addSeparator();
    // The commands work on the checked rows, wherever the menu was opened: say so.
    checked_.setTitle(QtText(TextId::kCheckedItemsEntry, host.CurrentLanguage()).arg(checked));
    for (const int id : {kCommandMoveUp, kCommandMoveDown, kCommandMoveTop, kCommandMoveBottom})
        checked_.addAction(&menu.Entry(id));
    checked_.addSeparator();
    checked_.addAction(&menu.Entry(kCommandRemove));
    addMenu(&checked_);
}

}  // namespace bw
