#include "builder/layout/kept_layout.h"

#include <map>
#include <random>

#include "build_fixture.h"
#include "test_items.h"

namespace bw {
namespace {

using namespace test;

TEST(KeptLayout, LeavesWhatStaysWhereItWas) {
    std::mt19937 random(4);
    const auto pick = [&](std::initializer_list<uint32_t> values) {
        return values.begin()[random() % values.size()];
    };
    for (int round = 0; round < 100; ++round) {
        const BoardType board = round % 2 == 0 ? BoardType::kCoolboy : BoardType::kCoolgirl;
        const MulticartItem menu = Menu(pick({8, 16, 32}));
        std::vector<MulticartItem> games;
        for (uint32_t i = 0; i < 80; ++i) {
            games.push_back(Game(i, pick({1, 2, 8, 16, 32, 64}), pick({0, 1, 4, 16, 32})));
            if (i % 9 != 8) continue;  // a twin now and then
            games[i] = games[i - 1];
            games[i].index = i;
        }
        std::vector<KeptPlace> places;
        std::map<uint32_t, uint32_t> prgBefore;  // by sum
        const LayoutResult before = Allocate(menu, games, board);
        for (const MulticartItem& item : before.items) {
            if (item.isMenu != 0) continue;
            places.push_back({item.prgOffset, item.prgBytes, item.prgCrc});
            places.push_back({item.chrOffset, item.chrBytes, item.chrCrc});
            prgBefore[item.prgCrc] = item.prgOffset;
        }
        uint32_t added = 1 << 20;  // what the alignment may cost
        for (int change = 0; change < 8; ++change) {
            const uint32_t at = pick({3, 8, 13, 22, 34, 44, 60, 79});
            games[at] = Game(at, pick({1, 2, 8, 16, 32, 64}), pick({0, 1, 4}));
            games[at].prgCrc += 0x5000;
            games[at].chrCrc += games[at].chrCrc != 0 ? 0x5000 : 0;
            added += games[at].prgSpan + games[at].chrSpan;
        }
        uint64_t kept = 0;
        const LayoutResult after = AllocateKeeping(menu, games, board, places, &kept);
        ASSERT_FALSE(FindLayoutConflict(after)) << round;
        EXPECT_LE(after.romSize, before.romSize + added);
        EXPECT_GT(kept, before.total / 2);
        for (const MulticartItem& item : after.items) {
            const auto was = prgBefore.find(item.prgCrc);
            const uint32_t stays = was == prgBefore.end() ? item.prgOffset : was->second;
            const uint32_t menuPlace = MenuOffset(menu.prgUnits, board);
            EXPECT_EQ(item.prgOffset, item.isMenu != 0 ? menuPlace : stays);
        }
    }
}

class KeepingPlaces : public BuildFixture {
  protected:
    std::vector<uint8_t> Cart() const { return *ReadFile(folder_ / "out" / "cart.bin"); }
    // Over the cart before, with the settings and games as they are now.
    BuildOutcome BuildAgain(BoardType board = BoardType::kCoolboy) {
        BuildContext context = Context();
        context.keepPlaces = folder_ / "out" / "cart.bin";
        return BuildRom(context, board, taskBusy_);
    }
};

TEST_F(KeepingPlaces, ChangesNothingWithoutNeed) {
    for (uint32_t i = 0; i < 6; ++i)
        Add("game" + std::to_string(i), {16, i % 2 == 0 ? 0 : 16, 4, 0x02}, i);
    ASSERT_TRUE(Build().done);
    EXPECT_THAT(user_.notes, ElementsAre(HasSubstr("1 game0, 2 game1, 3 game2, 4 game3, 5 game4 "
                                                   "and 1 more")));
    const std::vector<uint8_t> first = Cart();
    BuildOutcome again = BuildAgain();
    ASSERT_TRUE(again.done && again.changes);
    EXPECT_THAT(again.changes->changed, IsEmpty());
    EXPECT_EQ(Cart(), first);

    // The second game goes: its bytes stay, its neighbours too, and the menu alone changes.
    games_.erase(games_.begin() + 1);
    again = BuildAgain();
    ASSERT_TRUE(again.done && again.changes);
    EXPECT_THAT(again.changes->changed, ElementsAre(3)) << "384 KB, the menu's place";
    const std::vector<uint8_t> second = Cart();
    EXPECT_TRUE(std::equal(second.begin() + 0x80000, second.end(), first.begin() + 0x80000));

    EXPECT_FALSE(BuildAgain(BoardType::kCoolgirl).done);
    EXPECT_THAT(user_.messages.back(), HasSubstr("is a cart for COOLBOY"));
    EXPECT_EQ(Cart(), second);
}

}  // namespace
}  // namespace bw
