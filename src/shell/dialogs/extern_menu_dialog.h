// Which file takes the menu's place in a build.
#pragma once

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "settings/settings_store.h"
#include "shell/dialogs/user_dialogs.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// A chosen file is stored at once; what stands in the box is stored at closing, by the button
// (kEndOk) and by the frame (kEndCancel) alike, and nothing checks it here.
class CExtrenMenuDialog : public CDialogBase {
  public:
    // The store and the file dialogs must live longer.
    CExtrenMenuDialog(SettingsStore& store, UserDialogs& dialogs, Language language,
                      QWidget* parent = nullptr);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnSelect(MessageParam wParam, MessageParam lParam);
    MessageResult OnButton(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);
    void StorePath();

    SettingsStore& store_;
    UserDialogs& dialogs_;
    QVBoxLayout layout_{this};
    QGroupBox group_;
    QHBoxLayout row_{&group_};
    QLineEdit path_;
    QPushButton select_;
    QPushButton button_;
};

}  // namespace bw
