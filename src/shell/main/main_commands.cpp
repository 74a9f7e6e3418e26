// The main window's commands: what each id does.
#include <type_traits>

#include "settings/setting_names.h"
#include "shell/dialogs/about_dialog.h"
#include "shell/dialogs/export_settings_dialog.h"
#include "shell/dialogs/extern_menu_dialog.h"
#include "shell/framework/commands.h"
#include "shell/main/file_types.h"
#include "shell/main/main_parts.h"
#include "shell/main/settings_start.h"
#include "shell/main/topmost.h"
#include "support/paths.h"
#include "support/text.h"

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
        const size_t all = parts.editor.Games().size();
        const ListEditor::ShownRows shown = parts.view.ShownRows();
        const size_t taken = shown ? shown->size() : all;
        if (taken == 0) return;
        const Language language = parts.CurrentLanguage();
        const std::u16string question =
            taken == all
                ? LoadText(TextId::kConfirmEmptying, language)
                : FormatText(LoadText(TextId::kConfirmClearShown, language), taken, all - taken);
        const int answer = parts.Dialogs().Message(question, LoadText(TextId::kTipsTitle, language),
                                                   MessageButtons::kYesNo);
        if (answer != kEndYes) return;
        // What shows may have changed while the question was open.
        const std::u16string name = FirstName(parts, parts.view.ShownRows(), false);
        const size_t cleared = parts.editor.Clear(parts.view.ShownRows());
        parts.Tell(parts.editor.Games().empty()
                       ? FormatText(LoadText(TextId::kListEmptied, language), cleared)
                       : TakenText(cleared, name, language));
    }

    static std::u16string FirstName(const Parts& parts, ListEditor::ShownRows rows,
                                    bool checkedOnly) {
        const GameList& games = parts.editor.Games();
        for (size_t i = 0; i < (rows ? rows->size() : games.size()); ++i) {
            const GameEntry& entry = games[rows ? (*rows)[i] : i];
            if (entry.checked || !checkedOnly) return entry.name;
        }
        return {};
    }
    static std::u16string TakenText(size_t taken, const std::u16string& name, Language language) {
        return taken == 1 ? FormatText(LoadText(TextId::kGameTaken, language), name)
                          : FormatText(LoadText(TextId::kGamesTaken, language), taken);
    }
    static void RemoveChecked(Parts& parts) {
        const Language language = parts.CurrentLanguage();
        const ListEditor::ShownRows shown = parts.view.ShownRows();
        const std::u16string name = FirstName(parts, shown, true);
        const size_t taken = parts.editor.Remove(shown);
        const size_t hidden = CountChecked(parts.editor.Games());
        std::u16string told = taken > 0 ? TakenText(taken, name, language) : u"";
        if (hidden > 0) told += FormatText(LoadText(TextId::kHiddenCheckedStay, language), hidden);
        if (told.empty()) told = LoadText(TextId::kNothingChecked, language);
        parts.Tell(told.substr(told.find_first_not_of(u' ')));
    }
    static void RemoveRows(Parts& parts) {
        const std::vector<uint32_t> rows = parts.view.HighlightedRows();
        if (rows.empty()) return;
        const std::u16string name = FirstName(parts, rows, false);
        const size_t taken = parts.editor.RemoveRows(rows);
        parts.Tell(TakenText(taken, name, parts.CurrentLanguage()));
    }
    template <RowMove kMove>
    static void MoveRows(Parts& parts) {
        parts.editor.MoveRows(parts.view.HighlightedRows(), kMove, parts.view.ShownRows());
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
        parts.Dialogs().Message(LoadText(TextId::kSupportedMappers, language),
                                LoadText(TextId::kTipsTitle, language), MessageButtons::kConfirm);
    }
    static void About(Parts& parts) {
        CAboutDialog(parts.CurrentLanguage(), &parts.window).DoModal();
    }

    static void AskAtClosing(Parts& parts) {
        StoreNumber(parts.Store(), kMainKey, setting::kRemember, 0);
        parts.Tell(LoadText(TextId::kClosingAsksAgain, parts.CurrentLanguage()));
    }

    static void ListsOpenHere(Parts& parts) {
        const std::optional<bool> before = bw::ListsOpenHere();
        if (!before) return;
        const Language language = parts.CurrentLanguage();
        const bool done = SetListsOpenHere(!*before, language);
        parts.ShowFileTypes();
        if (!done) return Warn(parts, LoadText(TextId::kListsNotRegistered, language));
        parts.Tell(*before ? LoadText(TextId::kListsOpenNoMore, language)
                           : FormatText(LoadText(TextId::kListsOpenHere, language),
                                        PathText(ExecutablePath())));
    }

    static void Speak(Parts& parts, Language language) {
        const bool chinese = language == Language::kChinese;
        parts.menu.CheckMenuItem(kCommandChinese, chinese);
        parts.menu.CheckMenuItem(kCommandEnglish, !chinese);
        parts.window.PostLanguage(language);
        StoreNumber(parts.Store(), kMainKey, setting::kLanguage,
                    chinese ? kCommandChinese : kCommandEnglish);
    }
    static void Toggle(Parts& parts, const MenuToggle& toggle, bool atStart) {
        const bool screen = toggle.id == kCommandCustomEnable && !atStart;
        if (screen && !parts.menu.GetMenuState(toggle.id) && !parts.designs.MayEnable()) return;
        const bool on = parts.settings.Toggle(toggle);
        if (toggle.id == kCommandTopmost) SetTopmost(parts.window, on);
        if (toggle.id == kCommandUpdateChecks && !atStart) parts.updates.LookByItself(on);
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
        {kCommandRemove, RemoveChecked},
        {kCommandRowsUp, MoveRows<RowMove::kUp>},
        {kCommandRowsDown, MoveRows<RowMove::kDown>},
        {kCommandRowsTop, MoveRows<RowMove::kTop>},
        {kCommandRowsBottom, MoveRows<RowMove::kBottom>},
        {kCommandRowsRemove, RemoveRows},
        {kCommandFitCoolboy,
         [](Parts& parts) {
             const BoardType board = LoadBuildSettings(parts.Store()).CoolboyBoard();
             parts.build.CheckFitting(board, parts.view.ShownRows());
         }},
        {kCommandFitCoolgirl,
         [](Parts& parts) {
             parts.build.CheckFitting(BoardType::kCoolgirl, parts.view.ShownRows());
         }},
        {kCommandTidyNames, [](Parts& parts) { parts.collection.TidyNames(); }},
        {kCommandNamesFromDat, [](Parts& parts) { parts.collection.NamesFromDatabase(); }},
        {kCommandFindSame, [](Parts& parts) { parts.collection.FindSame(); }},
        {kCommandKeepBest, [](Parts& parts) { parts.collection.KeepBest(); }},
        {kCommandLookForMissing, [](Parts& parts) { parts.collection.LookForMissing(); }},
        {kCommandCheckShown, [](Parts& parts) { parts.collection.CheckShown(); }},
        {kCommandUncheckShown, [](Parts& parts) { parts.collection.UncheckShown(); }},
        {kCommandCheckOnlyShown, [](Parts& parts) { parts.collection.CheckOnlyShown(); }},
        {kCommandFit,
         [](Parts& parts) { parts.fit.Show(LoadBuildSettings(parts.Store()).CoolboyBoard()); }},
        {kCommandFitOther, [](Parts& parts) { parts.fit.Show(BoardType::kCoolgirl); }},
        {kCommandUndo, [](Parts& parts) { parts.editor.Undo(); }},
        {kCommandRedo, [](Parts& parts) { parts.editor.Redo(); }},
    };
    static constexpr Row kOthers[] = {
        {kCommandClear, Clear},
        {kCommandOpen, [](Parts& parts) { parts.files.Open(); }},
        {kCommandLoad, [](Parts& parts) { parts.files.Load(); }},
        {kCommandOpenCart, [](Parts& parts) { parts.carts.Open(); }},
        {kCommandSave, [](Parts& parts) { parts.files.Save(); }},
        {kCommandBuildCoolboy, [](Parts& parts) { parts.build.BuildCoolboy(parts.files.Name()); }},
        {kCommandBuildCoolgirl,
         [](Parts& parts) { parts.build.BuildCoolgirl(parts.files.Name()); }},
        {kCommandCheckCart, [](Parts& parts) { parts.check.Check(); }},
        {kCommandShowCheck, [](Parts& parts) { parts.check.Show(); }},
        {kCommandExportInfo, [](Parts& parts) { parts.build.Export(); }},
        {kCommandPlayGame, [](Parts& parts) { parts.play.PlayGame(); }},
        {kCommandPlayCart, [](Parts& parts) { parts.play.PlayCart(parts.build.Built()); }},
        {kCommandExportSettings, ExportSettings},
        {kCommandExternMenuConfig, ExternMenuConfig},
        {kCommandMenuDesign, [](Parts& parts) { parts.designs.Design(); }},
        {kCommandDesignOpen, [](Parts& parts) { parts.designs.Open(); }},
        {kCommandDesignSave, [](Parts& parts) { parts.designs.Save(); }},
        {kCommandFindReplace, FindReplace},
        {kCommandFilter, [](Parts& parts) { parts.view.FocusFilter(); }},
        {kCommandStopTask, [](Parts& parts) { parts.tasks.StopAll(); }},
        {kCommandChinese, [](Parts& parts) { Speak(parts, Language::kChinese); }},
        {kCommandEnglish, [](Parts& parts) { Speak(parts, Language::kEnglish); }},
        {kCommandAskAtClosing, AskAtClosing},
        {kCommandListsOpenHere, ListsOpenHere},
        {kCommandRomInfo, RomInfo},
        {kCommandCheckUpdate, [](Parts& parts) { parts.updates.Check(); }},
        {kCommandAbout, About},
        {kCommandExit, [](Parts& parts) { parts.window.Send(kMessageClose, kCloseByExit); }},
    };
};

