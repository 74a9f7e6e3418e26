#include "shell/dialogs/close_dialog.h"

#include "settings/setting_names.h"
#include "shell/framework/colors.h"

namespace bw {
namespace {

constexpr int kRemember = 1026;
constexpr int kExit = 1027;
constexpr int kMinimize = 1028;

}  // namespace

CCloseDialog::CCloseDialog(SettingsStore& store, Language language, QWidget* parent)
    : CDialogBase(language, parent), store_(store) {
    AddControl(kRemember, remember_);
    AddControl(kMinimize, minimize_);
    AddControl(kExit, exit_);
    SetBackground(QColor(kPaleBlue));
    SetCloseBoxAlone();
    SetStartSize(193, 50);

    row_.addStretch();
    row_.addWidget(&minimize_);
    row_.addWidget(&exit_);
    layout_.addWidget(&remember_);
    layout_.addStretch();
    layout_.addLayout(&row_);
    minimize_.setDefault(true);
    minimize_.setFocus();
}

const MessageTable& CCloseDialog::Table() const {
    static const MessageEntry entries[] = {
        OnCommand(kRemember, &CCloseDialog::OnRemember),
        OnCommand(kMinimize, &CCloseDialog::OnMinimize),
        OnCommand(kExit, &CCloseDialog::OnExit),
        OnMessage(kMessageClose, &CCloseDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CCloseDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kProduct, UiLanguage()));
    SetTextId(kRemember, TextId::kRememberOperation);
    remember_.setToolTip(QtText(TextId::kRememberTip, UiLanguage()));
    SetTextId(kMinimize, TextId::kMinimize);
    SetTextId(kExit, TextId::kExit);
}

MessageResult CCloseDialog::OnRemember(MessageParam, MessageParam) {
    store_.RegWriteDword(kMainKey, setting::kRemember, remember_.isChecked() ? 1 : 0);
    return 1;
}

MessageResult CCloseDialog::OnMinimize(MessageParam, MessageParam) {
    return Answer(0);
}

MessageResult CCloseDialog::OnExit(MessageParam, MessageParam) {
    return Answer(1);
}

MessageResult CCloseDialog::Answer(uint32_t closeState) {
    store_.RegWriteDword(kMainKey, setting::kCloseState, closeState);
    End(kEndOk);
    return 1;
}

MessageResult CCloseDialog::OnClose(MessageParam, MessageParam) {
    End(kEndCancel);
    return 1;
}

}  // namespace bw
