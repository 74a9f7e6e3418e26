#include "designer/window/design_dialog.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLineEdit>
#include <QVBoxLayout>

#include "designer/history/designer_settings.h"
#include "designer/window/designer_commands.h"
#include "designer/window/design_ids.h"
#include "designer/window/design_parts.h"
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
}

CDesignDialog::~CDesignDialog() = default;

void CDesignDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kCustomMenu, UiLanguage()));
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

std::vector<MessageEntry> CDesignDialog::CommandEntries() {
    std::vector<MessageEntry> entries;
    for (const auto& row : DesignerCommands::Rows()) {
        const auto handler = [run = row.run](MessageTarget& target, MessageParam, MessageParam) {
            Parts& parts = *static_cast<CDesignDialog&>(target).parts_;
            const Parts::Event event(parts);
            run(parts);
            return MessageResult{1};
        };
        entries.push_back({handler, kMessageCommand, row.id});
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
    parts_->frame->EditOf(kDesignText).setText(ToQt(parts_->Copy().CustomTextEdit));
    parts_->Refresh(Views::All());
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

void CDesignDialog::StoreAll() {
    if (!IsOpen()) return;
    parts_->LetGo();
    parts_->StorePlace();
    const DesignDialogServices& services = parts_->services;
    kept_ = CloseDesigner(services.session, services.store, services.history);
}

MessageResult CDesignDialog::OnClose(MessageParam, MessageParam) {
    StoreAll();
    End(kEndCancel);
    return 1;
}

}  // namespace bw
