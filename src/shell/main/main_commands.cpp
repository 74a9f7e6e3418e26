// What the main window's commands do.
#include "settings/setting_names.h"
#include "shell/dialogs/about_dialog.h"
#include "shell/dialogs/export_settings_dialog.h"
#include "shell/dialogs/extern_menu_dialog.h"
#include "shell/framework/commands.h"
#include "shell/main/main_parts.h"
#include "shell/main/topmost.h"

namespace bw {
namespace {

int CommandOf(MessageParam wParam) {
    return static_cast<int>(wParam & 0xFFFF);
}

const FindRecord& RecordOf(MessageParam lParam) {
    // Messages carry addresses as numbers.
    return *reinterpret_cast<const FindRecord*>(lParam);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace

MessageResult CMainDialog::OnListCommand(MessageParam wParam, MessageParam) {
    const int command = CommandOf(wParam);
    ListEditor& editor = parts_->editor;
    if (command == kCommandClear) {
        // Works while a task runs: tasks have their own copy of what they need.
        if (editor.Games().empty()) return 1;
        const int answer = parts_->Dialogs().Message(
            LoadText(TextId::kConfirmEmptying, UiLanguage()),
            LoadText(TextId::kTipsTitle, UiLanguage()), MessageButtons::kYesNo);
        if (answer == kEndYes) parts_->Apply(editor.Clear());
        return 1;
    }
    if (RefusesWhileBusy(*parts_)) return 1;
    // The editor's row is about to move.
    if (parts_->view.EditActive()) Send(kMessageEndEdit);
    const auto run = [&]() -> ListResult {
        switch (command) {
            case kCommandMoveUp:
                return editor.MoveUp();
            case kCommandMoveDown:
                return editor.MoveDown();
            case kCommandMoveTop:
                return editor.MoveTop();
            case kCommandMoveBottom:
                return editor.MoveBottom();
            case kCommandSelectAll:
                return editor.SelectAll(parts_->view.ShownRows());
            case kCommandSelectInverse:
                return editor.SelectInverse(parts_->view.ShownRows());
            case kCommandRemove:
                return editor.Remove();
            case kCommandUndo:
                return editor.Undo();
            default:
                return editor.Redo();
        }
    };
    parts_->Apply(run());
    return 1;
}

MessageResult CMainDialog::OnFileCommand(MessageParam wParam, MessageParam) {
    switch (CommandOf(wParam)) {
        case kCommandOpen:
            parts_->files.Open();
            break;
        case kCommandLoad:
            parts_->files.Load();
            break;
        case kCommandSave:
            parts_->files.Save();
            break;
        case kCommandBuildCoolboy:
            parts_->build.BuildCoolboy();
            break;
        case kCommandBuildCoolgirl:
            parts_->build.BuildCoolgirl();
            break;
        default:
            parts_->build.Export();
    }
    return 1;
}

MessageResult CMainDialog::OnDialogCommand(MessageParam wParam, MessageParam) {
    SettingsStore& store = parts_->services.store;
    const Language language = UiLanguage();
    switch (CommandOf(wParam)) {
        case kCommandFindReplace:
            if (parts_->rename == nullptr || !parts_->rename->IsOpen()) {
                parts_->rename = std::make_unique<CRenameDialog>(store, *this, language, this);
            }
            parts_->rename->ShowModeless();
            break;
        case kCommandExportSettings:
            CExportSettingsDialog(store, language, this).DoModal();
            break;
        case kCommandExternMenuConfig:
            CExtrenMenuDialog(store, parts_->Dialogs(), language, this).DoModal();
            break;
        case kCommandRomInfo:
            parts_->Dialogs().Message(
                LoadText(TextId::kSupportedMappers, language),
                FromQt(WithoutLetter(QtText(TextId::kMulticartInfoEntry, language))),
                MessageButtons::kConfirm);
            break;
        default:
            CAboutDialog(language, this).DoModal();
    }
    return 1;
}

MessageResult CMainDialog::OnLanguageCommand(MessageParam wParam, MessageParam) {
    const int command = CommandOf(wParam);
    const Language language = command == kCommandChinese ? Language::kChinese : Language::kEnglish;
    parts_->menu.CheckMenuItem(kCommandChinese, language == Language::kChinese);
    parts_->menu.CheckMenuItem(kCommandEnglish, language == Language::kEnglish);
    PostLanguage(language);
    StoreNumber(parts_->services.store, kMainKey, setting::kLanguage,
                static_cast<uint32_t>(command));
    return 1;
}

MessageResult CMainDialog::OnToggle(MessageParam wParam, MessageParam) {
    const int command = CommandOf(wParam);
    const bool on = parts_->settings.Toggle(command);
    if (command == kCommandTopmost) SetTopmost(*this, on);
    if (command == kCommandShowNumberOrder) {
        parts_->menu.EnableMenuItem(kCommandShowNumberFill, on);
    }
    parts_->SpaceChanged();
    return 1;
}

MessageResult CMainDialog::OnRadio(MessageParam wParam, MessageParam) {
    parts_->settings.Choose(CommandOf(wParam));
    parts_->SpaceChanged();
    return 1;
}

MessageResult CMainDialog::OnExit(MessageParam, MessageParam) {
    Send(kMessageClose, kCloseByExit);
    return 1;
}

MessageResult CMainDialog::OnFilter(MessageParam, MessageParam) {
    parts_->view.FocusFilter();
    return 1;
}

MessageResult CMainDialog::OnStopTask(MessageParam, MessageParam) {
    parts_->tasks.StopAll();
    return 1;
}

MessageResult CMainDialog::OnFind(MessageParam, MessageParam lParam) {
    parts_->find.FindNext(RecordOf(lParam));
    return 1;
}

MessageResult CMainDialog::OnReplace(MessageParam, MessageParam lParam) {
    parts_->find.Replace(RecordOf(lParam));
    return 1;
}

MessageResult CMainDialog::OnReplaceAll(MessageParam, MessageParam lParam) {
    parts_->find.ReplaceAll(RecordOf(lParam));
    return 1;
}

MessageResult CMainDialog::OnEndEdit(MessageParam, MessageParam) {
    if (!parts_->view.EditActive()) return 1;
    parts_->view.StoreEdit();
    parts_->ListChanged();
    return 1;
}

}  // namespace bw
