// What an export of the list's tables is made for.
#pragma once

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "settings/settings_store.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// Each click stores its value at once, in ExportRomType or ExportPrgSize; there is nothing to
// cancel. The sizes can be chosen for COOLGIRL too.
class CExportSettingsDialog : public CDialogBase {
  public:
    // The store must live longer.
    CExportSettingsDialog(SettingsStore& store, Language language, QWidget* parent = nullptr);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnRadio(MessageParam wParam, MessageParam lParam);
    MessageResult OnButton(MessageParam wParam, MessageParam lParam);

    SettingsStore& store_;
    QVBoxLayout layout_{this};
    QGroupBox typeGroup_;
    QHBoxLayout typeRow_{&typeGroup_};
    std::array<QRadioButton, 2> types_;
    QGroupBox sizeGroup_;
    QHBoxLayout sizeRow_{&sizeGroup_};
    std::array<QRadioButton, 3> sizes_;
    QPushButton button_;
};

}  // namespace bw
