// Messages, dialogs as such, the queue to the window's thread.
#include <QLineEdit>
#include <QScreen>
#include <QVBoxLayout>
#include <array>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "shell/framework/dialog_base.h"
#include "shell/qt_testing.h"

namespace bw {
namespace {

using testing::ElementsAre;

constexpr int kPassedOn = 2000;
constexpr int kEdit = 50;
constexpr int kButton = 51;

// Keeps the parameters of what it gets.
class Recorder : public CDialogBase {
  public:
    explicit Recorder(QWidget* parent = nullptr) : CDialogBase(Language::kEnglish, parent) {
        AddControl(kEdit, edit_);
        layout_.addWidget(&edit_);
    }
    std::vector<std::pair<MessageParam, MessageParam>> got;

    using CDialogBase::SetStartSize;

  protected:
    const MessageTable& Table() const override {
        static const MessageEntry entries[] = {
            OnMessage(kPassedOn, &Recorder::Keep<0>),     OnMessage(kPassedOn, &Recorder::Keep<7>),
            OnMessage(kPassedOn, &Recorder::Keep<9>),     OnCommand(kButton, &Recorder::Keep<0>),
            OnMessage(kMessageClose, &Recorder::Keep<0>),
        };
        static const MessageTable table{entries, &BaseTable()};
        return table;
    }
    void ApplyTexts() override {}

  private:
    template <MessageResult kResult>
    MessageResult Keep(MessageParam wParam, MessageParam lParam) {
        got.emplace_back(wParam, lParam);
        return kResult;
    }

    QVBoxLayout layout_{this};
    QLineEdit edit_;
};

TEST(Messages, GoOnUntilAHandlerTakesThem) {
    Recorder window;
    EXPECT_EQ(window.Send(kPassedOn, 1, 2), 7);
    EXPECT_THAT(window.got, ElementsAre(std::pair(1, 2), std::pair(1, 2)));
    // Only the low 16 bits of a command are its id.
    EXPECT_EQ(window.Send(kMessageCommand, kButton | 0x10000), 0);
    EXPECT_EQ(window.got.size(), 3u);
    EXPECT_EQ(window.Send(kMessageCommand, kButton + 1), 0);
    EXPECT_EQ(window.Send(kButton), 0);
    EXPECT_EQ(window.got.size(), 3u);
}

TEST(Dialogs, EndWithACodeAndOpenAgain) {
    Recorder dialog;
    EXPECT_FALSE(dialog.End(5));
    for (const int code : {5, 0, 6}) {
        WhenModal([&](QWidget&) {
            EXPECT_EQ(dialog.DoModal(), 0) << "it is open already";
            dialog.Post(kMessageClose, code);
        });
        EXPECT_EQ(dialog.DoModal(), code);
    }
    dialog.ShowModeless();
    dialog.hide();
    EXPECT_TRUE(dialog.IsOpen());
    EXPECT_TRUE(dialog.End(1));
    EXPECT_FALSE(dialog.IsOpen());
}

TEST(Dialogs, EscapeAndTheCloseBoxCloseWithParametersOfZero) {
    Recorder dialog;
    WhenModal([&](QWidget&) {
        QTest::keyClick(&ControlOf(dialog, kEdit), Qt::Key_Escape);
        EXPECT_TRUE(dialog.IsOpen()) << "the message is posted";
        dialog.Post(kPassedOn, 5);
    });
    EXPECT_EQ(dialog.DoModal(), 0);
    // What was posted before the end went with the window, though it opens again.
    dialog.ShowModeless();
    RunEvents();
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_THAT(dialog.got, ElementsAre(std::pair(0, 0), std::pair(0, 0)));
}

TEST(Dialogs, OpenInTheMiddleOfTheParentAndStayOnTheScreen) {
    const QRect work = QApplication::primaryScreen()->availableGeometry();
    QWidget parent;
    parent.resize(400, 300);
    parent.show();
    Recorder dialog(&parent);
    const auto placed = [&](int left, int top) {
        parent.move(work.topLeft() + QPoint(left, top));
        dialog.ShowModeless();
        const QRect place = dialog.frameGeometry();
        dialog.End(0);
        return place;
    };
    const QPoint middle = placed(100, 100).center();
    EXPECT_LE((middle - parent.frameGeometry().center()).manhattanLength(), 2);
    EXPECT_EQ(placed(-380, -280).topLeft(), work.topLeft());
    EXPECT_EQ(placed(work.width() - 20, work.height() - 20).bottomRight(), work.bottomRight());
    dialog.SetStartSize(4000, 4000);
    EXPECT_EQ(placed(100, 100).topLeft(), work.topLeft());
    // A parent that nobody sees is no place to look at.
    parent.hide();
    dialog.SetStartSize(10, 10);
    EXPECT_LE((placed(0, 0).center() - work.center()).manhattanLength(), 4);
}

TEST(Queue, RunsTheWorkOfSeveralThreadsInTheOrderOfEach) {
    constexpr std::array kAll = {500, 500, 500, 500};
    UiQueue queue;
    std::array<int, 4> next{};  // guarded by the queue alone
    std::vector<std::jthread> threads;
    for (int& mine : next) {
        threads.emplace_back([&] {
            for (int i = 0; i < kAll[0]; ++i)
                queue.Post([&, i] { EXPECT_EQ(mine++, i); });
        });
    }
    while (next != kAll)
        RunEvents();
}

TEST(Queue, WorkMayCloseTheQueueOrDestroyIt) {
    auto queue = std::make_unique<UiQueue>();
    bool second = false;
    queue->Post([&] { queue.reset(); });
    queue->Post([&] { second = true; });
    RunEvents();
    EXPECT_FALSE(queue);
    EXPECT_FALSE(second);
}

}  // namespace
}  // namespace bw
