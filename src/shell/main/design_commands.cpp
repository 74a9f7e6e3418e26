#include "shell/main/design_commands.h"

#include <QScopedValueRollback>
#include <algorithm>
#include <array>
#include <iterator>

#include "builder/input/build_settings.h"
#include "designer/files/design_file.h"
#include "designer/history/designer_settings.h"
#include "designer/tools/text_tools.h"
#include "designer/window/design_dialog.h"
#include "designer/window/last_design_file.h"
#include "settings/recent_files.h"
#include "settings/setting_names.h"
#include "support/text.h"

namespace bw {
namespace {

std::shared_ptr<const GameList> CheckedGames(const GameList& games) {
    GameList checked;
    std::ranges::copy_if(games, std::back_inserter(checked), &GameEntry::checked);
    return std::make_shared<const GameList>(std::move(checked));
}

}  // namespace

void DesignCommands::Prepare() {
    const BuildSettings settings = LoadBuildSettings(host_.Store());
    const auto names =
        DisplayNames(host_.Editor().Games(), settings.Numbers(), NameRules::kDesignerAndExport);
    session_.RunWithoutStep([&](WorkingCopy& copy) {
        copy = WorkingCopy();
        copy.document.store = host_.Design();
        copy.Store().CaptionText = MulticartTitle(names.size());
        copy.ShowPageNumber = settings.PageNumber;
        SetItems(copy, names, static_cast<int32_t>(settings.PageSize), settings.NameInsertRow);
    });
}

void DesignCommands::TakeOver() {
    design_ = session_.Copy().Store();
}

void DesignCommands::Design() {
    if (open_ != nullptr) return;
    Prepare();
    CDesignDialog dialog({host_.Store(), host_.DesignHistory(), session_, host_.Dialogs(),
                          lastTypes_, CheckedGames(host_.Editor().Games())},
                         host_.CurrentLanguage(), &window_);
    const QScopedValueRollback<CDesignDialog*> open(open_, &dialog);
    dialog.DoModal();
    // The program may have ended around it, in the middle of a save.
    dialog.StoreAll();
    TakeOver();
    if (!dialog.Kept()) host_.Tell(LoadText(TextId::kHistoryNotStored, host_.CurrentLanguage()));
}

void DesignCommands::StoreAll() {
    if (open_ != nullptr) open_->StoreAll();
}

void DesignCommands::ListChanged() {
    if (open_ != nullptr) open_->SetGames(CheckedGames(host_.Editor().Games()));
}

bool DesignCommands::IsEnabled() const {
    uint32_t enabled = 0;
    host_.Store().RegReadDword(kMainKey, setting::kCustomEnable, enabled);
    return enabled != 0;
}

bool DesignCommands::Open(bool shows) {
    // A build takes the design from the settings.
    if (RefusesWhileBusy(host_)) return false;
    const auto file = host_.Dialogs().AskDesignToOpen(LastDesignFolder(host_.Store()));
    return file && Open(*file, shows);
}

bool DesignCommands::Open(const std::filesystem::path& file, bool shows) {
    if (RefusesWhileBusy(host_)) return false;
    KeepLastDesignFile(host_.Store(), file);
    const Language language = host_.CurrentLanguage();
    Prepare();
    OpenDesigner(session_, host_.Store(), host_.DesignHistory());
    DesignDocument document = session_.Copy().document;
    if (const DesignProblem problem = OpenDesign(file, document, language)) {
        host_.Dialogs().Message(FullText(*problem), LoadText(TextId::kErrorTitle, language),
                                MessageButtons::kConfirm);
        return false;
    }
    session_.Run([&](WorkingCopy& copy) {
        copy.document = document;
        copy.captionBox = document.store.CaptionText;
        CountItems(copy);
        return SynchroniseCursors(copy);
    });
    const bool kept = CloseDesigner(session_, host_.Store(), host_.DesignHistory());
    TakeOver();
    const TextId told = shows ? TextId::kDesignOpened : TextId::kDesignOpenedOff;
    AddRecentFile(host_.Store(), RecentKind::kDesigns, file);
    std::u16string line = FormatText(LoadText(told, language), PathText(file.filename()));
    if (!kept) line += u" " + LoadText(TextId::kHistoryNotStored, language);
    host_.Tell(line);
    return true;
}

void DesignCommands::Save() {
    const auto file = host_.Dialogs().AskDesignToSave(LastDesignFolder(host_.Store()));
    if (!file) return;
    KeepLastDesignFile(host_.Store(), *file);
    const Language language = host_.CurrentLanguage();
    Prepare();
    OpenDesigner(session_, host_.Store(), host_.DesignHistory());
    const DesignProblem problem = SaveDesign(*file, session_.Copy().document, language);
    if (!problem) AddRecentFile(host_.Store(), RecentKind::kDesigns, *file);
    host_.Tell(problem ? FullText(*problem)
                       : FormatText(LoadText(TextId::kDesignSaved, language), PathText(*file)));
}

bool DesignCommands::MayEnable() {
    if (IsDesigned(host_.Design())) return true;
    const Language language = host_.CurrentLanguage();
    const std::array answers{
        LoadText(TextId::kDrawDesign, language), LoadText(TextId::kChooseDesign, language),
        LoadText(TextId::kEnableAnyway, language), LoadText(TextId::kLeaveDisabled, language)};
    const auto answer = host_.Dialogs().Choose(LoadText(TextId::kNothingDesigned, language),
                                               LoadText(TextId::kCustomMenu, language), answers);
    if (answer == 0) {
        Design();
        return IsDesigned(design_);
    }
    return answer == 1 ? Open(true) : answer == 2;
}

}  // namespace bw
