#include "shell/dialogs/rename_dialog.h"

#include <QAccessible>
#include <algorithm>
#include <chrono>

#include "shell/framework/commands.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

constexpr int kFind = 1032;
constexpr int kReplace = 1033;
constexpr int kNormal = 1034;
constexpr int kRegex = 1035;
constexpr int kPattern = 1038;
constexpr int kFindLabel = 1039;
constexpr int kReplaceLabel = 1040;
constexpr int kFindNextButton = 1042;
constexpr int kReplaceButton = 1043;
constexpr int kOnlyChecked = 1045;
constexpr int kReplaceAllButton = 40031;
constexpr int kProblem = 41031;  // of our own

// Takes a leading number and a dot away, once Regex is chosen.
constexpr std::u16string_view kFirstSearch = u"^\\d+\\.";
constexpr int kLongest = 4096;  // 16-bit units of a box
// Searches that are shorter leave the buttons as they are.
constexpr auto kBusyShownAfter = 150ms;

std::u16string StoredText(const SettingsStore& store, const char* name,
                          std::u16string_view otherwise) {
    std::u16string text(otherwise);
    store.RegReadString(kMainKey, name, text);
    return text;
}

bool StoredSwitch(const SettingsStore& store, const char* name) {
    uint32_t value = 0;
    store.RegReadDword(kMainKey, name, value);
    return value != 0;
}

}  // namespace

CRenameDialog::CRenameDialog(SettingsStore& store, MessageTarget& window, Language language,
                             QWidget* parent)
    : CDialogBase(language, parent), store_(store), window_(window) {
    AddControl(kFindLabel, findLabel_);
    AddControl(kFind, find_);
    AddControl(kReplaceLabel, replaceLabel_);
    AddControl(kReplace, replace_);
    AddControl(kPattern, pattern_);
    AddControl(kNormal, normal_);
    AddControl(kRegex, regex_);
    AddControl(kOnlyChecked, onlyChecked_);
    AddControl(kProblem, problem_);
    AddControl(kCommandStopTask, stop_);
    AddControl(kFindNextButton, findNext_);
    AddControl(kReplaceButton, replaceOne_);
    AddControl(kReplaceAllButton, replaceAll_);
    SetStartSize(240, 130);
    Arrange();
    for (QLineEdit* box : {&find_, &replace_}) {
        box->setMaxLength(kLongest);
        connect(box, &QLineEdit::textEdited, this, [this] { ShowProblem({}); });
    }
    busyShown_.setSingleShot(true);
    connect(&busyShown_, &QTimer::timeout, this, [this] { ShowBusy(true); });
}

void CRenameDialog::Arrange() {
    findLabel_.setBuddy(&find_);
    replaceLabel_.setBuddy(&replace_);
    boxes_.addWidget(&findLabel_, 0, 0);
    boxes_.addWidget(&find_, 0, 1);
    boxes_.addWidget(&replaceLabel_, 1, 0);
    boxes_.addWidget(&replace_, 1, 1);
    problem_.setWordWrap(true);
    problem_.setTextFormat(Qt::PlainText);
    problem_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    patternRow_.addWidget(&normal_);
    patternRow_.addWidget(&regex_);
    patternRow_.addStretch();
    row_.addWidget(&stop_);
    row_.addStretch();
    row_.addWidget(&findNext_);
    row_.addWidget(&replaceOne_);
    row_.addWidget(&replaceAll_);
    // The window keeps its shape when a search or a problem shows.
    QSizePolicy keepsRoom = stop_.sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    stop_.setSizePolicy(keepsRoom);
    stop_.hide();
    problem_.setMinimumHeight(2 * problem_.fontMetrics().lineSpacing());
    problem_.setAlignment(Qt::AlignTop | Qt::AlignLeading);
    layout_.addLayout(&boxes_);
    layout_.addWidget(&problem_);
    layout_.addWidget(&pattern_);
    layout_.addWidget(&onlyChecked_);
    layout_.addStretch();
    layout_.addLayout(&row_);
    replaceAll_.setDefault(true);
    find_.setFocus();
}

