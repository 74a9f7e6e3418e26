// Work beside the window: tasks, and the files that games come from and go to.
#include "shell/tasks/list_files.h"
#include "tasks_fixture.h"

namespace bw {
namespace {

using namespace test;

class Tasks : public TasksFixture {
  protected:
    ListFiles files_{host_};
};

constexpr const char* kOverLimit =
    "Warn: The maximum processing limit of the current list is 20000 entries, and the excess will "
    "be discarded";

TEST_F(Tasks, KeepListTasksApartAndLetOthersRunBeside) {
    BackgroundTasks& tasks = *host_.tasks;
    std::atomic<bool> seen = false;
    tasks.StartListTask(tasks.TryBegin(), [&](TaskControl&) { seen.wait(false); }, {});
    EXPECT_FALSE(tasks.TryBegin());
    std::vector<std::string> order;
    tasks.WhenFree([&] { order.emplace_back(tasks.TaskBusy() ? "busy" : "free"); });
    tasks.StartFreeTask([](TaskControl&) {}, [&] { order.emplace_back("beside"); });
    ASSERT_TRUE(Until([&] { return order.size() == 1; }));
    seen = true;
    seen.notify_one();
    Finish();
    ASSERT_TRUE(Until([&] { return order.size() == 2; }));
    EXPECT_THAT(order, ElementsAre("beside", "free"));
}

TEST_F(Tasks, TellTheNewestNewsNowAndThen) {
    const BackgroundTasks& tasks = *host_.tasks;
    std::atomic<bool> seen = false;
    constexpr size_t kNews = 100'000;
    host_.tasks->StartFreeTask(
        [&](TaskControl& control) {
            for (size_t i = 0; i <= kNews; ++i)
                control.Progress({u"rows", i, kNews});
            seen.wait(false);
        },
        {});
    ASSERT_TRUE(Until([&] { return tasks.Progress().done == kNews && host_.changes > 1; }));
    EXPECT_EQ(tasks.Progress().what, u"rows");
    EXPECT_LT(host_.changes, 100);
    seen = true;
    seen.notify_one();
    Finish();
    EXPECT_EQ(tasks.Progress().what, u"");
}

TEST_F(Tasks, AnExceptionEndsTheTaskAlone) {
    bool finished = false;
    host_.tasks->StartListTask(
        host_.tasks->TryBegin(), [](TaskControl&) { throw std::runtime_error("no memory"); },
        [&] { finished = !host_.tasks->TaskBusy(); });
    Finish();
    EXPECT_TRUE(finished);
    EXPECT_EQ(host_.failure, "no memory");
}

TEST_F(Tasks, TheEndOfTheWindowEndsQuestionsAndWork) {
    std::atomic<bool> asked = false;
    std::optional<int> answer = 1;
    host_.tasks->StartFreeTask(
        [&](TaskControl& control) {
            answer = control.Queue().Call([&] {
                asked = true;
                return 2;
            });
            EXPECT_FALSE(control.Queue().Call([] { return 3; })) << "it is closed";
            while (!control.Stop())
                std::this_thread::yield();
        },
        [] { FAIL() << "there is no window to finish in"; });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));  // the question waits
    host_.tasks.reset();
    RunEvents();
    EXPECT_FALSE(asked);
    EXPECT_FALSE(answer);
}

TEST_F(Tasks, OpenTakesImagesOnlyAndKnowsTheFolder) {
    WriteText(folder_ / "text.nes", "no image");
    host_.dialogs.images = {Image("one.nes"), Image("two.NES"), folder_ / "gone.nes",
                            folder_ / "text.nes"};
    host_.dialogs.meanwhile = [&] { EXPECT_TRUE(host_.tasks->TaskBusy()); };
    files_.Open();
    files_.Open();
    EXPECT_THAT(Messages(), ElementsAre(kBusy));
    Finish();
    EXPECT_THAT(Names(), ElementsAre("one", "two"));
    EXPECT_EQ(host_.editor.Games()[0].path, u"one.nes") << "as seen from the program's folder";
    EXPECT_EQ(host_.applied.back().reveal, 1u);
    EXPECT_EQ(CountChecked(host_.editor.Games()), 2u) << "the first build works";
    EXPECT_EQ(host_.told, "2 game(s) added. 2 file(s) left out, since they are no games.");
    EXPECT_EQ(host_.details, "gone.nes\ntext.nes");

    host_.dialogs.images.resize(1);
    files_.Open();
    Finish();
    EXPECT_EQ(CountChecked(host_.editor.Games()), 2u) << "later the user chooses";
    host_.dialogs.images.clear();
    files_.Open();
    EXPECT_EQ(host_.dialogs.starts.back(), folder_.Path());
    EXPECT_FALSE(host_.tasks->TaskBusy()) << "the user gave up";
}

TEST_F(Tasks, OpenMayGoBeyondTheLimitOnce) {
    AddMany(kListLimit - 1);
    host_.dialogs.images = {Image("one.nes"), Image("two.nes")};
    files_.Open();
    Finish();
    EXPECT_EQ(host_.editor.Games().size(), kListLimit + 1);
    EXPECT_THAT(Messages(), IsEmpty());
    files_.Open();
    files_.Load();
    EXPECT_THAT(Messages(), testing::Each(HasSubstr("have reached the upper limit (20001)")));
    EXPECT_FALSE(host_.tasks->TaskBusy());
}

