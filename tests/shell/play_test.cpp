// The play window over an emulator that only counts.
#include <QKeyEvent>

#include <gmock/gmock.h>

#include "common/environment_variable.h"
#include "common/fake_emulator.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "shell/dialogs/keys_dialog.h"
#include "shell/dialogs/play_dialog.h"
#include "shell/qt_testing.h"
#include "shell/scripted_dialogs.h"
#include "support/files.h"

namespace bw {
namespace {

class Lent : public Emulator {
  public:
    explicit Lent(FakeEmulator& emulator) : emulator_(emulator) {}
    std::string Name() const override { return emulator_.Name(); }
    ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart& start) const override {
        return emulator_.Start(start);
    }

  private:
    FakeEmulator& emulator_;
};

class Playing : public testing::Test {
  protected:
    Playing() {
        test::WriteText(folder / "game.nes", test::ImageBytes({}, 1));
        dialog.Play(folder / "game.nes", u"Game");
        Activate();
        EXPECT_TRUE(QTest::qWaitFor([&] { return emulator.frames > 2; }));
    }

    // What a desktop does by itself.
    void Activate() {
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    PadStates Last() const { return emulator.Pads().back(); }
    // Whether the pads become these, and stay for a while.
    bool Become(PadStates pads) {
        return QTest::qWaitFor([&] { return Last() == pads; }) &&
               (QTest::qWait(60), Last() == pads);
    }
    void Send(int command) { dialog.Send(kMessageCommand, command); }
    QWidget& View() { return ChildOf<QWidget>(dialog, "play_view"); }
    // Frames in a tenth of a second.
    int Rate() {
        QTest::qWait(60);
        const int before = emulator.frames;
        QTest::qWait(100);
        return emulator.frames - before;
    }

    TemporaryFolder folder;
    EnvironmentVariable home{"BANKWEAVER_HOME", folder.Path().c_str()};
    std::unique_ptr<SettingsStore> store = MakeMemoryStore();
    ScriptedDialogs dialogs;
    FakeEmulator emulator;
    bool there = true;
    CPlayDialog dialog{*store, dialogs,
                       [this]() -> std::unique_ptr<Emulator> {
                           return there ? std::make_unique<Lent>(emulator) : nullptr;
                       },
                       Language::kEnglish};
};

TEST_F(Playing, KeysAreButtonsOfBothPadsAndNoneSticks) {
    QTest::keyPress(&View(), Qt::Key_Right);
    QTest::keyPress(&View(), Qt::Key_X);
    QTest::keyPress(&View(), Qt::Key_T);
    EXPECT_TRUE(Become({kPadRight | kPadA, kPadStart}));
    QTest::keyPress(&View(), Qt::Key_Left);
    EXPECT_TRUE(Become({kPadLeft | kPadA, kPadStart})) << "a pad never gives both";
    QKeyEvent repeated(QEvent::KeyRelease, Qt::Key_X, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&View(), &repeated);
    EXPECT_TRUE(Become({kPadLeft | kPadA, kPadStart}));
    // The same key of the keyboard, by another name when it goes up.
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Z, Qt::NoModifier, 52, 0, 0);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Y, Qt::NoModifier, 52, 0, 0);
    QApplication::sendEvent(&View(), &down);
    EXPECT_TRUE(Become({kPadLeft | kPadA | kPadB, kPadStart}));
    QApplication::sendEvent(&View(), &up);
    EXPECT_TRUE(Become({kPadLeft | kPadA, kPadStart}));
    View().clearFocus();
    EXPECT_TRUE(Become({}));
}

TEST_F(Playing, ItStopsWhileItPausesOrIsOutOfSightAndGoesFastAtWill) {
    Send(kPlayPause);
    EXPECT_EQ(Rate(), 0);
    const int before = emulator.frames;
    Send(kPlayStep);
    EXPECT_EQ(Rate(), 0);
    EXPECT_EQ(emulator.frames, before + 1);
    Send(kPlayPause);
    EXPECT_GT(Rate(), 0);
    QTest::keyPress(&View(), Qt::Key_Tab);
    EXPECT_GT(Rate(), 50);
    QTest::keyRelease(&View(), Qt::Key_Tab);
    EXPECT_LT(Rate(), 50);
    Send(kPlayReset);
    Send(kPlayPower);
    EXPECT_TRUE(QTest::qWaitFor([&] { return emulator.resets == 1 && emulator.powers == 1; }));
    dialog.hide();
    EXPECT_EQ(Rate(), 0);
}

TEST_F(Playing, AKeyCanBeChangedAndIsKept) {
    WhenModal([&](QWidget& modal) {
        auto& up = ControlOf<QAbstractButton>(modal, CKeysDialog::kFirstButton);
        up.setFocus();
        up.click();
        QTest::keyClick(&up, Qt::Key_X);
        EXPECT_EQ(ControlOf<QAbstractButton>(modal, CKeysDialog::kFirstButton + 5).text(),
                  QStringLiteral("-"));
        static_cast<CDialogBase&>(modal).End(kEndOk);
    });
    Send(kPlayKeys);
    PlayKeys kept;
    kept.Load(*store);
    EXPECT_EQ(kept.PlaceOf(Qt::Key_X), (PadPlace{0, kPadUp}));
    Activate();
    View().setFocus();
    QTest::keyPress(&View(), Qt::Key_X);
    EXPECT_TRUE(Become({kPadUp, 0}));
}

TEST_F(Playing, APictureIsSavedAtTheSizeThatIsSeen) {
    dialogs.files.push_back(FileChoice{folder / "shot.png", 0});
    Send(kPlaySize3);
    Send(kPlaySavePicture);
    EXPECT_EQ(QImage(PathToQt(folder / "shot.png")).size(), QSize(768, 720));
    ASSERT_EQ(dialogs.fileQuestions.size(), 1u);
    EXPECT_EQ(dialogs.fileQuestions[0].name, u"Game");
}

TEST_F(Playing, FailuresAreSaidAndPowerBeginsAgain) {
    emulator.runProblem = ConsoleProblem::Kind::kEnded;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.Problem().empty(); }));
    EXPECT_EQ(emulator.living, 0);
    Send(kPlayPower);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.Problem().empty() && emulator.living == 1; }));
    dialog.Send(kMessageClose);
    there = false;
    dialog.Play(folder / "game.nes", u"Game");
    EXPECT_THAT(ToUtf8(dialog.Problem()), testing::HasSubstr("\"fceux\""));
    EXPECT_TRUE(QTest::qWaitFor([&] { return emulator.living == 0; }));
}

}  // namespace
}  // namespace bw
