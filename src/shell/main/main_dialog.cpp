#include "shell/main/main_dialog.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/framework/colors.h"
#include "shell/framework/commands.h"
#include "shell/framework/placement.h"
#include "shell/main/main_parts.h"
#include "shell/main/settings_start.h"

namespace bw {
namespace {

constexpr int kMargin = 4;
constexpr QSize kLeastSize(400, 360);
constexpr QSize kFirstSize(1120, 640);

}  // namespace

CMainDialog::CMainDialog(const MainDialogServices& services)
    : CDialogBase(StartLanguage(services.store)), parts_(std::make_unique<Parts>(*this, services)) {
    setWindowFlags(Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    SetBackground(QColor::fromRgb(kPaleBlue));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->setMenuBar(&parts_->menu.Bar());
    auto* middle = new QHBoxLayout;
    middle->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    middle->setSpacing(2 * kMargin);
    middle->addWidget(&parts_->view, 1);
    middle->addWidget(&parts_->buttons);
    rows->addLayout(middle, 1);
    rows->addWidget(&parts_->status);
    for (size_t i = 0; i < ButtonColumn::kButtons; ++i)
        AddControl(ButtonColumn::CommandOf(i), parts_->buttons.Button(i));
    setMinimumSize(kLeastSize);
    resize(kFirstSize);
}

CMainDialog::~CMainDialog() = default;

void CMainDialog::Start(std::vector<std::filesystem::path> files) {
    QApplication::setQuitOnLastWindowClosed(false);
    ShowModeless();
    parts_->tray.Show();
    parts_->watchTimer.start();
    parts_->rememberedPending = true;
    parts_->files.LoadRemembered();
    if (!files.empty()) parts_->files.Add(std::move(files));
    // The list comes first: reading it and looking for a newer version would wait for each other.
    parts_->tasks.WhenFree(
        [this] { parts_->updates.Start(parts_->menu.GetMenuState(kCommandUpdateChecks)); });
}

MessageResult CMainDialog::OnInitDialog(MessageParam, MessageParam) {
    LoadDesignTables(parts_->design, parts_->services.store);
    ApplyStoredSettings(
        parts_->services.store, parts_->menu,
        [this](int command) { Send(kMessageCommand, command); },
        [this](int command) { Post(kMessageCommand, command); });
    // What the settings have posted still belongs to the start: the first picture shows it.
    QCoreApplication::sendPostedEvents(&Queue());
    return 1;
}

void CMainDialog::Place() {
    RestorePlacement(parts_->services.store, kMainKey, *this);
}

void CMainDialog::ApplyTexts() {
    const Language language = UiLanguage();
    parts_->qtTexts.SetLanguage(language);
    parts_->menu.SetLanguage(language);
    parts_->updates.SetLanguage(language);
    parts_->ShowBoard();
    parts_->view.SetLanguage(language);
    parts_->status.SetLanguage(language);
    parts_->tray.SetLanguage(language);
    parts_->ShowList();
}

const MessageTable& CMainDialog::Table() const {
    static const std::vector<MessageEntry> commands = CommandEntries();
    static const MessageTable commandTable{commands, &BaseTable()};
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CMainDialog::OnInitDialog),
        OnMessage(kMessageClose, &CMainDialog::OnClose),
        OnMessage(kMessageTray, &CMainDialog::OnTray),
        OnMessage(kMessageFindNext, &CMainDialog::OnFind),
        OnMessage(kMessageReplace, &CMainDialog::OnReplace),
        OnMessage(kMessageReplaceAll, &CMainDialog::OnReplaceAll),
        OnMessage(kMessageEndEdit, &CMainDialog::OnEndEdit),
        OnMessage(kMessageUpdateOffer, &CMainDialog::OnUpdateOffer),
        OnMessage(kMessageUpdateReady, &CMainDialog::OnUpdateReady),
        OnMessage(kMessageNotice, &CMainDialog::OnNotice),
    };
    static const MessageTable table{entries, &commandTable};
    return table;
}

}  // namespace bw
