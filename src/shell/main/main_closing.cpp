// How the main window goes away: to the tray, to an icon, for good.
#include <QApplication>
#include <QCursor>
#include <QScopedValueRollback>
#include <system_error>

#include "language/problem_text.h"
#include "list/list_file.h"
#include "settings/setting_names.h"
#include "shell/dialogs/close_dialog.h"
#include "shell/framework/placement.h"
#include "shell/main/main_parts.h"
#include "support/paths.h"

namespace bw {
namespace {

uint32_t StoredNumber(const SettingsStore& store, std::string_view name) {
    uint32_t value = 0;
    store.RegReadDword(kMainKey, name, value);
    return value;
}

}  // namespace

MessageResult CMainDialog::OnTray(MessageParam, MessageParam lParam) {
    if (lParam == kTrayDoubleClick) parts_->BringUp();
    if (lParam == kTrayMenu) parts_->tray.ShowMenu(QCursor::pos());
    return 1;
}

MessageResult CMainDialog::OnClose(MessageParam wParam, MessageParam) {
    if (parts_->asking) {
        // The tray's menu works even while one of the questions below is open.
        if (QWidget* question = QApplication::activeModalWidget()) question->activateWindow();
        return 1;
    }
    const QScopedValueRollback<bool> asking(parts_->asking, true);
    SettingsStore& store = parts_->services.store;
    if (wParam != kCloseByExit && wParam != kCloseForUpdate) {
        const bool ask = StoredNumber(store, setting::kRemember) == 0;
        if (ask && CCloseDialog(store, UiLanguage(), this).DoModal() == kEndCancel) return 1;
        if (StoredNumber(store, setting::kCloseState) != 1) {
            parts_->PutAway();
            return 1;
        }
    }
    const bool forUpdate = wParam == kCloseForUpdate;
    if (forUpdate && parts_->tasks.AnyRunning()) {
        parts_->updates.CloseToInstall();  // after them
        return 1;
    }
    if (!parts_->TasksEnded(static_cast<int>(wParam))) return 1;
    parts_->updates.StopTasks();
    parts_->closing.reset();
    if (parts_->view.EditActive()) Send(kMessageEndEdit);
    parts_->CloseDialogs();
    if (!parts_->KeepList()) {
        if (forUpdate) parts_->updates.PutOff();
        return 1;
    }
    parts_->files.ForgetKept();
    std::error_code ignored;  // whatever stays is removed by a later start
    std::filesystem::remove_all(WorkFolder(), ignored);
    StorePlacement(store, kMainKey, *this);
    // As late as it can be, with everything stored, and as long as somebody can be told.
    if (forUpdate && !parts_->updates.Replace()) return 1;
    parts_->updates.End();
    parts_->watchTimer.stop();
    parts_->tray.Hide();
    End(static_cast<int>(wParam));
    emit Exited();
    return 1;
}

void CMainDialog::Parts::CloseDialogs() {
    for (QDialog* dialog : window.findChildren<QDialog*>()) {
        if (!dialog->isVisible()) continue;
        // The toolkit's file dialogs have no messages.
        if (auto* own = dynamic_cast<CDialogBase*>(dialog)) {
            own->Send(kMessageClose, kCloseByExit);
        } else {
            dialog->reject();
        }
    }
}

bool CMainDialog::Parts::TasksEnded(int closeCode) {
    if (!tasks.AnyRunning()) return true;
    // Nobody would miss the reading of the remembered list; it stays stored.
    if (!rememberedPending && !closing) {
        const std::u16string question = LoadText(TextId::kStopTaskAndExit, CurrentLanguage());
        const int answer = Dialogs().Message(
            question, LoadText(TextId::kTipsTitle, CurrentLanguage()), MessageButtons::kYesNo);
        if (answer != kEndYes) return false;
    }
    // It may have ended while the question was open.
    if (!tasks.AnyRunning()) return true;
    closing = closeCode;
    Tell(LoadText(TextId::kStoppingTask, CurrentLanguage()));
    tasks.StopAll();
    CloseDialogs();
    return false;
}

bool CMainDialog::Parts::KeepList() {
    const Language language = CurrentLanguage();
    const auto kept = [&] {
        return files.SaveRemembered(view.Widths()) && (!services.listKept || services.listKept());
    };
    while (!kept()) {
        // In place of an empty list the one of the last time may come back; nothing is lost.
        if (editor.Games().empty()) return true;
        const std::u16string question = LoadText(TextId::kListNotStored, language);
        const int answer = Dialogs().Message(question, LoadText(TextId::kErrorTitle, language),
                                             MessageButtons::kYesNo);
        if (answer == kEndNo) return true;
        if (answer != kEndYes) return false;
        const auto file = Dialogs().AskListToSave(Base());
        if (!file) return false;
        const FileResult<> saved = SaveListFile(WithListExtension(*file), editor.Games(), Base());
        if (saved) return true;
        Dialogs().Message(LoadText(TextId::kOperationFailed, language) + u"\r\n" +
                              ProblemText(saved.Problem(), language),
                          LoadText(TextId::kErrorTitle, language), MessageButtons::kConfirm);
    }
    return true;
}

void CMainDialog::StoreAll() {
    if (parts_->view.EditActive()) Send(kMessageEndEdit);
    parts_->designs.StoreAll();
    parts_->check.StoreAll();
    parts_->carts.StoreAll();
    // Where the settings can't take the list, the kept one stays for the next start.
    const bool stored = parts_->files.SaveRemembered(parts_->view.Widths()) &&
                        (!parts_->services.listKept || parts_->services.listKept());
    if (stored) parts_->files.ForgetKept();
    StorePlacement(parts_->services.store, kMainKey, *this);
    parts_->updates.ForgetReady();
}

}  // namespace bw
