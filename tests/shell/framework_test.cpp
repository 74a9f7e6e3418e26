// Messages, dialogs as such, the queue to the window's thread.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <atomic>
#include <future>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/framework/colors.h"
#include "shell/framework/dialog_base.h"
#include "shell/qt_testing.h"

namespace bw {
namespace {

using testing::ElementsAre;

constexpr int kPassedOn = 2000;
constexpr int kTaken = 2001;
constexpr int kEdit = 50;
constexpr int kButton = 51;

// Writes down which of its handlers ran.
class Recorder : public CDialogBase {
  public:
    explicit Recorder(QWidget* parent = nullptr) : CDialogBase(Language::kEnglish, parent) {
        AddControl(kEdit, edit_);
        AddControl(kButton, button_);
        layout_.addWidget(&edit_);
        layout_.addWidget(&button_);
    }
    std::vector<std::string> log;

    using CDialogBase::GetText;
    using CDialogBase::SetBackground;
    using CDialogBase::SetStartSize;
    using CDialogBase::SetText;

  protected:
    static const MessageTable& RecorderTable() {
        static const MessageEntry entries[] = {
            OnMessage(kPassedOn, &Recorder::First),
            OnMessage(kPassedOn, &Recorder::Second),
            OnMessage(kTaken, &Recorder::First),
            OnCommand(kButton, &Recorder::First),
        };
        static const MessageTable table{entries, &BaseTable()};
        return table;
    }
    const MessageTable& Table() const override { return RecorderTable(); }
    void ApplyTexts() override { SetTextId(kButton, TextId::kAnswerConfirm); }

  private:
    MessageResult First(MessageParam, MessageParam) {
        log.emplace_back("base 1");
        return 0;
    }
    MessageResult Second(MessageParam, MessageParam) {
        log.emplace_back("base 2");
        return 7;
    }

    QVBoxLayout layout_{this};
    QLineEdit edit_;
    QPushButton button_;
};

class Derived : public Recorder {
  public:
    using Recorder::Recorder;

  protected:
    const MessageTable& Table() const override {
        static const MessageEntry entries[] = {
            OnMessage(kPassedOn, &Derived::PassOn),
            OnMessage(kTaken, &Derived::Take),
            OnCommand(kButton, &Derived::PassOn),
            OnMessage(kMessageClose, &Derived::Close),
        };
        static const MessageTable table{entries, &RecorderTable()};
        return table;
    }

