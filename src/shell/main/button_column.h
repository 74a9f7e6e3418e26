// The buttons at the right of the list.
#pragma once

#include <QGroupBox>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <array>

#include "rom/board_tables.h"
#include "shell/framework/command_menu.h"

namespace bw {

// In groups: what moves, what checks, what removes, and Clear for itself; at the bottom one for
// each kind of ROM, and what can be done with it. On a small window the column scrolls.
class ButtonColumn : public QScrollArea {
  public:
    static constexpr size_t kButtons = 11;

    ButtonColumn();

    // For the owner, which makes clicks commands: a button and its command's id.
    QPushButton& Button(size_t index) { return buttons_[index]; }
    static int CommandOf(size_t index);
    // The tooltips tell the keys and the full texts of `menu`, whose language is set already. One
    // of the two builds is for `board`, which the user chooses.
    void SetLanguage(Language language, const CommandMenu& menu, BoardType board);

    QSize sizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void FitWidth();
    // In the accent's colour, of the theme at hand.
    void ShowBuildsStrong();

    QWidget panel_;
    QGroupBox build_;
    std::array<QPushButton, kButtons> buttons_;  // the last: the other two would delete them
};

}  // namespace bw
