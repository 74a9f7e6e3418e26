// The line at the window's bottom: counts, what a task does or how the last one ended, and the
// space on the boards.
#pragma once

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <array>
#include <functional>

#include "builder/layout/board_space.h"
#include "language/language.h"
#include "shell/framework/background_tasks.h"
#include "shell/framework/elided_label.h"

namespace bw {

class StatusLine : public QFrame {
  public:
    struct Wishes {
        std::function<void()> stop;                         // the running task is to end
        std::function<void(size_t board)> space = nullptr;  // the space on a board was clicked
    };
    explicit StatusLine(Wishes wishes);

    // Clears the last task's words, which are in the other language.
    void SetLanguage(Language language);

    void ShowCounts(size_t checked, size_t all);
    // Stays until the next one. `details` are for the mouse that rests on it.
    void Tell(std::u16string_view line, std::u16string_view details = {});
    void ShowTask(const TaskProgress& progress, bool canStop);
    void EndTask();
    // The two boards that builds are for, in this order.
    struct Board {
        BoardType board;
        BoardSpace space;
    };
    void ShowSpace(const std::array<Board, 2>& boards);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Arrange();

    Wishes wishes_;
    Language language_ = Language::kEnglish;
    // One row, or two where the window is narrow: what happens above, the space below.
    QBoxLayout rows_;
    QWidget news_;
    QWidget space_;
    QLabel counts_;
    ElidedLabel told_;
    QProgressBar progress_;
    QPushButton stop_;
    std::array<QLabel, 2> boards_;
};

}  // namespace bw
