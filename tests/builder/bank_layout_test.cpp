#include "builder/layout/bank_layout.h"

#include <map>
#include <random>

#include <gtest/gtest.h>

#include "test_items.h"

namespace bw {
namespace {

using test::Game;
using test::Menu;

const MulticartItem& MenuOf(const LayoutResult& layout) {
    for (const MulticartItem& item : layout.items) {
        if (item.isMenu != 0) {
            return item;
        }
    }
    throw std::logic_error("no menu");
}

std::vector<const MulticartItem*> GamesOf(const LayoutResult& layout) {
    std::vector<const MulticartItem*> games;
    for (const MulticartItem& item : layout.items) {
        if (item.isMenu == 0) {
            games.push_back(&item);
        }
    }
    return games;
}

struct Placement {
    uint32_t prg;
    uint32_t chr;
};

struct LayoutCase {
    const char* what;
    BoardType board;
    uint32_t menuUnits;
    std::vector<MulticartItem> games;
    uint32_t menuOffset;
    std::vector<Placement> places;
    uint32_t romSize;
};

TEST(BankLayout, PlacesGamesAroundTheMenu) {
    const auto coolboy = BoardType::kCoolboy;
    const auto coolgirl = BoardType::kCoolgirl;
    const std::vector<LayoutCase> cases{
        {"NROM goes to the hole", coolboy, 8, {Game(0, 2, 1, 0)}, 0x60000, {{0, 0x8000}}, 0x80000},
        {"512 KB doesn't fit the hole",
         coolboy,
         8,
         {Game(0, 32, 0)},
         0x60000,
         {{0x80000, 0}},
         0x100000},
        {"the aligned game is brought forward",
         coolboy,
         8,
         {Game(0, 64, 0), Game(1, 32, 0)},
         0x60000,
         {{0x100000, 0}, {0x80000, 0}},
         0x200000},
        {"CHR takes the gap before a lone 1 MB game",
         coolboy,
         8,
         {Game(0, 64, 32)},
         0x60000,
         {{0x100000, 0}},
         0x200000},
        {"CHR too large for the hole takes the gap",
         coolboy,
         32,
         {Game(0, 64, 32)},
         0,
         {{0x100000, 0x80000}},
         0x200000},
        {"CHR behind the PRG is aligned to itself",
         coolgirl,
         8,
         {Game(0, 8, 1), Game(1, 1, 16)},
         0,
         {{0x20000, 0x60000}, {0x40000, 0x60000}},
         0},
        {"no hole below a menu of 512 KB",
         coolboy,
         32,
         {Game(0, 2, 0, 0)},
         0,
         {{0x80000, 0}},
         0x88000},
        {"a menu of 1 MB starts at 0",
         coolboy,
         64,
         {Game(0, 2, 0, 0)},
         0,
         {{0x100000, 0}},
         0x108000},
        {"COOLGIRL's menu starts at 0",
         coolgirl,
         8,
         {Game(0, 2, 0, 0)},
         0,
         {{0x20000, 0}},
         0x28000},
        {"MINDKIDS is laid out as COOLBOY",
         BoardType::kMindkids,
         16,
         {Game(0, 2, 1, 0)},
         0x40000,
         {{0, 0x8000}},
         0x80000},
        {"96 units lie at a multiple of 1.5 MB",
         coolgirl,
         8,
         {Game(0, 96, 0, 228)},
         0,
         {{0x180000, 0}},
         0x300000},
    };
    for (const LayoutCase& test : cases) {
        SCOPED_TRACE(test.what);
        const LayoutResult layout = Allocate(Menu(test.menuUnits), test.games, test.board);
        EXPECT_EQ(MenuOf(layout).prgOffset, test.menuOffset);
        const auto games = GamesOf(layout);
        ASSERT_EQ(games.size(), test.games.size());
        for (size_t i = 0; test.romSize != 0 && i < games.size(); ++i) {
            EXPECT_EQ(games[i]->prgOffset, test.places[i].prg);
            EXPECT_EQ(games[i]->chrOffset, test.places[i].chr);
        }
        if (test.romSize != 0) {
            EXPECT_EQ(layout.romSize, test.romSize);
        }
        EXPECT_FALSE(FindLayoutConflict(layout));
    }
}

TEST(BankLayout, TheHoleIsFilledLargestFirst) {
    // 384 KB below the menu: 256 KB, then 64 KB, then 32 KB of PRG, then CHR in what is left.
    const LayoutResult layout =
        Allocate(Menu(8), {Game(0, 2, 4), Game(1, 16, 0), Game(2, 4, 0)}, BoardType::kCoolboy);
    const auto games = GamesOf(layout);
    EXPECT_EQ(games[1]->prgOffset, 0u);
    EXPECT_EQ(games[2]->prgOffset, 0x40000u);
    EXPECT_EQ(games[0]->prgOffset, 0x50000u);
    EXPECT_EQ(games[0]->chrOffset, 0x58000u);
    EXPECT_EQ(layout.romSize, 0x80000u);
}

TEST(BankLayout, EqualDataSharesOnePlace) {
    MulticartItem twin = Game(1, 32, 16);
    MulticartItem first = Game(0, 32, 16);
    twin.prgCrc = first.prgCrc;
    twin.chrCrc = first.chrCrc;
    const LayoutResult layout = Allocate(Menu(8), {first, twin}, BoardType::kCoolgirl);
    const LayoutResult alone = Allocate(Menu(8), {first}, BoardType::kCoolgirl);
    const auto games = GamesOf(layout);
    EXPECT_EQ(games[0]->prgOffset, games[1]->prgOffset);
    EXPECT_EQ(games[0]->chrOffset, games[1]->chrOffset);
    EXPECT_EQ(layout.romSize, alone.romSize);
    EXPECT_EQ(layout.prgTotal, first.prgSpan + MenuOf(layout).prgSpan);
    EXPECT_EQ(layout.chrTotal, first.chrSpan);
    EXPECT_FALSE(FindLayoutConflict(layout));
}

TEST(BankLayout, AGameWithTheMenusBytesDoesNotMoveTheMenu) {
    MulticartItem copy = Game(0, 8, 0);
    copy.prgCrc = 0x1234;
    MulticartItem menu = Menu(8);
    menu.prgCrc = 0x1234;
    const LayoutResult layout = Allocate(menu, {copy}, BoardType::kCoolboy);
    EXPECT_EQ(MenuOf(layout).prgOffset, 0x60000u);
}

TEST(BankLayout, TellsOfDataThatReachesIntoOtherData) {
    const auto conflict = [](uint32_t twinCrc, uint32_t twinOffset, uint32_t romSize) {
        LayoutResult layout;
        layout.items = {Game(0, 2, 0, 0), Game(1, 8, 0, 4), Game(2, 2, 0, 0)};
        layout.items[0].prgOffset = 0x20000;
        layout.items[1].prgOffset = twinOffset;
        layout.items[1].prgCrc = twinCrc;
        layout.items[2].prgOffset = 0x28000;
        layout.romSize = romSize;
        const auto found = FindLayoutConflict(layout);
        return found ? std::pair<int, int>(found->first->index, found->second->index)
                     : std::pair<int, int>(-1, -1);
    };
    const uint32_t shared = Game(0, 2, 0, 0).prgCrc;
    using Pair = std::pair<int, int>;
    EXPECT_EQ(conflict(0x999, 0x40000, 0x60000), Pair(-1, -1));
    EXPECT_EQ(conflict(shared, 0x20000, 0x60000), Pair(1, 2)) << "runs over its neighbour";
    EXPECT_EQ(conflict(0x999, 0x20000, 0x60000), Pair(1, 0)) << "other data at the same place";
    EXPECT_EQ(conflict(0x999, 0x48000, 0x80000), Pair(1, 1)) << "not aligned to its span";
    EXPECT_EQ(conflict(0x999, 0x40000, 0x50000), Pair(1, 1)) << "ends behind the ROM";
}

TEST(BankLayout, NoMenuGivesNothing) {
    const LayoutResult layout = Allocate(Menu(0), {Game(0, 2, 1)}, BoardType::kCoolboy);
    EXPECT_TRUE(layout.items.empty());
    EXPECT_EQ(layout.romSize, 0u);
}

TEST(BankLayout, RoundsChrAndEnlargesPrg) {
    const std::map<uint32_t, uint32_t> chrUnits{{0, 0},   {1, 1},   {3, 4},    {5, 8},
                                                {7, 8},   {9, 16},  {17, 32},  {32, 32},
                                                {33, 33}, {64, 64}, {128, 128}};
    for (const auto& [count, units] : chrUnits) {
        std::vector<MulticartItem> items{Game(0, 1, count)};
        RoundChrUnits(items);
        EXPECT_EQ(items[0].chrUnits, units) << count;
        EXPECT_EQ(items[0].chrSpan, units * 8192) << count;
        EXPECT_EQ(items[0].chrCount, count);
    }
    std::vector<MulticartItem> items{Game(0, 1, 0, 0), Game(1, 1, 0, 4), Game(2, 7, 0, 74),
                                     Game(3, 8, 0, 4), Game(4, 0, 0, 4)};
    ApplyPrgMinimum(items);
    const std::vector<uint32_t> expected{1, 8, 8, 8, 0};
    for (size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i].prgUnits, expected[i]) << i;
    }
}