  private:
    MessageResult PassOn(MessageParam, MessageParam) {
        log.emplace_back("derived");
        return 0;
    }
    MessageResult Take(MessageParam, MessageParam) {
        log.emplace_back("derived");
        return 9;
    }
    MessageResult Close(MessageParam wParam, MessageParam lParam) {
        log.emplace_back("close " + std::to_string(wParam) + " " + std::to_string(lParam));
        return 0;
    }
};

TEST(Messages, GoOnToTheBaseClassUntilAHandlerTakesThem) {
    Derived window;
    EXPECT_EQ(window.Send(kPassedOn), 7);
    EXPECT_THAT(window.log, ElementsAre("derived", "base 1", "base 2"));
    window.log.clear();
    EXPECT_EQ(window.Send(kTaken), 9);
    EXPECT_THAT(window.log, ElementsAre("derived"));
    window.log.clear();
    // Only the low 16 bits of a command are its id.
    EXPECT_EQ(window.Send(kMessageCommand, kButton | 0x10000), 0);
    EXPECT_THAT(window.log, ElementsAre("derived", "base 1"));
    window.log.clear();
    EXPECT_EQ(window.Send(kMessageCommand, kButton + 1), 0);
    EXPECT_EQ(window.Send(kButton), 0);
    EXPECT_THAT(window.log, ElementsAre());
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
        EXPECT_FALSE(dialog.IsOpen());
    }
    dialog.ShowModeless();
    dialog.hide();
    EXPECT_TRUE(dialog.IsOpen());
    EXPECT_TRUE(dialog.End(1));
    EXPECT_FALSE(dialog.IsOpen());
}

TEST(Dialogs, EscapeAndTheCloseBoxCloseWithParametersOfZero) {
    Derived dialog;
    WhenModal([&](QWidget&) {
        QTest::keyClick(&ControlOf(dialog, kEdit), Qt::Key_Escape);
        EXPECT_TRUE(dialog.IsOpen()) << "the message is posted";
        dialog.Post(kPassedOn);
    });
    EXPECT_EQ(dialog.DoModal(), 0);
    // What was posted before the end went with the window, though it opens again.
    dialog.ShowModeless();
    RunEvents();
    EXPECT_THAT(dialog.log, ElementsAre("close 0 0"));
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_THAT(dialog.log, ElementsAre("close 0 0", "close 0 0"));
}

TEST(Dialogs, ButtonsAreCommandsAndTextsGoByIds) {
    Derived dialog;
    dialog.ShowModeless();
    QTest::mouseClick(&ControlOf(dialog, kButton), Qt::LeftButton);
    EXPECT_THAT(dialog.log, ElementsAre("derived", "base 1"));
    dialog.SetText(kEdit, QStringLiteral("text"));
    EXPECT_EQ(dialog.GetText(kEdit), u"text");
    EXPECT_EQ(dialog.GetText(kButton), u"Confirm");
    dialog.SetText(99, QStringLiteral("no such control"));
    EXPECT_EQ(dialog.GetText(99), u"");
}

TEST(Dialogs, ALanguageReachesAllThatAWindowOwns) {
    Recorder main;
    Recorder child(&main);
    Recorder grandchild(&child);
    Recorder stranger;
    child.ShowModeless();
    main.PostLanguage(Language::kChinese);
    EXPECT_EQ(main.UiLanguage(), Language::kEnglish) << "posted, not sent";
    RunEvents();
    EXPECT_EQ(main.UiLanguage(), Language::kChinese);
    EXPECT_EQ(child.GetText(kButton), u"确定");
    EXPECT_EQ(grandchild.UiLanguage(), Language::kChinese);
    EXPECT_EQ(stranger.UiLanguage(), Language::kEnglish);
}

TEST(Dialogs, OpenInTheMiddleOfTheParentAndStayOnTheScreen) {
    const QRect work = QApplication::primaryScreen()->availableGeometry();
    QWidget parent;
    parent.resize(400, 300);
    parent.move(work.center() - QPoint(200, 150));
    parent.show();
    Recorder dialog(&parent);
    const auto placed = [&](int left, int top) {
        parent.move(work.topLeft() + QPoint(left, top));
        dialog.ShowModeless();
        const QRect place = dialog.frameGeometry();
        dialog.End(0);
        return place;
    };
    const QRect middle = placed(100, 100);
    EXPECT_LE((middle.center() - parent.frameGeometry().center()).manhattanLength(), 2);
    EXPECT_EQ(placed(-380, -280).topLeft(), work.topLeft());
    EXPECT_EQ(placed(work.width() - 20, work.height() - 20).bottomRight(), work.bottomRight());
    dialog.SetStartSize(4000, 4000);
    EXPECT_EQ(placed(100, 100).topLeft(), work.topLeft());
    // A parent that nobody sees is no place to look at.
    parent.hide();
    dialog.SetStartSize(10, 10);
    EXPECT_LE((placed(0, 0).center() - work.center()).manhattanLength(), 4);
}

TEST(Dialogs, BackgroundsFollowTheThemeAndControlsKeepTheirs) {
    const QPalette before = QApplication::palette();
    Recorder dialog;
    dialog.SetBackground(QColor(kPaleBlue));
    dialog.ShowModeless();
    const auto corner = [&] { return dialog.grab().toImage().pixelColor(1, 1); };
    EXPECT_EQ(corner(), QColor(kPaleBlue));
    QPalette dark(QColor(50, 50, 50), QColor(40, 40, 40));
    QApplication::setPalette(dark);
    RunEvents();
    EXPECT_LT(corner().lightness(), 90);
    EXPECT_LT(ThemedColor(Qt::red).lightness(), 100);
    EXPECT_EQ(ControlOf(dialog, kButton).palette().color(QPalette::Button),
              dark.color(QPalette::Button));
    QApplication::setPalette(before);
    RunEvents();
    EXPECT_EQ(corner(), QColor(kPaleBlue));
}

TEST(Texts, ComeBackUnitByUnitAndByteByByte) {
    const std::u16string odd{0xFEFF, u'a', 0, 0xD800, u'中'};
    EXPECT_EQ(FromQt(ToQt(odd)), odd);
    const std::filesystem::path path("/\xFF/\xE4\xB8\xAD");
    EXPECT_EQ(PathFromQt(PathToQt(path)), path);
}

TEST(Queue, RunsTheWorkOfSeveralThreadsInTheOrderOfEach) {
    constexpr int kThreads = 4;
    constexpr int kEach = 500;
    UiQueue queue;
    std::vector<int> last(kThreads, -1);  // guarded by the queue alone
    int ran = 0;
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                for (int i = 0; i < kEach; ++i) {
                    queue.Post([&, t, i, data = std::vector<int>(10, i)] {
                        EXPECT_EQ(last[static_cast<size_t>(t)], i - 1);
                        last[static_cast<size_t>(t)] = data.back();
                        ++ran;
                    });
                }
            });
        }
        while (ran < kThreads * kEach)
            RunEvents();
    }
    EXPECT_EQ(ran, kThreads * kEach);
}

TEST(Queue, AnswersAThreadOrEndsItsWaiting) {
    UiQueue queue;
    const auto window = std::this_thread::get_id();
    std::atomic<bool> answered = false;
    bool ended = false;
    std::promise<void> noMoreEvents;
    std::jthread asking([&] {
        const auto answer = queue.Call([&] { return std::this_thread::get_id() == window; });
        EXPECT_EQ(answer, true);
        answered = true;
        noMoreEvents.get_future().wait();
        // Waiting as the queue closes, and asking one that is closed.
        EXPECT_FALSE(queue.Call([] { return std::u16string(u"never"); }));
        EXPECT_FALSE(queue.Call([] { return 1; }));
        ended = true;
    });
    while (!answered)
        RunEvents();
    noMoreEvents.set_value();
    queue.Close();
    asking.join();
    EXPECT_TRUE(ended);
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
