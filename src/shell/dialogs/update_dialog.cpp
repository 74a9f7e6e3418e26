#include "shell/dialogs/update_dialog.h"

#include "shell/framework/colors.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr int kText = 1031;
constexpr int kNote = 1032;

// Anything may stand in a record. Other schemes could start programs, or show the user's files.
QUrl PageOf(const std::string& address) {
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    const bool web =
        url.scheme() == QStringLiteral("https") || url.scheme() == QStringLiteral("http");
    return url.isValid() && web && !url.host().isEmpty() ? url : QUrl();
}

}  // namespace

CUpdateDialog::CUpdateDialog(UpdateOffer offer, Language language, QWidget* parent)
    : CDialogBase(language, parent), offer_(std::move(offer)), page_(PageOf(offer_.record.url)) {
    AddControl(kText, text_);
    AddControl(kNote, note_);
    AddControl(kEndOk, ok_);
    AddControl(kEndCancel, cancel_);
    SetBackground(QColor(kPaleBlue));
    SetCloseBoxAlone();
    SetStartSize(270, 130);
    Arrange();
    ok_.setEnabled(offer_.newer && (!InBrowser() || !page_.isEmpty()));
    ChooseDefault();
}

void CUpdateDialog::Arrange() {
    text_.setReadOnly(true);
    text_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_.setTabChangesFocus(true);
    text_.viewport()->setAutoFillBackground(false);
    note_.setWordWrap(true);
    note_.setTextFormat(Qt::PlainText);
    row_.addStretch();
    row_.addWidget(&ok_);
    row_.addWidget(&cancel_);
    layout_.addWidget(&text_, 1);
    layout_.addWidget(&note_);
    layout_.addLayout(&row_);
}

// Who is typing when an offer comes by itself must not answer it with the next key.
void CUpdateDialog::ChooseDefault() {
    for (QPushButton* button : {&ok_, &cancel_})
        button->setAutoDefault(offer_.asked);
    if (!offer_.asked) {
        text_.setFocus();
        return;
    }
    QPushButton& likely = ok_.isEnabled() ? ok_ : cancel_;
    likely.setDefault(true);
    likely.setFocus();
}

const MessageTable& CUpdateDialog::Table() const {
    static const MessageEntry entries[] = {
        OnCommand(kEndOk, &CUpdateDialog::OnOk),
        OnCommand(kEndCancel, &CUpdateDialog::OnCancel),
        OnMessage(kMessageClose, &CUpdateDialog::OnCancel),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

std::u16string CUpdateDialog::NoteText() const {
    if (!offer_.newer) return LoadText(TextId::kNoNewerVersion, UiLanguage());
    return UpdateOutcomeText(offer_.replaceable, UiLanguage());
}

void CUpdateDialog::ApplyTexts() {
    const Language language = UiLanguage();
    setWindowTitle(
        ToQt(FormatText(LoadText(TextId::kCurrentAndLatestVersion, language),
                        ShownVersion(offer_.running), ShownVersion(offer_.record.version))));
    SetText(kText, ToQt(DescriptionOf(offer_.record, language)));
    text_.setAccessibleName(windowTitle());
    SetText(kNote, ToQt(NoteText()));
    note_.setVisible(!note_.text().isEmpty());
    SetTextId(kEndOk, InBrowser() ? TextId::kOpenInBrowser : TextId::kUpdate);
    SetTextId(kEndCancel, TextId::kCancel);
}

MessageResult CUpdateDialog::OnOk(MessageParam, MessageParam) {
    if (!ok_.isEnabled()) return 1;
    if (InBrowser()) offer_.openAddress(page_);
    End(InBrowser() ? kEndCancel : kEndOk);
    return 1;
}

MessageResult CUpdateDialog::OnCancel(MessageParam, MessageParam) {
    End(kEndCancel);
    return 1;
}

}  // namespace bw
