// Which key is which button of the pads: shown, and changed.
#pragma once

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "shell/dialogs/play_keys.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// Each change is stored at once; there is nothing to cancel.
class CKeysDialog : public CDialogBase {
  public:
    // The ids of the buttons: this one and those behind it, in the order of the pads and of
    // PlayKeys::kButtons.
    static constexpr int kFirstButton = 1400;

    // Both must live longer.
    CKeysDialog(PlayKeys& keys, SettingsStore& store, Language language, QWidget* parent = nullptr);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    static constexpr size_t kPlaces = PlayKeys::kPads * PlayKeys::kButtons.size();
    static PadPlace PlaceAt(size_t index);
    void Ask(std::optional<size_t> index);
    void ShowKeys();
    MessageResult OnDefaults(MessageParam wParam, MessageParam lParam);
    MessageResult OnOk(MessageParam wParam, MessageParam lParam);

    PlayKeys& keys_;
    SettingsStore& store_;
    std::optional<size_t> asked_;  // the button that waits for its key
    QVBoxLayout layout_{this};
    QLabel hint_;
    QHBoxLayout row_;
    std::array<QGroupBox, PlayKeys::kPads> pads_;
    std::array<QLabel, kPlaces> names_;
    std::array<QPushButton, kPlaces> buttons_;
    QHBoxLayout endRow_;
    QPushButton defaults_;
    QPushButton ok_;
};

// As people call the key: "Shift", "X".
QString KeyText(int key);

}  // namespace bw
