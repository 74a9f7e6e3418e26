#include "shell/dialogs/choice_dialog.h"

#include "shell/framework/colors.h"
#include "shell/framework/texts.h"

namespace bw {
namespace {

// The controls, and the codes with which the dialog ends; above the codes that all dialogs have.
constexpr int kText = 1083;
constexpr int kFirstAnswer = 1101;

// More answers than this stand one below the other.
constexpr size_t kMostInRow = 3;

}  // namespace

std::optional<size_t> CChoiceDialog::Ask(QWidget* parent, std::u16string_view text,
                                         std::u16string_view caption,
                                         std::span<const std::u16string> answers,
                                         Language language) {
    const int code = CChoiceDialog(parent, text, caption, answers, language).DoModal();
    return code < kFirstAnswer ? std::nullopt
                               : std::optional(static_cast<size_t>(code - kFirstAnswer));
}

CChoiceDialog::CChoiceDialog(QWidget* parent, std::u16string_view text, std::u16string_view caption,
                             std::span<const std::u16string> answers, Language language)
    : CDialogBase(language, parent) {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    AddControl(kText, text_);
    SetBackground(QColor(kPaleBlue));
    SetCloseBoxAlone();
    SetStartSize(260, 60);
    setWindowTitle(ToQt(caption));
    text_.setText(ToQt(text));
    text_.setTextFormat(Qt::PlainText);
    text_.setWordWrap(true);
    if (answers.size() > kMostInRow) row_.setDirection(QBoxLayout::TopToBottom);
    row_.addStretch();
    for (const std::u16string& answer : answers) {
        const int id = kFirstAnswer + static_cast<int>(buttons_.size());
        auto& button = *buttons_.emplace_back(std::make_unique<QPushButton>(ToQt(answer)));
        button.setObjectName(QStringLiteral("control_%1").arg(id));
        button.setDefault(buttons_.size() == 1);
        connect(&button, &QPushButton::clicked, this, [this, id] { End(id); });
        row_.addWidget(&button);
    }
    layout_.addWidget(&text_);
    layout_.addStretch();
    layout_.addLayout(&row_);
    buttons_.front()->setFocus();
}

}  // namespace bw
