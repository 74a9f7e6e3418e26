#include "designer/window/design_dialog.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLineEdit>
#include <QVBoxLayout>

#include "designer/history/designer_settings.h"
#include "designer/window/design_ids.h"
#include "designer/window/design_parts.h"
#include "designer/window/designer_commands.h"
#include "designer/window/file_rows.h"
#include "designer/window/preview_page.h"
#include "shell/framework/texts.h"

namespace bw {

CDesignDialog::CDesignDialog(const DesignDialogServices& services, Language language,
                             QWidget* parent)
    : CDialogBase(language, parent), parts_(std::make_unique<Parts>(*this, services)) {
    setWindowFlags(Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setMenuBar(&parts_->menu.Bar());
    rows->addWidget(&parts_->inner);
    for (const ControlRow& row : ControlRows()) {
        QWidget& control = parts_->frame->ControlOf(row.id);
        if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
            AddControl(row.id, *button);
        } else {
            AddControl(row.id, control);
        }
    }
    for (const int id : {kDesignUndo, kDesignRedo})
        parts_->frame->ControlOf(id).installEventFilter(this);
}

CDesignDialog::~CDesignDialog() = default;

void CDesignDialog::ApplyTexts() {
    parts_->SetLanguage(UiLanguage());
}

void CDesignDialog::Place() {
    parts_->RestorePlace();
}

bool CDesignDialog::event(QEvent* event) {
    // Another screen may have another scale.
    if (event->type() == QEvent::ScreenChangeInternal && parts_ != nullptr && parts_->zoom != 0) {
        parts_->SetZoom(parts_->zoom);
    }
    return CDialogBase::event(event);
}

// The step's name is worked out when somebody asks.
bool CDesignDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ToolTip) parts_->ShowUndoTips();
    return CDialogBase::eventFilter(watched, event);
}

std::vector<MessageEntry> CDesignDialog::CommandEntries() {
    std::vector<MessageEntry> entries;
    const auto add = [&](int id, auto run) {
        const auto handler = [run](MessageTarget& target, MessageParam, MessageParam) {
            run(*static_cast<CDesignDialog&>(target).parts_);
            return MessageResult{1};
        };
        entries.push_back({handler, kMessageCommand, id});
    };
    for (const auto& row : DesignerCommands::Rows())
        add(row.id, row.run);
    for (const FileRow& row : FileRows()) {
        if (row.load != 0) add(row.load, [id = row.load](Parts& parts) { parts.files.Load(id); });
        if (row.save != 0) add(row.save, [id = row.save](Parts& parts) { parts.files.Save(id); });
    }
    return entries;
}

const MessageTable& CDesignDialog::Table() const {
    static const std::vector<MessageEntry> commands = CommandEntries();
    static const MessageTable commandTable{commands, &BaseTable()};
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CDesignDialog::OnInitDialog),
        OnMessage(kMessageClose, &CDesignDialog::OnClose),
    };
    static const MessageTable table{entries, &commandTable};
    return table;
}

MessageResult CDesignDialog::OnInitDialog(MessageParam, MessageParam) {
    const Parts::Event event(*parts_);
    const DesignDialogServices& services = parts_->services;
    OpenDesigner(services.session, services.store, services.history);
    toStore_ = true;
    parts_->frame->EditOf(kDesignText).setText(ToQt(parts_->Copy().CustomTextEdit));
    parts_->Refresh(Views::All());
    if (!IsDesigned(parts_->Copy().Store())) {
        parts_->Tell(LoadText(TextId::kDesignNewsEmpty, UiLanguage()));
    }
    // The marks of the layers start unset, and their commands turn them: mark and layer agree.
    const WorkingCopy& copy = parts_->Copy();
    const std::pair<bool, int> layers[] = {
        {copy.Show_Bg_Tile, kDesignShowBkgTiles}, {copy.Show_Sp_Tile, kDesignShowSprites},
        {copy.Show_List, kDesignShowList},        {copy.Show_Custom_Text, kDesignShowTexts},
        {copy.Show_Caption, kDesignShowCaption},  {copy.Show_Cursor, kDesignShowCursor}};
    for (const auto& [shown, id] : layers) {
        parts_->menu.CheckMenuItem(id, false);
        if (shown) Post(kMessageCommand, id);
    }
    return 1;
}

void CDesignDialog::SetGames(std::shared_ptr<const GameList> games) {
    parts_->services.games = std::move(games);
    parts_->preview->SetGames(parts_->services.games);
}

void CDesignDialog::StoreAll() {
    if (!toStore_) return;
    parts_->LetGo();
    parts_->StorePlace();
    const DesignDialogServices& services = parts_->services;
    kept_ = CloseDesigner(services.session, services.store, services.history);
}

MessageResult CDesignDialog::OnClose(MessageParam, MessageParam) {
    // A save that is under way may fail, which must be told.
    parts_->files.WhenSaved([this] {
        parts_->files.GiveUp();
        StoreAll();
        toStore_ = false;
        End(kEndCancel);
    });
    return 1;
}

}  // namespace bw
