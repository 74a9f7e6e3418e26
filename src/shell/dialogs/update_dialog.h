// The offer of a newer version.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <functional>
#include <string>

#include "shell/framework/dialog_base.h"
#include "update/update_outcome.h"
#include "update/update_record.h"

namespace bw {

struct UpdateOffer {
    UpdateRecord record;
    std::u16string running = {};     // the running version
    bool newer = false;              // the record's version is newer than that
    UpdateOutcome replaceable = {};  // whether the running program can be replaced
    bool asked = false;              // the user wanted to know
    std::function<void(const QUrl&)> openAddress = {};  // shows a page of the web
};

// Ends with kEndOk if the new version is to be installed. Where the program can't be replaced the
// button for that opens the new version's address in the browser instead, and the end is
// kEndCancel.
class CUpdateDialog : public CDialogBase {
  public:
    CUpdateDialog(UpdateOffer offer, Language language, QWidget* parent = nullptr);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    void Arrange();
    void ChooseDefault();
    bool InBrowser() const { return offer_.newer && !offer_.replaceable; }
    std::u16string NoteText() const;

    MessageResult OnOk(MessageParam wParam, MessageParam lParam);
    MessageResult OnCancel(MessageParam wParam, MessageParam lParam);

    UpdateOffer offer_;
    QUrl page_;  // what the browser may open; empty if nothing
    QVBoxLayout layout_{this};
    QHBoxLayout row_;
    QPlainTextEdit text_;
    QLabel note_;
    QPushButton ok_;
    QPushButton cancel_;
};

}  // namespace bw
