#include "shell/main/row_menu.h"

#include "shell/framework/commands.h"
#include "shell/framework/texts.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

RowMenu::RowMenu(ListHost& host, const MainMenu& menu, GameListView& view) {
    setObjectName(QStringLiteral("row_menu"));
    if (host.Editor().FindRow() < host.Editor().Games().size()) AddRowEntries(host, view);
    if (const size_t checked = CountChecked(host.Editor().Games()); checked > 0) {
        AddCheckedEntries(host, checked, menu);
    }
    addSeparator();
    addAction(&menu.Entry(kCommandUndo));
    addAction(&menu.Entry(kCommandRedo));
}

void RowMenu::AddRowEntries(ListHost& host, GameListView& view) {
    const Language language = host.CurrentLanguage();
    const size_t row = host.Editor().FindRow();
    const GameEntry& entry = host.Editor().Games()[row];
    addAction(QtOwnText(language, u"编辑文件名(&N)", u"Edit the &name"), this,
              [&view] { view.EditSelected(ListColumn::kName); });
    addAction(QtOwnText(language, u"编辑备注(&R)", u"Edit the &remark"), this,
              [&view] { view.EditSelected(ListColumn::kRemark); });
    const bool check = entry.checked == 0;
    addAction(check ? QtOwnText(language, u"勾选(&C)", u"&Check")
                    : QtOwnText(language, u"取消勾选(&C)", u"Un&check"),
              this, [&host, row, check] { host.Apply(host.Editor().SetChecked(row, check)); });
    const std::filesystem::path file = AbsolutePath(TextPath(entry.path), host.Base());
    addAction(QtOwnText(language, u"打开所在文件夹(&F)", u"Show in &folder"), this,
              [&host, file] { host.Dialogs().ShowInFileManager(file); });
}

void RowMenu::AddCheckedEntries(const ListHost& host, size_t checked, const MainMenu& menu) {
    addSeparator();
    // The commands work on the checked rows, wherever the menu was opened: say so.
    checked_.setTitle(
        QtOwnText(host.CurrentLanguage(), u"已勾选的 %1 项(&S)", u"The %1 checked item(&s)")
            .arg(checked));
    for (const int id : {kCommandMoveUp, kCommandMoveDown, kCommandMoveTop, kCommandMoveBottom}) {
        checked_.addAction(&menu.Entry(id));
    }
    checked_.addSeparator();
    checked_.addAction(&menu.Entry(kCommandRemove));
    addMenu(&checked_);
}

}  // namespace bw
