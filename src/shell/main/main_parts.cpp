#include "shell/main/main_parts.h"

#include <QApplication>
#include <QLineEdit>
#include <chrono>

#include "builder/resources.h"
#include "builder/tables/menu_tables.h"
#include "rom/image_files.h"
#include "shell/framework/commands.h"
#include "shell/framework/texts.h"
#include "shell/main/file_types.h"
#include "shell/main/menu_rows.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

// Long enough for a drag through many rows to be counted once, short enough to seem immediate.
constexpr auto kSpaceDelay = 150ms;
constexpr auto kWatchTime = 2s;

}  // namespace

CMainDialog::Parts::Parts(CMainDialog& owner, const MainDialogServices& given)
    : window(owner),
      services(given),
      screenDialogs(owner, given.base, [this] { return CurrentLanguage(); }),
      editor([this](const ListResult& result) { Follow(result); }),
      menu(owner, MainMenuRows(), [this](int id) { window.Send(kMessageCommand, id); }),
      settings(menu, given.store),
      view(editor, given.base, owner.UiLanguage()),
      status({.stop = [this] { window.Send(kMessageCommand, kCommandStopTask); },
              .space =
                  [this](size_t board) {
                      window.Send(kMessageCommand, board == 0 ? kCommandFit : kCommandFitOther);
                  }}),
      tray(menu, QApplication::windowIcon(),
           [this](int event) { window.Send(kMessageTray, 0, event); }),
      tasks(
          owner.Queue(), [this] { TasksChanged(); },
          [this](std::u16string_view reason) { Tell(reason); }),
      files(*this, given.keptLists),
      find(*this),
      build(*this, {.built = [this] { FollowBuild(); },
                    .tooMuch =
                        [this](BoardType board) {
                            window.Post(kMessageCommand, board == BoardType::kCoolgirl
                                                             ? kCommandFitOther
                                                             : kCommandFit);
                        }}),
      check(*this, build, view, menu, owner, given.check),
      collection(*this, view, owner, [this] { return MenuOnConsole(); }),
      designs(*this, design, owner),
      play(*this, owner),
      carts(*this, play, view, owner),
      fit(*this, view, owner),
      recent(
          *this, menu,
          [this](RecentKind kind, const std::filesystem::path& file) { OpenRecent(kind, file); }),
      drop(owner),
      updates(*this, owner, menu, given,
              {.mayInterrupt = [this] { return MayInterrupt(); },
               .closeDialogs = [this] { CloseDialogs(); }}) {
    spaceTimer.setSingleShot(true);
    spaceTimer.setInterval(kSpaceDelay);
    watchTimer.setInterval(kWatchTime);
    const auto sends = [this](int message) { return [this, message] { window.Send(message); }; };
    connect(&spaceTimer, &QTimer::timeout, &window, [this] { ShowSpace(); });
    connect(&watchTimer, &QTimer::timeout, &window, [this] { Watch(); });
    connect(&view, &GameListView::EditEnded, &window, sends(kMessageEndEdit));
    connect(&view, &GameListView::FolderWanted, &window, [this](const QString& file, bool select) {
        const std::filesystem::path path = ContainerOf(PathFromQt(file));
        Dialogs().ShowInFileManager(select ? path : path.parent_path());
    });
    connect(&view, &GameListView::RemoveWanted, &window,
            [this] { window.Send(kMessageCommand, kCommandRowsRemove); });
    connect(&view, &GameListView::PlaceWanted, &window, [this](size_t before) {
        if (RefusesWhileBusy(*this)) return;
        if (view.EditActive()) window.Send(kMessageEndEdit);
        editor.PlaceRows(view.HighlightedRows(), before);
    });
    for (QLineEdit* box : view.findChildren<QLineEdit*>())
        drop.Watch(*box);
    connect(&drop, &FileDrop::Hovering, &view, &GameListView::ShowDropFrame);
    connect(&drop, &FileDrop::Dropped, &window, [this](const QStringList& dropped) {
        std::vector<std::filesystem::path> paths;
        for (const QString& file : dropped)
            paths.push_back(PathFromQt(file));
        files.Add(std::move(paths));
    });
    connect(&view, &GameListView::ContextMenuWanted, &window,
            [this](const QPoint& place) { ShowRowMenu(place); });
    ShowFileTypes();
}

UserDialogs& CMainDialog::Parts::Dialogs() {
    if (services.dialogs != nullptr) return *services.dialogs;
    return screenDialogs;
}

// For a designer at its opening and for each build: brings in what only the settings have so far.
DesignStore& CMainDialog::Parts::Design() {
    LoadDesignData(design, services.store, DefaultTileSet());
    return design;
}

void CMainDialog::Parts::Follow(const ListResult& result) {
    if (result.tooMany) {
        Warn(*this, FormatText(LoadText(TextId::kTooManyToMove, CurrentLanguage()), kMoveLimit));
    }
    if (result.change != ListChange::kNothing) ForgetNews();
    view.Apply(result);
    if (result.change == ListChange::kNothing) return;
    ShowList();
    if (result.change != ListChange::kTitles) files.ListChanged();
}

