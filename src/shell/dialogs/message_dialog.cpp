#include "shell/dialogs/message_dialog.h"

#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>
#include <algorithm>

#include "shell/framework/colors.h"

namespace bw {
namespace {

constexpr int kText = 1083;

// Longer texts take the largest window without being measured.
constexpr qsizetype kMeasured = 4000;

// Dialog units.
constexpr QSize kLargest(423, 246);
constexpr QSize kLargestQuestion(347, 161);
constexpr QSize kLeast(120, 40);

}  // namespace

int CMessageDialog::Show(QWidget* parent, std::u16string_view text, std::u16string_view caption,
                         MessageButtons buttons, Language language) {
    return CMessageDialog(parent, text, caption, buttons, language).DoModal();
}

CMessageDialog::CMessageDialog(QWidget* parent, std::u16string_view text,
                               std::u16string_view caption, MessageButtons buttons,
                               Language language)
    : CDialogBase(language, parent), buttons_(buttons) {
    const bool question = buttons == MessageButtons::kYesNo;
    AddControl(kText, text_);
    AddControl(question ? kEndYes : kEndOk, first_);
    if (question) AddControl(kEndNo, second_);
    second_.setVisible(question);
    SetBackground(QColor(kPaleBlue));
    SetCloseBoxAlone();
    Arrange();
    setWindowTitle(ToQt(caption));
    SetText(kText, ToQt(text));
    text_.setAccessibleName(windowTitle());
}

void CMessageDialog::Arrange() {
    text_.setReadOnly(true);
    text_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_.setTabChangesFocus(true);
    text_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // all lines are wrapped
    text_.viewport()->setAutoFillBackground(false);
    row_.addStretch();
    row_.addWidget(&first_);
    row_.addWidget(&second_);
    layout_.addWidget(&text_);
    layout_.addLayout(&row_);
    first_.setDefault(true);
    first_.setFocus();
}

const MessageTable& CMessageDialog::Table() const {
    static const MessageEntry entries[] = {
        OnCommand(kEndOk, &CMessageDialog::OnOk),
        OnCommand(kEndYes, &CMessageDialog::OnYes),
        OnCommand(kEndNo, &CMessageDialog::OnNo),
        OnMessage(kMessageClose, &CMessageDialog::OnClose),
    };
    static const MessageTable table{entries, &BaseTable()};
    return table;
}

void CMessageDialog::ApplyTexts() {
    if (buttons_ == MessageButtons::kYesNo) {
        SetTextId(kEndYes, TextId::kAnswerYes);
        SetTextId(kEndNo, TextId::kAnswerNo);
    } else {
        SetTextId(kEndOk, TextId::kAnswerConfirm);
    }
}

QSize CMessageDialog::TextSize(int widest) const {
    const int around =
        2 * (text_.frameWidth() + static_cast<int>(text_.document()->documentMargin()));
    const int bar = text_.verticalScrollBar()->sizeHint().width();
    const QRect lines = text_.fontMetrics().boundingRect(
        QRect(0, 0, widest - around - bar, 0),
        Qt::TextWrapAnywhere | Qt::TextWordWrap | Qt::TextExpandTabs, text_.toPlainText());
    return {lines.width() + around + bar,
            lines.height() + around + text_.fontMetrics().lineSpacing()};
}

void CMessageDialog::Place() {
    const QSize units = buttons_ == MessageButtons::kYesNo ? kLargestQuestion : kLargest;
    const QSize largest = FromDialogUnits(units.width(), units.height())
                              .boundedTo(screen()->availableGeometry().size());
    QSize size = largest;
    if (text_.document()->characterCount() < kMeasured) {
        const QMargins margins = layout_.contentsMargins();
        const QSize rest(
            margins.left() + margins.right(),
            margins.top() + margins.bottom() + layout_.spacing() + row_.sizeHint().height());
        size = (TextSize(largest.width() - rest.width()) + rest)
                   .expandedTo(FromDialogUnits(kLeast.width(), kLeast.height()))
                   .boundedTo(largest);
    }
    // The edit's own wish for a minimum is that of a form, not of a line of text.
    text_.setMinimumHeight(text_.fontMetrics().lineSpacing() * 2);
    resize(size);
    // With its whole text in view there is nothing to gain by another size. Some desktops offer to
    // maximise whatever can have one.
    if (size.width() < largest.width() && size.height() < largest.height()) setFixedSize(size);
    Centre();
}

MessageResult CMessageDialog::OnOk(MessageParam, MessageParam) {
    End(kEndOk);
    return 1;
}
MessageResult CMessageDialog::OnYes(MessageParam, MessageParam) {
    End(kEndYes);
    return 1;
}
MessageResult CMessageDialog::OnNo(MessageParam, MessageParam) {
    End(kEndNo);
    return 1;
}
MessageResult CMessageDialog::OnClose(MessageParam, MessageParam) {
    End(kEndCancel);
    return 1;
}

}  // namespace bw
