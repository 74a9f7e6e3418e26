#include "shell/main/check_part.h"

#include <filesystem>
#include <utility>

#include "console/contact_sheet.h"
#include "language/problem_text.h"
#include "rom/image_files.h"
#include "settings/setting_names.h"
#include "shell/framework/commands.h"
#include "shell/framework/texts.h"
#include "shell/list/game_list_model.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {

CheckPart::CheckPart(ListHost& host, const BuildCommands& builds, GameListView& view,
                     CommandMenu& menu, CDialogBase& window, CheckServices services)
    : host_(host),
      builds_(builds),
      view_(view),
      menu_(menu),
      window_(window),
      commands_(host, builds, std::move(services),
                {.begun = [this] { Begun(); },
                 .checked =
                     [this](size_t game) {
                         Mark(game);
                         if (dialog_) dialog_->TellChecked(game);
                     },
                 .ended =
                     [this] {
                         if (dialog_) dialog_->TellState();
                     }}) {
    QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &view,
                     [this](const QString& file) { Unmark(file); });
}

void CheckPart::Check() {
    if (commands_.Running()) {
        Show();
    } else {
        commands_.Check();
    }
}

void CheckPart::Show() {
    if (commands_.Report().state == CheckReport::State::kNone) return;
    if (dialog_ == nullptr || !dialog_->IsOpen()) {
        dialog_ = std::make_unique<CCheckDialog>(commands_.Report(), host_.Store(), window_,
                                                 host_.CurrentLanguage(), &window_);
        QObject::connect(dialog_.get(), &CCheckDialog::GameChosen, dialog_.get(),
                         [this](size_t game) { ShowRow(game); });
        QObject::connect(dialog_.get(), &CCheckDialog::SaveWanted, dialog_.get(),
                         [this] { SaveSheet(); });
        dialog_->Renew();
    }
    dialog_->ShowModeless();
}

void CheckPart::Begun() {
    menu_.EnableMenuItem(kCommandShowCheck, true);
    if (markedOn_ != commands_.Report().board) ClearMarks();
    markedOn_ = commands_.Report().board;
    if (dialog_ != nullptr && dialog_->IsOpen()) dialog_->Renew();
    Show();
}

void CheckPart::FollowBuild(bool wanted) {
    if (markedOn_ != builds_.Built()->board) ClearMarks();
    commands_.FollowBuild(wanted);
}

void CheckPart::FollowBoard() {
    const BoardType coolboy = LoadBuildSettings(host_.Store()).CoolboyBoard();
    if (markedOn_ != coolboy && markedOn_ != BoardType::kCoolgirl) ClearMarks();
}

void CheckPart::StoreAll() const {
    if (dialog_ != nullptr) dialog_->StorePlace();
}

void CheckPart::Mark(size_t game) {
    const CheckedGame& checked = commands_.Report().games[game].game;
    // What couldn't be run says nothing new.
    if (!checked.notRun.empty() || !markedOn_) return;
    const std::u16string& path = commands_.PathInList(game);
    const QString file = PathToQt(ContainerOf(AbsolutePath(TextPath(path), host_.Base())));
    std::set<std::u16string>& marked = watched_[file];
    if (checked.findings.empty()) {
        view_.SetMark(path, std::nullopt);
        marked.erase(path);
    } else {
        view_.SetMark(path, CheckMark{*markedOn_, checked.findings});
        if (marked.empty()) watcher_.addPath(file);
        marked.insert(path);
    }
    if (marked.empty()) Unmark(file);
}

void CheckPart::Unmark(const QString& file) {
    const auto found = watched_.find(file);
    if (found == watched_.end()) return;
    for (const std::u16string& path : found->second)
        view_.SetMark(path, std::nullopt);
    watched_.erase(found);
    watcher_.removePath(file);
}

void CheckPart::ClearMarks() {
    markedOn_.reset();
    view_.ClearMarks();
    if (!watched_.empty()) watcher_.removePaths(watcher_.files());
    watched_.clear();
}

void CheckPart::ShowRow(size_t game) {
    if (const std::optional<size_t> row = commands_.RowInList(game)) {
        host_.Editor().SetFindRow(*row);
        host_.ShowFound(true);
    } else {
        dialog_->Say(QtText(TextId::kGameNotInList, host_.CurrentLanguage()));
    }
}

void CheckPart::SaveSheet() {
    const Language language = host_.CurrentLanguage();
    std::u16string folder;
    host_.Store().RegReadString(kMainKey, setting::kLastSheetDir, folder);
    const auto chosen =
        host_.Dialogs().AskFileToSave({.title = LoadText(TextId::kSaveSheet, language),
                                       .start = TextPath(folder),
                                       .types = {{LoadText(TextId::kPngPictures, language), "png"}},
                                       .name = ToWide(BoardName(commands_.Report().board))});
    if (!chosen) return;
    host_.Store().RegWriteString(kMainKey, setting::kLastSheetDir,
                                 PathText(chosen->path.parent_path()));
    const auto games = std::make_shared<std::vector<ReportGame>>(commands_.Report().games);
    const auto end = std::make_shared<std::u16string>();
    host_.Tasks().StartFreeTask(
        [games, end, language, file = chosen->path](TaskControl&) {
            std::vector<CheckedGame> sheet;
            for (const ReportGame& one : *games) {
                sheet.push_back(one.game);
                sheet.back().picture = one.picture.Unpacked();
            }
            const FileResult<> written = WriteContactSheet(sheet, file);
            *end = written ? FormatText(LoadText(TextId::kSheetSaved, language), PathText(file))
                           : ProblemText(written.Problem(), language);
        },
        [this, end] {
            host_.Tell(*end);
            if (dialog_ != nullptr) dialog_->Say(ToQt(*end));
        });
}

}  // namespace bw
