// The list of a window that is killed, at the next start; recent files; what fits.
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>

#include "list/kept_list.h"
#include "settings/recent_files.h"
#include "shell/dialogs/fit_dialog.h"
#include "shell/main_window.h"
#include "shell/tasks/list_files.h"
#include "tasks_fixture.h"

namespace bw {
namespace {

using namespace test;
using testing::AllOf;
using testing::SizeIs;

class Keeping : public TasksFixture {
  protected:
    // What killed programs have left: lists of one game of this name.
    void LeaveList(const std::u16string& name, uint32_t origin) {
        auto kept = KeptList::Begin(lists_);
        GameList games(1);
        games[0].name = name;
        ASSERT_TRUE(kept && kept->Keep(games, folder_.Path(), origin));
    }
    std::vector<std::string> FilesLike(const std::string& extension) const {
        std::vector<std::string> files;
        for (const auto& file : std::filesystem::directory_iterator(lists_)) {
            if (file.path().extension() == extension) files.push_back(file.path().string());
        }
        return files;
    }

    std::filesystem::path lists_ = folder_ / "lists";
};

TEST_F(Keeping, TheNewestListComesBackAndNothingOfTheOthersIsLost) {
    {
        ListFiles before(host_);
        AddNames({u"settled"});
        EXPECT_TRUE(before.SaveRemembered({}));
    }
    LeaveList(u"older", 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    LeaveList(u"newest", 1);
    WriteText(lists_ / "list_9.kept", "damaged");
    ListFiles files(host_, lists_);
    files.LoadRemembered();
    Finish();
    EXPECT_THAT(Names(), ElementsAre("newest"));
    EXPECT_THAT(host_.told, AllOf(HasSubstr("is back: 1 game(s)"), HasSubstr("0 checked")));
    EXPECT_THAT(host_.details, AllOf(HasSubstr("Recent lists"), HasSubstr("list_9.kept")));
    const auto recent = RecentFiles(*host_.store, RecentKind::kLists);
    ASSERT_THAT(recent, SizeIs(2));
    for (const auto& file : recent) {
        files.Load(file);
        Finish();
    }
    EXPECT_THAT(Names(), ElementsAre("newest", "older", "settled"));
    // The found files go as soon as the list is kept anew.
    ASSERT_TRUE(Until([&] { return FilesLike(".kept").size() == 2; }));
    EXPECT_TRUE(files.SaveRemembered({}));
    files.ForgetKept();
    EXPECT_THAT(FilesLike(".kept"), SizeIs(1)) << "the damaged one";
    EXPECT_THAT(FilesLike(".fcl"), SizeIs(2));
}

TEST_F(Keeping, AChangeIsOnTheDiskInSecondsAndTheWindowDoesNotNotice) {
    ListFiles files(host_, lists_);
    files.LoadRemembered();
    Finish();
    GameList many(kListLimit);
    for (size_t i = 0; i < many.size(); ++i) {
        many[i].path = u"/some/where/in/a/collection/game number " + ToWide(std::to_string(i));
        many[i].name = u"a name that is rather long " + ToWide(std::to_string(i));
    }
    host_.editor.Append(std::move(many), {});
    files.ListChanged();
    QElapsedTimer clock;
    clock.start();
    qint64 longest = 0, last = 0;
    ASSERT_TRUE(Until([&] {
        longest = std::max(longest, clock.elapsed() - last);
        last = clock.elapsed();
        return std::filesystem::exists(lists_ / "list_1.kept");
    }));
    EXPECT_LT(clock.elapsed(), 60'000);
    RecordProperty("longest_pause_ms", static_cast<int>(longest));
    host_.editor.RemoveRows(std::vector<uint32_t>{0});
    files.ListChanged();
    ASSERT_TRUE(Until(
        [&] { return ReadText(lists_ / "list_1.kept").find("count=19999") != std::string::npos; }));
    files.ForgetKept();
    EXPECT_THAT(FilesLike(".kept"), IsEmpty());
}

class Recent : public MainWindow {};

TEST_F(Recent, FilesShowNewestFirstOpenAndLeaveWhenTheyAreGone) {
    Start(Images(2));
    for (const char* name : {"one.fcl", "two & three.fcl", "one.fcl"}) {
        dialogs.listToSave = folder / name;
        Send(kCommandSave);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !Busy(); }));
    }
    auto* menu = window->findChild<QMenuBar*>()->actions().front()->menu();
    emit menu->aboutToShow();
    EXPECT_TRUE(Entry(kCommandRecentLists).text().endsWith(QStringLiteral("one.fcl")));
    EXPECT_TRUE(Entry(kCommandRecentLists + 1).text().endsWith(QStringLiteral("two && three.fcl")));
    EXPECT_FALSE(Entry(kCommandRecentLists + 2).isVisible());
    Send(kCommandRecentLists + 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return List() == "ABAB"; }));
    std::filesystem::remove(folder / "one.fcl");
    Send(kCommandRecentLists + 1);
    EXPECT_TRUE(ChildOf<QLabel>(*window, "status_told").text().contains(QStringLiteral("one.fcl")));
    EXPECT_THAT(RecentFiles(*store, RecentKind::kLists), SizeIs(1));
    Send(kCommandRecentLists + kRecentFiles);
    EXPECT_THAT(RecentFiles(*store, RecentKind::kLists), IsEmpty());
}