TEST_F(Tasks, SavedListsComeBackBehindTheList) {
    const auto told = [&](void (ListFiles::*command)(), const char* name) {
        host_.dialogs.listToLoad = host_.dialogs.listToSave = folder_ / name;
        (files_.*command)();
        Finish();
        return host_.told;
    };
    AddNames({u"a=b", u"\u6E38\u620F"});
    host_.editor.SetChecked(1, false);
    EXPECT_EQ(files_.Name(), u"");
    EXPECT_THAT(told(&ListFiles::Save, "my.list"), HasSubstr("my.list.fcl."));
    EXPECT_EQ(files_.Name(), u"my.list");
    EXPECT_EQ(told(&ListFiles::Load, "my.list.fcl"), "2 game(s) added.");
    EXPECT_EQ(host_.dialogs.starts.back(), folder_.Path());
    EXPECT_THAT(Names(), ElementsAre("a=b", "\u6E38\u620F", "a=b", "\u6E38\u620F"));
    EXPECT_TRUE(host_.editor.Games()[2].checked && !host_.editor.Games()[3].checked);
    EXPECT_FALSE(host_.applied.back().reveal);

    WriteText(folder_ / "other.fcl", "[playlist]\r\ncount=7");
    EXPECT_THAT(told(&ListFiles::Load, "other.fcl"), HasSubstr("There is no list of games in"));
    EXPECT_THAT(told(&ListFiles::Save, "no folder/x.fcl"), HasSubstr("x.fcl: No such file"));
    EXPECT_EQ(Names().size(), 4u);
    WriteText(folder_ / "long.fcl", "[history]\r\ncount=4000000000\r\n00000_name=second");
    told(&ListFiles::Load, "long.fcl");
    EXPECT_THAT(Messages(), ElementsAre(kOverLimit));
    EXPECT_EQ(host_.editor.Games().size(), kListLimit);
    EXPECT_EQ(host_.editor.Games()[4].name, u"second");
}

TEST_F(Tasks, DroppedFilesKeepTheirOrderAndWaitForATask) {
    // Beside the list, not below the program's folder.
    std::filesystem::create_directories(folder_ / "trip");
    Image("trip/game.nes");
    WriteText(folder_ / "trip" / "trip.FCL",
              "[history]\r\n00000_name=Travel\r\n00000_path_relative=game.nes\r\ncount=1");
    BackgroundTasks::Turn turn = host_.tasks->TryBegin();
    files_.Add({Image("one.nes"), folder_ / "trip" / "trip.FCL", folder_ / "trip"});
    files_.Add({Image("two.nes")});
    RunEvents();
    EXPECT_THAT(Names(), IsEmpty());
    turn.reset();
    ASSERT_TRUE(Until([&] { return !Names().empty(); }));
    EXPECT_THAT(Names(), ElementsAre("one", "Travel", "two"));
    EXPECT_TRUE(host_.editor.Games()[1].HasValidHeader());
    EXPECT_EQ(host_.told, "3 game(s) added. 1 folder(s) left out: drop their files.");
    EXPECT_EQ(host_.details, "trip");
    EXPECT_EQ(files_.Name(), u"trip");
}

TEST_F(Tasks, DroppedFilesStopAtTheLimitOrWhenAskedTo) {
    AddMany(kListLimit - 1);
    const auto drop = [&] {
        // A file that is none takes no room, though it counts for the warning.
        files_.Add({folder_ / "none.nes", Image("one.nes"), Image("two.nes")});
        Finish();
        EXPECT_THAT(Messages(), ElementsAre(kOverLimit));
        return host_.editor.Games().size();
    };
    host_.dialogs.meanwhile = [&] { host_.tasks->StopAll(); };
    EXPECT_EQ(drop(), kListLimit - 1);
    EXPECT_EQ(host_.told, "Stopped; the list is as it was.");
    host_.dialogs.meanwhile = nullptr;
    EXPECT_EQ(drop(), kListLimit);
    EXPECT_EQ(host_.editor.Games().back().name, u"one");
}

TEST_F(Tasks, TheListComesBackWithItsWidthsOrAsMuchAsFits) {
    ColumnWidths widths{};
    widths[1] = 300;
    AddNames({u"one", u"two"});
    ASSERT_TRUE(files_.SaveRemembered(widths));

    FakeHost next(folder_.Path());
    std::swap(next.store, host_.store);
    ListFiles files(next);
    files.LoadRemembered();
    files.Add({Image("named.nes")});
    // An end before the list is there must not store that there is none.
    EXPECT_TRUE(files.SaveRemembered({}));
    ASSERT_TRUE(Until([&] { return next.editor.Games().size() == 3; }));
    EXPECT_EQ(next.editor.Games()[2].name, u"named");
    EXPECT_EQ(next.widths, widths);

    const std::string text = "[history]\r\ncount=25000\r\n00000_name=\xFF\r\n00001_name=whole";
    host_.store->RegWriteBinary(kHistoryKey, kHistoryValue,
                                {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
    files_.LoadRemembered();
    Finish();
    EXPECT_THAT(Messages(), ElementsAre(kOverLimit));
    EXPECT_EQ(host_.editor.Games().size(), kListLimit);
    EXPECT_EQ(host_.editor.Games()[1].name, u"whole");
    EXPECT_FALSE(host_.editor.CanUndo());
}

}  // namespace
}  // namespace bw