std::vector<MessageEntry> CMainDialog::CommandEntries() {
    std::vector<MessageEntry> entries;
    // `run` also gets whether the command only repeats a stored setting, if it wants to know.
    const auto add = [&](int id, auto run) {
        const auto handler = [run](MessageTarget& target, MessageParam wParam, MessageParam) {
            Parts& parts = *static_cast<CMainDialog&>(target).parts_;
            parts.ForgetNews();
            if constexpr (std::is_invocable_v<decltype(run), Parts&, bool>) {
                run(parts, (wParam & kCommandAtStart) != 0);
            } else {
                run(parts);
            }
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
    for (const RecentKind kind : kRecentKinds) {
        const int first = FirstRecentCommand(kind);
        for (int i = 0; i < kRecentFiles; ++i)
            add(first + i, [kind, i](Parts& parts) { parts.recent.Choose(kind, i); });
        add(first + kRecentFiles, [kind](Parts& parts) { parts.recent.Clear(kind); });
    }
    for (const MenuToggle& toggle : MenuToggles())
        add(toggle.id,
            [&toggle](Parts& parts, bool atStart) { Commands::Toggle(parts, toggle, atStart); });
    for (const MenuRadioGroup& group : MenuRadioGroups()) {
        for (const MenuRadio& entry : group.entries) {
            add(entry.id, [&group, &entry](Parts& parts) {
                parts.settings.Choose(group, entry);
                parts.SpaceChanged();
                if (group.name == setting::kCoolboyType) parts.ShowBoard();
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

MessageResult CMainDialog::OnUpdateOffer(MessageParam, MessageParam) {
    parts_->updates.Offer();
    return 1;
}

MessageResult CMainDialog::OnUpdateReady(MessageParam, MessageParam) {
    parts_->updates.CloseToInstall();
    return 1;
}

MessageResult CMainDialog::OnNotice(MessageParam, MessageParam) {
    parts_->updates.ShowNotice();
    return 1;
}

}  // namespace bw
