// The question whether closing the main window ends the program or sends it to the tray.
#pragma once

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "settings/settings_store.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// Ends with kEndOk when CloseState holds the answer: 1 to exit, 0 for the tray. Ends with
// kEndCancel if the window is to stay. `Remember` is stored at each click on its box, whatever the
// answer is: with the box ticked and the dialog closed by its frame, the next closing doesn't ask
// and does what CloseState said last.
class CCloseDialog : public CDialogBase {
  public:
    // The store must live longer.
    CCloseDialog(SettingsStore& store, Language language, QWidget* parent = nullptr);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    MessageResult OnRemember(MessageParam wParam, MessageParam lParam);
    MessageResult OnMinimize(MessageParam wParam, MessageParam lParam);
    MessageResult OnExit(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);
    MessageResult Answer(uint32_t closeState);

    SettingsStore& store_;
    QVBoxLayout layout_{this};
    QHBoxLayout row_;
    QCheckBox remember_;
    QPushButton minimize_;
    QPushButton exit_;
};

}  // namespace bw
