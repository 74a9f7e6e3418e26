// A message or a question, in place of the desktop's message box: long texts scroll and copy.
#pragma once

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <string_view>

#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/dialog_base.h"

namespace bw {

class CMessageDialog : public CDialogBase {
  public:
    // Returns when the user has answered: kEndOk, or kEndYes or kEndNo; kEndCancel by Escape and
    // the close box. `parent` may be hidden, or null. Text and caption stay when the language
    // changes.
    static int Show(QWidget* parent, std::u16string_view text, std::u16string_view caption,
                    MessageButtons buttons, Language language);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void Place() override;

  private:
    CMessageDialog(QWidget* parent, std::u16string_view text, std::u16string_view caption,
                   MessageButtons buttons, Language language);
    void Arrange();
    // What the text needs in a window of at most this width; pixels.
    QSize TextSize(int widest) const;

    MessageResult OnOk(MessageParam wParam, MessageParam lParam);
    MessageResult OnYes(MessageParam wParam, MessageParam lParam);
    MessageResult OnNo(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    MessageButtons buttons_;
    QVBoxLayout layout_{this};
    QHBoxLayout row_;
    QPlainTextEdit text_;
    QPushButton first_;   // Confirm or Yes
    QPushButton second_;  // No; hidden beside Confirm
};

}  // namespace bw
