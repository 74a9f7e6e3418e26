// Find and replace in the names of the list. The dialog packs its fields into a record for the main
// window, which does the work.
#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>
#include <string_view>

#include "list/search/name_search.h"
#include "settings/settings_store.h"
#include "shell/framework/dialog_base.h"

namespace bw {

// Stays open beside the main window, by ShowModeless(). The fields are read from the store at
// opening and stored at closing, which ends with kEndCancel; whoever exits with the dialog open
// sends it a close message first.
class CRenameDialog : public CDialogBase {
  public:
    // `window` gets kMessageFindNext, kMessageReplace and kMessageReplaceAll with a const
    // FindRecord*, and the command kCommandStopTask. Store and window must live longer.
    CRenameDialog(SettingsStore& store, MessageTarget& window, Language language,
                  QWidget* parent = nullptr);

    // A line below the boxes that stays until the next command or change of a box: what is wrong
    // with the pattern, or that nothing was found.
    void ShowProblem(std::u16string_view text);
    // While a search runs, no other can be started, and one that takes time can be stopped.
    void SetBusy(bool busy);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    void Arrange();
    FindRecord Record() const;
    MessageResult SendRecord(int message);
    void ShowBusy(bool busy);

    MessageResult OnInit(MessageParam wParam, MessageParam lParam);
    MessageResult OnFindNext(MessageParam wParam, MessageParam lParam);
    MessageResult OnReplace(MessageParam wParam, MessageParam lParam);
    MessageResult OnReplaceAll(MessageParam wParam, MessageParam lParam);
    MessageResult OnStop(MessageParam wParam, MessageParam lParam);
    MessageResult OnClose(MessageParam wParam, MessageParam lParam);

    SettingsStore& store_;
    MessageTarget& window_;
    bool busy_ = false;
    QTimer busyShown_;  // runs until a search has taken long enough to show it
    QPointer<QWidget> focusBefore_;

    QVBoxLayout layout_{this};
    QGridLayout boxes_;
    QLabel findLabel_;
    QLineEdit find_;
    QLabel replaceLabel_;
    QLineEdit replace_;
    QGroupBox pattern_;
    QHBoxLayout patternRow_{&pattern_};
    QRadioButton normal_;
    QRadioButton regex_;
    QCheckBox onlyChecked_;
    QLabel problem_;
    QHBoxLayout row_;
    QPushButton stop_;
    QPushButton findNext_;
    QPushButton replaceOne_;
    QPushButton replaceAll_;
};

}  // namespace bw