void CMainDialog::Parts::FollowBuild() {
    AddRecentFile(services.store, RecentKind::kCarts, build.Built()->file);
    check.FollowBuild(ChecksBuilds());
}

void CMainDialog::Parts::OpenRecent(RecentKind kind, const std::filesystem::path& file) {
    if (kind == RecentKind::kLists) files.Load(file);
    if (kind == RecentKind::kDesigns) designs.Open(file);
    if (kind == RecentKind::kCarts) carts.Open(file);
}

void CMainDialog::Parts::ForgetNews() {
    if (!tasks.AnyRunning()) status.Tell({});
}

void CMainDialog::Parts::ShowFound(bool found) {
    if (found) {
        view.ShowFindRow();
    } else {
        view.Deselect();
    }
}

void CMainDialog::Parts::ShowSearchOutcome(std::u16string_view text) {
    if (rename != nullptr && rename->IsOpen()) {
        rename->ShowProblem(text);
    } else {
        Tell(text);
    }
}

void CMainDialog::Parts::ShowList() {
    status.ShowCounts(CountChecked(editor.Games()), editor.Games().size());
    menu.EnableMenuItem(kCommandUndo, editor.CanUndo());
    menu.EnableMenuItem(kCommandRedo, editor.CanRedo());
    SpaceChanged();
    designs.ListChanged();
}

void CMainDialog::Parts::ShowBoard() {
    const Language language = CurrentLanguage();
    const BoardType board = LoadBuildSettings(services.store).CoolboyBoard();
    const bool mindkids = board == BoardType::kMindkids;
    menu.SetEntryText(kCommandFitCoolboy, QtText(FitEntry(board), language));
    menu.SetEntryText(
        kCommandBuildCoolboy,
        QtText(mindkids ? TextId::kBuildMindkidsEntry : TextId::kBuildCoolboyEntry, language));
    buttons.SetLanguage(language, menu, board);
    check.FollowBoard();
}

void CMainDialog::Parts::ShowFileTypes() {
    const std::optional<bool> here = ListsOpenHere();
    menu.Entry(kCommandListsOpenHere).setVisible(here.has_value());
    menu.CheckMenuItem(kCommandListsOpenHere, here.value_or(false));
}

bool CMainDialog::Parts::ChecksBuilds() const {
    return !closing && menu.GetMenuState(kCommandCheckAfterBuild);
}

void CMainDialog::Parts::ShowSpace() {
    const BuildSettings stored = LoadBuildSettings(services.store);
    const auto estimate = [&](BoardType board) {
        return StatusLine::Board{board, EstimateSpace(editor.Games(), stored, board)};
    };
    status.ShowSpace({estimate(stored.CoolboyBoard()), estimate(BoardType::kCoolgirl)});
    view.SetConsoleMenu(MenuOnConsole());
}

ConsoleMenu CMainDialog::Parts::MenuOnConsole() const {
    const BuildSettings stored = LoadBuildSettings(services.store);
    return {stored.Numbers(), NameColumn(stored, design)};
}

void CMainDialog::Parts::TasksChanged() {
    if (!tasks.TaskBusy()) rememberedPending = false;
    if (tasks.AnyRunning()) {
        status.ShowTask(tasks.Progress(), !rememberedPending);
    } else {
        status.EndTask();
    }
    if (rename != nullptr) rename->SetBusy(tasks.TaskBusy());
    // Whoever waits for the end of a task was queued before this, so the close comes after it.
    if (closing && !tasks.AnyRunning()) window.Post(kMessageClose, *closing);
}

bool CMainDialog::Parts::TrayAvailable() const {
    return services.trayAvailable ? services.trayAvailable()
                                  : QSystemTrayIcon::isSystemTrayAvailable();
}

bool CMainDialog::Parts::MayInterrupt() const {
    const bool gesture = QApplication::mouseButtons() != Qt::NoButton ||
                         QApplication::activePopupWidget() != nullptr || view.EditActive();
    return !gesture && !asking && !closing && !tasks.TaskBusy() && !tasks.AnyRunning();
}

void CMainDialog::Parts::BringUp() {
    if (window.isMinimized()) window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void CMainDialog::Parts::PutAway() {
    if (TrayAvailable()) {
        window.hide();
    } else {
        window.showMinimized();
    }
}

void CMainDialog::Parts::Watch() {
    // A hidden window has nothing but the tray to come back from.
    if (window.isHidden() && !TrayAvailable()) BringUp();
    if (!services.takeProblem) return;
    if (const auto problem = services.takeProblem(CurrentLanguage())) {
        services.takeProblem = nullptr;
        Warn(*this, *problem);
    }
}

void CMainDialog::Parts::ShowRowMenu(const QPoint& place) {
    rowMenu = std::make_unique<RowMenu>(*this, menu, view);
    rowMenu->popup(place);
}

}  // namespace bw
