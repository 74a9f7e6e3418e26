// A question with answers of its own, in place of Yes and No.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "shell/framework/dialog_base.h"

namespace bw {

class CChoiceDialog : public CDialogBase {
  public:
    // The number of the chosen answer, from 0; nothing by Escape and the close box. The first
    // answer is the one that Return gives. The texts stay when the language changes.
    static std::optional<size_t> Ask(QWidget* parent, std::u16string_view text,
                                     std::u16string_view caption,
                                     std::span<const std::u16string> answers, Language language);

  protected:
    const MessageTable& Table() const override { return BaseTable(); }
    void ApplyTexts() override {}

  private:
    CChoiceDialog(QWidget* parent, std::u16string_view text, std::u16string_view caption,
                  std::span<const std::u16string> answers, Language language);

    QVBoxLayout layout_{this};
    QHBoxLayout row_;
    QLabel text_;
    std::vector<std::unique_ptr<QPushButton>> buttons_;
};

}  // namespace bw
