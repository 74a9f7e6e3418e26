// The list that is kept while a program runs, when the program ends by a kill.
#include "list/kept_list.h"

#include <fstream>
#include <thread>

#include <gmock/gmock.h>

#include "common/child_process.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"

namespace bw {
namespace {

using testing::SizeIs;

GameList GamesNamed(std::u16string_view name, size_t count) {
    GameList games(count);
    for (GameEntry& game : games) {
        game.name = name;
        game.path = u"/nowhere/game.nes";
        game.checked = true;
    }
    return games;
}

class Kept : public testing::Test {
  protected:
    KeptLists Find() const { return FindKeptLists(folder_.Path(), folder_.Path()); }
    // A program that keeps one list after the other until it is killed.
    void KeepAndBeKilled(std::chrono::milliseconds after) const {
        const TemporaryFolder log;
        const auto child = test::ChildProcess::Start(
            {.words = {BANKWEAVER_KEEPING_CHILD, folder_.Path().string()}, .logFile = log / "log"});
        ASSERT_TRUE(child);
        while (test::ReadText(log / "log").empty())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        std::this_thread::sleep_for(after);
    }

    TemporaryFolder folder_;
};

TEST_F(Kept, AKilledProgramLeavesAWholeListWheneverItEnds) {
    for (int round = 0; round < 12; ++round)
        KeepAndBeKilled(std::chrono::milliseconds(20 + round * 7));
    const KeptLists found = Find();
    EXPECT_THAT(found.damaged, SizeIs(0));
    ASSERT_THAT(found.lists, SizeIs(testing::Gt(6U)));
    for (size_t i = 0; i < found.lists.size(); ++i) {
        const BroughtBack& list = found.lists[i];
        EXPECT_TRUE(list.origin == 77 && list.games.back().name == u"killed");
        EXPECT_TRUE(i == 0 || list.time <= found.lists[i - 1].time);
    }
    EXPECT_THAT(Find().lists, SizeIs(0)) << "whoever has found them has them for itself";
}

TEST_F(Kept, RunningProgramsAndForgottenOnesLeaveNothingToBringBack) {
    auto first = KeptList::Begin(folder_.Path());
    auto second = KeptList::Begin(folder_.Path());
    ASSERT_TRUE(first && second);
    ASSERT_TRUE(first->Keep(GamesNamed(u"first", 2), folder_.Path(), 1));
    ASSERT_TRUE(second->Keep(GamesNamed(u"second", 3), folder_.Path(), 1));
    EXPECT_THAT(Find().lists, SizeIs(0));
    EXPECT_TRUE(first->Forget());
    EXPECT_TRUE(first->Forget()) << "nothing there is as good";
    second = FileProblem{};  // as if killed
    const KeptLists found = Find();
    ASSERT_THAT(found.lists, SizeIs(1));
    EXPECT_THAT(found.lists[0].games, SizeIs(3));
}

TEST_F(Kept, DamagedFilesAreNamedAndLeftAlone) {
    KeepAndBeKilled(std::chrono::milliseconds(100));
    const auto file = folder_ / "list_1.kept";
    std::fstream bytes(file, std::ios::binary | std::ios::in | std::ios::out);
    bytes.seekp(40).put('#');
    bytes.close();
    std::ofstream(folder_ / "list_7.kept").close();
    EXPECT_THAT(Find().damaged, testing::UnorderedElementsAre(file, folder_ / "list_7.kept"));
    EXPECT_THAT(Find().lists, SizeIs(0));
    EXPECT_TRUE(std::filesystem::exists(file));
}

}  // namespace
}  // namespace bw
