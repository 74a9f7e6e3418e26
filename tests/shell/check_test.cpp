// "Check" in the window: what is checked, the sheet, the marks, stops and ends. The emulator and
// what it shows are the test's own.
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <atomic>
#include <map>
#include <set>
#include <thread>

#include "common/environment_variable.h"
#include "shell/dialogs/check_dialog.h"
#include "shell/main_window.h"
#include "support/paths.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct NoConsoles : Emulator {
    std::string Name() const override { return "none"; }
    ConsoleResult<std::unique_ptr<Console>> Start(const ConsoleStart&) const override {
        return ConsoleProblem{ConsoleProblem::Kind::kNotStarted};
    }
};

class Check : public MainWindow {
  protected:
    Check() {
        check.findEmulator = [this]() -> std::unique_ptr<Emulator> {
            if (!emulator) return nullptr;
            return std::make_unique<NoConsoles>();
        };
        check.checkCart = [this](const Emulator&, const CheckSubject& subject, const CheckOptions&,
                                 CheckListener& listener,
                                 std::stop_token stop) { return Run(subject, listener, stop); };
    }

    CheckOutcome Run(const CheckSubject& subject, CheckListener& listener,
                     const std::stop_token& stop) {
        cart = subject.cart;
        cartThere = std::filesystem::exists(cart);
        ++checks;
        const auto total = static_cast<uint32_t>(subject.images.size());
        for (uint32_t i = 0; i < total; ++i) {
            while (i == holdAt && !stop.stop_requested())
                std::this_thread::yield();
            if (stop.stop_requested()) return {.stopped = true};
            CheckedGame game{.index = i, .name = subject.names[i]};
            game.picture.pixels.assign(256 * 240, 0xFF000000 + i);
            const auto found = findings.find(ToUtf8(game.name));
            if (found != findings.end()) game.findings = {found->second};
            listener.Checked(game, i + 1, total);
        }
        return {};
    }

    // All games checked.
    void StartWith(size_t games) {
        Start(Images(games));
        Send(kCommandSelectAll);
    }
    void CheckToEnd() {
        const int before = checks;
        Send(kCommandCheckCart);
        EXPECT_TRUE(QTest::qWaitFor([&] { return checks > before && !Busy(); }, 60'000));
    }
    QString Told() { return ChildOf<QLabel>(*window, "status_told").text(); }
    bool AnyScratch() const {
        std::error_code error;
        return !std::filesystem::is_empty(WorkFolder().parent_path(), error) && !error;
    }
    // The names of the games that bear a mark, in the list's order.
    std::string Marked() const {
        std::string marked;
        const QAbstractItemModel& model = *Table().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            const QString spoken = model.index(row, 0).data(Qt::AccessibleTextRole).toString();
            if (!spoken.contains(QStringLiteral("rror: bad"))) continue;
            marked += model.index(row, 1).data().toString().toStdString();
        }
        return marked;
    }
    QListView& Sheet() { return ChildOf<QListView>(*window, "check_sheet"); }

    const CheckFinding bad{FindingKind::kJam, FindingSeverity::kError, u"bad"};
    EnvironmentVariable home{"BANKWEAVER_HOME", (folder / "home").c_str()};
    bool emulator = true;
    std::map<std::string, CheckFinding> findings;
    uint32_t holdAt = 100;
    // Of the last check.
    std::filesystem::path cart;
    bool cartThere = false;
    std::atomic<int> checks = 0;
};

TEST_F(Check, MarksGoWithTheirGamesAndEndWithTheBoardOrTheFile) {
    findings = {{"B", bad}};
    StartWith(3);
    CheckToEnd();
    EXPECT_TRUE(cartThere && !AnyScratch());  // none was built before
    EXPECT_THAT(dialogs.asked, ElementsAre());
    std::u16string folderOfBuilds;
    EXPECT_FALSE(store->RegReadString(kMainKey, "LastBuildDir", folderOfBuilds));
    ASSERT_EQ(List() + " " + Marked(), "A*B*C* B");
    Table().model()->setData(Table().model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    Send(kCommandMoveBottom);
    EXPECT_EQ(Marked(), "B");
    Send(kCommandRemove);
    EXPECT_EQ(List() + " " + Marked(), "A ");
    Send(kCommandUndo);
    EXPECT_EQ(Marked(), "B");
    Send(kCommandMindkids);
    EXPECT_EQ(Marked(), "");
    CheckToEnd();
    ASSERT_EQ(Marked(), "B");
    test::WriteText(folder / "B.nes", test::ImageBytes({}, 77));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Marked().empty(); }));
}