// The promises that the console relies on, whatever the games are.
TEST(BankLayout, RandomListsKeepEveryPromise) {
    std::mt19937 random(20);
    const auto pick = [&](std::initializer_list<uint32_t> values) {
        return values.begin()[random() % values.size()];
    };
    for (int round = 0; round < 200; ++round) {
        const BoardType board = round % 2 == 0 ? BoardType::kCoolboy : BoardType::kCoolgirl;
        std::vector<MulticartItem> games;
        const size_t count = 1 + random() % 120;
        for (uint32_t i = 0; i < count; ++i) {
            games.push_back(Game(i, pick({1, 2, 4, 8, 16, 32}), pick({0, 1, 2, 4, 8, 16, 32})));
        }
        if (board == BoardType::kCoolboy) {
            ApplyPrgMinimum(games);
        }
        const LayoutResult layout = Allocate(Menu(pick({8, 16, 32})), games, board);
        EXPECT_FALSE(FindLayoutConflict(layout)) << "round " << round;
        EXPECT_EQ(layout.romSize % 16384, 0u);
        EXPECT_GE(layout.romSize, layout.total);
        for (const MulticartItem& item : layout.items) {
            EXPECT_TRUE(item.prgPlaced && item.chrPlaced);
        }
    }
}

}  // namespace
}  // namespace bw
