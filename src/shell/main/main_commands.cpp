// The main window's commands: what each id does.
#include "settings/setting_names.h"
#include "shell/dialogs/about_dialog.h"
#include "shell/dialogs/export_settings_dialog.h"
#include "shell/dialogs/extern_menu_dialog.h"
#include "shell/framework/commands.h"
#include "shell/main/main_parts.h"
#include "shell/main/topmost.h"

namespace bw {
namespace {

const FindRecord& RecordOf(MessageParam lParam) {
    // Messages carry addresses as numbers.
    return *reinterpret_cast<const FindRecord*>(lParam);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace

// Each gets the inside of the window that the command was sent to.
struct CMainDialog::Commands {
    // Works while a task runs: tasks have their own copy of what they need.
    static void Clear(Parts& parts) {
        if (parts.editor.Games().empty()) return;
        const Language language = parts.CurrentLanguage();
        const int answer =
            parts.Dialogs().Message(LoadText(TextId::kConfirmEmptying, language),
                                    LoadText(TextId::kTipsTitle, language), MessageButtons::kYesNo);
        if (answer == kEndYes) parts.editor.Clear();
    }

    static void FindReplace(Parts& parts) {
        if (parts.rename == nullptr || !parts.rename->IsOpen()) {
            parts.rename = std::make_unique<CRenameDialog>(parts.Store(), parts.window,
                                                           parts.CurrentLanguage(), &parts.window);
        }
        parts.rename->ShowModeless();
    }
    static void ExportSettings(Parts& parts) {
        CExportSettingsDialog(parts.Store(), parts.CurrentLanguage(), &parts.window).DoModal();
    }
    static void ExternMenuConfig(Parts& parts) {
        CExtrenMenuDialog(parts.Store(), parts.Dialogs(), parts.CurrentLanguage(), &parts.window)
            .DoModal();
    }
    static void RomInfo(Parts& parts) {
        const Language language = parts.CurrentLanguage();
        parts.Dialogs().Message(
            LoadText(TextId::kSupportedMappers, language),
            FromQt(WithoutLetter(QtText(TextId::kMulticartInfoEntry, language))),
            MessageButtons::kConfirm);
    }
    static void About(Parts& parts) {
        CAboutDialog(parts.CurrentLanguage(), &parts.window).DoModal();
    }

    static void Speak(Parts& parts, Language language) {
        const bool chinese = language == Language::kChinese;
        parts.menu.CheckMenuItem(kCommandChinese, chinese);
        parts.menu.CheckMenuItem(kCommandEnglish, !chinese);
        parts.window.PostLanguage(language);
        StoreNumber(parts.Store(), kMainKey, setting::kLanguage,
                    chinese ? kCommandChinese : kCommandEnglish);
    }
    static void Toggle(Parts& parts, const MenuToggle& toggle) {
        const bool on = parts.settings.Toggle(toggle);
        if (toggle.id == kCommandTopmost) SetTopmost(parts.window, on);
        if (toggle.id == kCommandShowNumberOrder) {
            parts.menu.EnableMenuItem(kCommandShowNumberFill, on);
        }
        parts.SpaceChanged();
    }

    struct Row {
        int id;
        void (*run)(Parts&);
    };
    // On the list; refused while a task has it.
    static constexpr Row kOnList[] = {
        {kCommandMoveUp, [](Parts& parts) { parts.editor.MoveUp(); }},
        {kCommandMoveDown, [](Parts& parts) { parts.editor.MoveDown(); }},
        {kCommandMoveTop, [](Parts& parts) { parts.editor.MoveTop(); }},
        {kCommandMoveBottom, [](Parts& parts) { parts.editor.MoveBottom(); }},
        {kCommandSelectAll, [](Parts& parts) { parts.editor.SelectAll(parts.view.ShownRows()); }},
        {kCommandSelectInverse,
         [](Parts& parts) { parts.editor.SelectInverse(parts.view.ShownRows()); }},
        {kCommandRemove, [](Parts& parts) { parts.editor.Remove(); }},
        {kCommandUndo, [](Parts& parts) { parts.editor.Undo(); }},
        {kCommandRedo, [](Parts& parts) { parts.editor.Redo(); }},
    };
    static constexpr Row kOthers[] = {
        {kCommandClear, Clear},
        {kCommandOpen, [](Parts& parts) { parts.files.Open(); }},
        {kCommandLoad, [](Parts& parts) { parts.files.Load(); }},
        {kCommandSave, [](Parts& parts) { parts.files.Save(); }},
        {kCommandBuildCoolboy, [](Parts& parts) { parts.build.BuildCoolboy(); }},
        {kCommandBuildCoolgirl, [](Parts& parts) { parts.build.BuildCoolgirl(); }},
        {kCommandExportInfo, [](Parts& parts) { parts.build.Export(); }},
        {kCommandExportSettings, ExportSettings},
        {kCommandExternMenuConfig, ExternMenuConfig},
        {kCommandFindReplace, FindReplace},
        {kCommandFilter, [](Parts& parts) { parts.view.FocusFilter(); }},
        {kCommandStopTask, [](Parts& parts) { parts.tasks.StopAll(); }},
        {kCommandChinese, [](Parts& parts) { Speak(parts, Language::kChinese); }},
        {kCommandEnglish, [](Parts& parts) { Speak(parts, Language::kEnglish); }},
        {kCommandRomInfo, RomInfo},
        {kCommandAbout, About},
        {kCommandExit, [](Parts& parts) { parts.window.Send(kMessageClose, kCloseByExit); }},
    };
};

std::vector<MessageEntry> CMainDialog::CommandEntries() {
    std::vector<MessageEntry> entries;
    const auto add = [&](int id, auto run) {
        const auto handler = [run](MessageTarget& target, MessageParam, MessageParam) {
            run(*static_cast<CMainDialog&>(target).parts_);
            return MessageResult{1};
        };
        entries.push_back({handler, kMessageCommand, id});
    };
    for (const auto& [id, run] : Commands::kOnList) {
        add(id, [run = run](Parts& parts) {
            if (RefusesWhileBusy(parts)) return;
            // The editor's row is about to move.
            if (parts.view.EditActive()) parts.window.Send(kMessageEndEdit);
            run(parts);
        });
    }
    for (const auto& [id, run] : Commands::kOthers)
        add(id, run);
    for (const MenuToggle& toggle : MenuToggles())
        add(toggle.id, [&toggle](Parts& parts) { Commands::Toggle(parts, toggle); });
    for (const MenuRadioGroup& group : MenuRadioGroups()) {
        for (const MenuRadio& entry : group.entries) {
            add(entry.id, [&group, &entry](Parts& parts) {
                parts.settings.Choose(group, entry);
                parts.SpaceChanged();
            });
        }
    }
    return entries;
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
    parts_->view.StoreEdit();
    return 1;
}

}  // namespace bw
