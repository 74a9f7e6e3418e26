#include "shell/dialogs/extern_menu_dialog.h"

#include "settings/setting_names.h"
#include "shell/framework/colors.h"

namespace bw {
namespace {

constexpr int kPath = 1091;
constexpr int kSelect = 1092;
constexpr int kGroup = 1093;
constexpr int kButton = kEndOk;

}  // namespace

CExtrenMenuDialog::CExtrenMenuDialog(SettingsStore& store, UserDialogs& dialogs, Language language,
                                     QWidget* parent)
    : CDialogBase(language, parent), store_(store), dialogs_(dialogs) {
    AddControl(kGroup, group_);
    AddControl(kPath, path_);
    AddControl(kSelect, select_);
    AddControl(kButton, button_);
    SetBackground(QColor(kWhiteGround));
    SetStartSize(365, 71);

    row_.addWidget(&path_);
    row_.addWidget(&select_);
    layout_.addWidget(&group_);
    layout_.addStretch();
    layout_.addWidget(&button_, 0, Qt::AlignRight);
    button_.setDefault(true);
}

const MessageTable& CExtrenMenuDialog::Table() const {
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CExtrenMenuDialog::OnInit),
        OnCommand(kSelect, &CExtrenMenuDialog::OnSelect),
        OnCommand(kButton, &CExtrenMenuDialog::OnButton),
        OnMessage(kMessageClose, &CExtrenMenuDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CExtrenMenuDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kExternalMenu, UiLanguage()));
    SetTextId(kGroup, TextId::kMenuPath);
    SetTextId(kSelect, TextId::kSelectTheFile);
    SetTextId(kButton, TextId::kAnswerConfirm);
    path_.setAccessibleName(group_.title());
}

MessageResult CExtrenMenuDialog::OnInit(MessageParam, MessageParam) {
    std::u16string path;
    store_.RegReadString(kMainKey, setting::kExternMenuPath, path);
    SetText(kPath, ToQt(path));
    return 1;
}

MessageResult CExtrenMenuDialog::OnSelect(MessageParam, MessageParam) {
    const auto chosen = dialogs_.AskMenuFile(PathFromQt(path_.text()).parent_path());
    if (chosen) {
        SetText(kPath, PathToQt(*chosen));
        StorePath();
    }
    return 1;
}

MessageResult CExtrenMenuDialog::OnButton(MessageParam, MessageParam) {
    StorePath();
    End(kEndOk);
    return 1;
}

MessageResult CExtrenMenuDialog::OnClose(MessageParam, MessageParam) {
    StorePath();
    End(kEndCancel);
    return 1;
}

void CExtrenMenuDialog::StorePath() {
    store_.RegWriteString(kMainKey, setting::kExternMenuPath, GetText(kPath));
}

}  // namespace bw
