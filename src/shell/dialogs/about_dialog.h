// What the program is, and its version.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/framework/dialog_base.h"

namespace bw {

// Where the packager of this build wants users to go (BANKWEAVER_HOMEPAGE at configuration); empty
// for nowhere.
QString HomePage();

class CAboutDialog : public CDialogBase {
  public:
    explicit CAboutDialog(Language language, QWidget* parent = nullptr,
                          const QString& homePage = HomePage());

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    MessageResult OnButton(MessageParam wParam, MessageParam lParam);
    void FollowLink(const QString& target);

    QVBoxLayout layout_{this};
    QLabel icon_;
    QLabel product_;
    QLabel link_;
    QPushButton button_;
};

}  // namespace bw