const MessageTable& CRenameDialog::Table() const {
    static const MessageEntry entries[] = {
        OnMessage(kMessageInitDialog, &CRenameDialog::OnInit),
        OnCommand(kFindNextButton, &CRenameDialog::OnFindNext),
        OnCommand(kReplaceButton, &CRenameDialog::OnReplace),
        OnCommand(kReplaceAllButton, &CRenameDialog::OnReplaceAll),
        OnCommand(kCommandStopTask, &CRenameDialog::OnStop),
        OnMessage(kMessageClose, &CRenameDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CRenameDialog::ApplyTexts() {
    setWindowTitle(QtText(TextId::kFindAndReplace, UiLanguage()));
    SetTextId(kFindLabel, TextId::kSearchLabel);
    SetTextId(kReplaceLabel, TextId::kReplaceLabel);
    SetTextId(kPattern, TextId::kPattern);
    SetTextId(kNormal, TextId::kNormal);
    SetTextId(kRegex, TextId::kRegex);
    SetTextId(kOnlyChecked, TextId::kFindCheckedOnly);
    SetTextId(kFindNextButton, TextId::kFindNext);
    SetTextId(kReplaceButton, TextId::kReplace);
    SetTextId(kReplaceAllButton, TextId::kReplaceAll);
    SetText(kCommandStopTask, QtText(TextId::kStop, UiLanguage()));
    // A problem in the language of before.
    ShowProblem({});
}

MessageResult CRenameDialog::OnInit(MessageParam, MessageParam) {
    SetText(kFind, ToQt(StoredText(store_, "Search", kFirstSearch)));
    SetText(kReplace, ToQt(StoredText(store_, "Replace", {})));
    (StoredSwitch(store_, "Pattern") ? regex_ : normal_).setChecked(true);
    onlyChecked_.setChecked(StoredSwitch(store_, "OnlyChecked"));
    return 1;
}

FindRecord CRenameDialog::Record() const {
    return {GetText(kFind), GetText(kReplace), regex_.isChecked(), onlyChecked_.isChecked()};
}

MessageResult CRenameDialog::SendRecord(int message) {
    if (busy_) return 1;
    ShowProblem({});
    const FindRecord record = Record();
    window_.Send(message, 0, reinterpret_cast<MessageParam>(&record));
    return 1;
}

MessageResult CRenameDialog::OnFindNext(MessageParam, MessageParam) {
    return SendRecord(kMessageFindNext);
}

MessageResult CRenameDialog::OnReplace(MessageParam, MessageParam) {
    return SendRecord(kMessageReplace);
}

MessageResult CRenameDialog::OnReplaceAll(MessageParam, MessageParam) {
    return SendRecord(kMessageReplaceAll);
}

MessageResult CRenameDialog::OnStop(MessageParam, MessageParam) {
    window_.Send(kMessageCommand, kCommandStopTask);
    return 1;
}

MessageResult CRenameDialog::OnClose(MessageParam, MessageParam) {
    const FindRecord record = Record();
    store_.RegWriteString(kMainKey, "Search", record.find);
    store_.RegWriteString(kMainKey, "Replace", record.replace);
    store_.RegWriteDword(kMainKey, "Pattern", record.regex ? 1 : 0);
    store_.RegWriteDword(kMainKey, "OnlyChecked", record.onlyChecked ? 1 : 0);
    End(kEndCancel);
    return 1;
}

void CRenameDialog::ShowProblem(std::u16string_view text) {
    SetText(kProblem, ToQt(text));
    problem_.setAccessibleName(problem_.text());
    if (text.empty()) return;
    resize(width(), std::max(height(), layout_.totalHeightForWidth(width())));
    QAccessibleEvent announcement(&problem_, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
}

void CRenameDialog::SetBusy(bool busy) {
    if (busy == busy_) return;
    busy_ = busy;
    if (busy) {
        busyShown_.start(kBusyShownAfter);
    } else {
        busyShown_.stop();
        ShowBusy(false);
    }
}

void CRenameDialog::ShowBusy(bool busy) {
    // A button that is disabled loses the focus. Stop takes it meanwhile, and gives it back.
    const bool atStop = focusWidget() == &stop_;
    if (busy) focusBefore_ = focusWidget();
    if (busy) stop_.show();
    for (QPushButton* button : {&findNext_, &replaceOne_, &replaceAll_})
        button->setEnabled(!busy);
    if (busy && focusBefore_ && !focusBefore_->isEnabled()) stop_.setFocus();
    if (!busy && atStop && focusBefore_) focusBefore_->setFocus();
    if (!busy) stop_.hide();
}

}  // namespace bw
