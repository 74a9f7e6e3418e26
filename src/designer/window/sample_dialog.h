// The designs that come with the program, to choose from by their pictures.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <optional>

#include "designer/model/working_copy.h"
#include "shell/framework/dialog_base.h"

namespace bw {

class CSampleDialog : public CDialogBase {
  public:
    // The number of the chosen one of DesignSamples(); nothing if the user gave up. The pictures
    // show the names and the page of `copy`.
    static std::optional<size_t> Ask(QWidget* parent, const WorkingCopy& copy, Language language);

  protected:
    const MessageTable& Table() const override;
    void ApplyTexts() override;

  private:
    CSampleDialog(QWidget* parent, const WorkingCopy& copy, Language language);
    void FillList(const WorkingCopy& copy);
    void ShowAbout();

    MessageResult OnOpen(MessageParam wParam, MessageParam lParam);
    MessageResult OnCancel(MessageParam wParam, MessageParam lParam);

    QVBoxLayout layout_{this};
    QLabel hint_;
    QListWidget list_;
    QLabel about_;  // the chosen one
    QHBoxLayout row_;
    QPushButton openButton_;
    QPushButton cancelButton_;
};

}  // namespace bw