TEST_F(Check, ABuiltCartIsCheckedWhileItIsWhatTheListWouldGive) {
    StartWith(2);
    dialogs.output = OutputChoice{folder / "cart.nes", RomFormat::kNes20};
    Send(kCommandCheckAfterBuild);
    Send(kCommandBuildCoolgirl);
    ASSERT_TRUE(QTest::qWaitFor([&] { return checks == 1 && !Busy(); }, 60'000));
    EXPECT_EQ(cart, folder / "cart.nes");
    CheckToEnd();
    EXPECT_EQ(cart, folder / "cart.nes");
    // Another list, another file: a cart for the check alone, for the board of the last build.
    Table().model()->setData(Table().model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    CheckToEnd();
    EXPECT_NE(cart, folder / "cart.nes");
    EXPECT_THAT(window->findChild<CCheckDialog*>()->windowTitle().toStdString(),
                HasSubstr("COOLGIRL"));
    Send(kCommandSelectAll);
    test::WriteText(folder / "cart.nes", "something else");
    CheckToEnd();
    EXPECT_NE(cart, folder / "cart.nes");
}

TEST_F(Check, WithoutAnEmulatorTheUserReadsWhatToInstall) {
    emulator = false;
    StartWith(1);
    Send(kCommandCheckCart);
    ASSERT_EQ(dialogs.told.size(), 1u);
    EXPECT_THAT(dialogs.told.back(), HasSubstr("\"fceux\""));
    dialogs.output = OutputChoice{folder / "cart.nes", RomFormat::kNes20};
    Send(kCommandCheckAfterBuild);
    Send(kCommandBuildCoolboy);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Told().contains(QStringLiteral("fceux")); }, 60'000));
    EXPECT_TRUE(std::filesystem::exists(folder / "cart.nes"));
}

TEST_F(Check, AStopKeepsWhatWasSeen) {
    holdAt = 2;
    findings = {{"A", bad}};
    StartWith(4);
    Send(kCommandCheckCart);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Marked() == "A"; }, 60'000));
    QTest::qWait(300);
    ControlOf<QPushButton>(*window->findChild<CCheckDialog*>(), kCommandStopTask).click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy(); }));
    EXPECT_EQ(Told(), QStringLiteral("Check stopped: 2 of 4 games, errors: 1, notes: 0"));
    EXPECT_FALSE(AnyScratch());
    EXPECT_EQ(Marked(), "A");
}

TEST_F(Check, TheProgramEndsWhileACheckRuns) {
    holdAt = 1;
    for (const bool asked : {true, false}) {
        StartWith(2);
        Send(kCommandCheckCart);
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return window->findChild<CCheckDialog*>() != nullptr; }, 60'000));
        if (asked) {
            dialogs.answers = {kEndYes};
            Close(kCloseByExit);
            EXPECT_TRUE(QTest::qWaitFor([&] { return Exited(); }));
        } else {
            window->StoreAll();
            window.reset();
        }
        EXPECT_FALSE(AnyScratch());
    }
}

TEST_F(Check, AClickShowsTheGamesRowAndWhatWasFoundOfIt) {
    findings = {{"C", bad}};
    StartWith(3);
    CheckToEnd();
    auto& only = ControlOf<QAbstractButton>(*window->findChild<CCheckDialog*>(), 1202);
    EXPECT_EQ(Sheet().model()->rowCount(), 3);
    only.click();
    ASSERT_EQ(Sheet().model()->rowCount(), 1);
    QTest::mouseClick(Sheet().viewport(), Qt::LeftButton, {},
                      Sheet().visualRect(Sheet().model()->index(0, 0)).center());
    EXPECT_EQ(Table().currentIndex().row(), 2);
    const auto& text = ControlOf<QPlainTextEdit>(*window->findChild<CCheckDialog*>(), 1204);
    EXPECT_EQ(text.toPlainText(), QStringLiteral("C\n\nError: bad"));
    only.click();
    QTest::keyClick(&Sheet(), Qt::Key_Home);
    EXPECT_EQ(Table().currentIndex().row(), 2);
    QTest::keyClick(&Sheet(), Qt::Key_Return);
    EXPECT_EQ(Table().currentIndex().row(), 0);
}

}  // namespace
}  // namespace bw