// 70 games of 512 KB on a board of 32 MB.
class Fitting : public MainWindow {
  protected:
    Fitting() {
        std::vector<std::filesystem::path> files;
        for (int i = 0; i < 70; ++i) {
            files.push_back(folder / ("g" + std::to_string(100 + i) + ".nes"));
            WriteText(files.back(), Header({32, 0, 0x40, 0}));
        }
        Start(files);
    }
    size_t Checked() const {
        const std::string list = List();
        return static_cast<size_t>(std::ranges::count(list, '*'));
    }
    void InDialog(const std::function<void(CFitDialog&)>& act) {
        WhenModal([act](QWidget& modal) {
            act(dynamic_cast<CFitDialog&>(modal));
            if (modal.isVisible()) QTest::keyClick(&modal, Qt::Key_Escape);
        });
        Send(kCommandFit);
    }
};

TEST_F(Fitting, LeavesOutWhatIsTickedAndFillsUpInOneStepEach) {
    Send(kCommandSelectAll);
    InDialog([](CFitDialog& dialog) {
        const QLabel& totals = ControlOf<QLabel>(dialog, 1303);
        EXPECT_TRUE(totals.text().contains(QStringLiteral("left"))) << totals.text().toStdString();
        ControlOf<QRadioButton>(dialog, 1305).click();
        EXPECT_TRUE(totals.text().contains(QStringLiteral("Over by")));
        ControlOf<QRadioButton>(dialog, 1307).click();
        auto* model = ChildOf<QTableView>(dialog, "fit_table").model();
        EXPECT_EQ(model->data(model->index(69, 0), Qt::CheckStateRole).toInt(), Qt::Checked);
        EXPECT_EQ(model->data(model->index(0, 0), Qt::CheckStateRole).toInt(), Qt::Unchecked);
        // One more of the user's own.
        model->setData(model->index(0, 0), Qt::Checked, Qt::CheckStateRole);
        ControlOf<QPushButton>(dialog, 1309).click();
    });
    const size_t left = Checked();
    EXPECT_TRUE(left > 50 && left < 64) << left;
    Send(kCommandUndo);
    EXPECT_EQ(Checked(), 70U);
    Send(kCommandRedo);
    InDialog([](CFitDialog& dialog) { ControlOf<QPushButton>(dialog, 1308).click(); });
    EXPECT_GT(Checked(), left);
    Send(kCommandUndo);
    EXPECT_EQ(Checked(), left);
}

}  // namespace
}  // namespace bw
