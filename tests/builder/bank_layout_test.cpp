#include "builder/layout/bank_layout.h"

#include <random>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "builder/layout/board_space.h"
#include "support/text.h"
#include "test_items.h"

namespace bw {
namespace {

using test::Game;
using test::Menu;
using test::Placed;
using testing::HasSubstr;

constexpr BoardType kBoy = BoardType::kCoolboy;
constexpr BoardType kKids = BoardType::kMindkids;
constexpr BoardType kGirl = BoardType::kCoolgirl;

// "menu | PRG CHR, PRG CHR | end of the ROM": where everything lies, in hexadecimal.
std::string Places(const LayoutResult& layout) {
    std::string menu;
    std::string games;
    for (const MulticartItem& item : layout.items) {
        if (item.isMenu != 0) {
            menu = fmt::format("{:X}", item.prgOffset);
            continue;
        }
        games += fmt::format("{}{:X}", games.empty() ? "" : ", ", item.prgOffset);
        if (item.chrSpan != 0) games += fmt::format(" {:X}", item.chrOffset);
    }
    EXPECT_FALSE(FindLayoutConflict(layout));
    return fmt::format("{} | {} | {:X}", menu, games, layout.romSize);
}

// PRG and CHR units.
using Shape = std::array<uint32_t, 2>;

std::string Laid(BoardType board, uint32_t menuUnits, const std::vector<Shape>& shapes) {
    std::vector<MulticartItem> games;
    for (const auto& [prg, chr] : shapes)
        games.push_back(Game(static_cast<uint32_t>(games.size()), prg, chr));
    return Places(Allocate(Menu(menuUnits), games, board));
}

TEST(BankLayout, PlacesGamesAroundTheMenu) {
    const std::array<std::string, 3> rows[] = {
        {"NROM goes to the hole", Laid(kBoy, 8, {{2, 1}}), "60000 | 0 8000 | 80000"},
        {"the hole takes the largest first; CHR behind PRG", Laid(kBoy, 8, {{2, 4}, {16}, {4}}),
         "60000 | 50000 58000, 0, 40000 | 80000"},
        {"512 KB doesn't fit the hole", Laid(kBoy, 8, {{32}}), "60000 | 80000 | 100000"},
        {"the aligned one first", Laid(kBoy, 8, {{64}, {32}}), "60000 | 100000, 80000 | 200000"},
        {"CHR takes the hole", Laid(kBoy, 8, {{64, 32}}), "60000 | 100000 0 | 200000"},
        {"or the gap before 1 MB", Laid(kBoy, 32, {{64, 32}}), "0 | 100000 80000 | 200000"},
        {"CHR is aligned to itself", Laid(kGirl, 8, {{8, 1}, {1, 16}}),
         "0 | 20000 44000, 40000 60000 | 80000"},
        {"no hole below a menu of 512 KB", Laid(kBoy, 32, {{2}}), "0 | 80000 | 88000"},
        {"a menu of 1 MB starts at 0", Laid(kBoy, 64, {{2}}), "0 | 100000 | 108000"},
        {"COOLGIRL's menu starts at 0", Laid(kGirl, 8, {{2}}), "0 | 20000 | 28000"},
        {"MINDKIDS as COOLBOY", Laid(kKids, 16, {{2, 1}}), "40000 | 0 8000 | 80000"},
        {"a multiple of 1.5 MB", Laid(kGirl, 8, {{96}}), "0 | 180000 | 300000"},
        {"no menu gives nothing", Laid(kBoy, 0, {{2, 1}}), " |  | 0"}};
    for (const auto& [what, places, expected] : rows)
        EXPECT_EQ(places, expected) << what;
}

TEST(BankLayout, EqualDataSharesOnePlace) {
    MulticartItem twin = Game(1, 32, 16);
    const MulticartItem first = Game(0, 32, 16);
    twin.prgCrc = first.prgCrc;
    twin.chrCrc = first.chrCrc;
    const LayoutResult layout = Allocate(Menu(8), {first, twin}, kGirl);
    EXPECT_EQ(Places(layout), "0 | 80000 20000, 80000 20000 | 100000");
    EXPECT_EQ(layout.prgTotal, first.prgSpan + 0x20000);
    EXPECT_EQ(layout.chrTotal, first.chrSpan);
    // But a game with the menu's bytes doesn't move the menu.
    MulticartItem menu = Menu(8);
    menu.prgCrc = Game(0, 8, 0).prgCrc;
    EXPECT_EQ(Places(Allocate(menu, {Game(0, 8, 0)}, kBoy)), "60000 | 0 | 80000");
}

TEST(BankLayout, TellsOfDataThatReachesIntoOtherData) {
    using Pair = std::pair<int, int>;
    const auto conflict = [](uint32_t twinCrc, uint32_t twinOffset, uint32_t romSize) {
        LayoutResult layout;
        layout.items = {Placed(Game(0, 2, 0, 0), 0x20000), Placed(Game(1, 8, 0, 4), twinOffset),
                        Placed(Game(2, 2, 0, 0), 0x28000)};
        layout.items[1].prgCrc = twinCrc;
        layout.romSize = romSize;
        const auto found = FindLayoutConflict(layout);
        return found ? Pair(found->first->index, found->second->index) : Pair(-1, -1);
    };
    const uint32_t shared = Game(0, 2, 0, 0).prgCrc;
    EXPECT_EQ(conflict(0x999, 0x40000, 0x60000), Pair(-1, -1));
    EXPECT_EQ(conflict(shared, 0x20000, 0x60000), Pair(1, 2)) << "runs over its neighbour";
    EXPECT_EQ(conflict(0x999, 0x20000, 0x60000), Pair(1, 0)) << "other data at the same place";
    EXPECT_EQ(conflict(0x999, 0x48000, 0x80000), Pair(1, 1)) << "not aligned to its span";
    EXPECT_EQ(conflict(0x999, 0x40000, 0x50000), Pair(1, 1)) << "ends behind the ROM";
}

TEST(BankLayout, RoundsChrAndEnlargesPrg) {
    const std::array<uint32_t, 5> rows[] = {
        // PRG, CHR and mapper of the file, PRG and CHR units
        {1, 0, 0, 1, 0},   {1, 1, 4, 8, 1},   {7, 3, 74, 8, 4},
        {8, 5, 4, 8, 8},   {0, 9, 4, 0, 16},  {2, 17, 0, 2, 32},
        {2, 32, 0, 2, 32}, {2, 33, 0, 2, 33}, {2, 128, 0, 2, 128}};
    for (const auto& [prg, chr, mapper, prgUnits, chrUnits] : rows) {
        std::array items{Game(0, prg, chr, mapper)};
        RoundChrUnits(items);
        ApplyPrgMinimum(items);
        EXPECT_EQ(items[0].prgUnits, prgUnits) << prg;
        EXPECT_EQ(items[0].chrSpan, chrUnits * 8192) << chr;
        EXPECT_EQ(items[0].chrCount, chr);
    }
}

// The promises that the console relies on, whatever the games are.
TEST(BankLayout, RandomListsKeepEveryPromise) {
    std::mt19937 random(20);
    const auto pick = [&](std::initializer_list<uint32_t> values) {
        return values.begin()[random() % values.size()];
    };
    for (int round = 0; round < 200; ++round) {
        const BoardType board = round % 2 == 0 ? kBoy : kGirl;
        std::vector<MulticartItem> games;
        const size_t count = 1 + random() % 120;
        for (uint32_t i = 0; i < count; ++i)
            games.push_back(Game(i, pick({1, 2, 4, 8, 16, 32}), pick({0, 1, 2, 4, 8, 16, 32})));
        if (board == kBoy) ApplyPrgMinimum(games);
        const LayoutResult layout = Allocate(Menu(pick({8, 16, 32})), games, board);
        EXPECT_FALSE(FindLayoutConflict(layout)) << "round " << round;
        EXPECT_EQ(layout.romSize % 16384, 0u);
        EXPECT_GE(layout.romSize, layout.total);
        for (const MulticartItem& item : layout.items)
            EXPECT_TRUE(item.prgPlaced && item.chrPlaced);
    }
}

GameEntry Entry(uint8_t prg, uint8_t chr, uint8_t mapper) {
    GameEntry entry;
    entry.header.bytes[4] = prg;
    entry.header.bytes[5] = chr;
    entry.header.bytes[6] = static_cast<uint8_t>(mapper << 4);
    entry.header.bytes[7] = mapper & 0xF0;
    entry.headerRead = true;
    entry.checked = true;
    return entry;
}

std::string Why(const GameEntry& entry) {
    return ToUtf8(WhyUnfit(entry, Language::kEnglish));
}

TEST(BoardSpace, LaysOutTheCheckedGames) {
    GameEntry unchecked = Entry(128, 64, 4);
    unchecked.checked = false;
    const GameEntry small = Entry(2, 0, 4);
    using Estimate = std::pair<uint64_t, size_t>;  // KB used, games that don't fit
    const auto estimate = [](BoardType board, const GameList& games, bool externMenu = false) {
        BuildSettings settings;
        settings.MenuSize = board == kGirl ? 16 : 8;
        settings.ExternMenuEnable = externMenu;
        const BoardSpace space = EstimateSpace(games, settings, board);
        EXPECT_EQ(space.games, CountChecked(games));
        EXPECT_EQ(space.limitBytes, (board == kGirl ? 128u : 32u) << 20);
        EXPECT_EQ(space.gameLimit, 1024u);
        return Estimate(space.usedBytes / 1024, space.unfit);
    };
    EXPECT_EQ(estimate(kBoy, {unchecked}), Estimate(512, 0)) << "the menu ends there";
    EXPECT_EQ(estimate(kBoy, {Entry(2, 1, 0)}), Estimate(512, 0)) << "games fit below it";
    EXPECT_EQ(estimate(kBoy, {Entry(32, 0, 4), Entry(32, 0, 4)}), Estimate(1536, 0)) << "alike";
    EXPECT_EQ(estimate(kBoy, {small, small, small, small}), Estimate(640, 0)) << "128 KB each";
    EXPECT_EQ(estimate(kKids, {Entry(32, 0, 1), Entry(3, 0, 4), small}), Estimate(512, 2));
    EXPECT_EQ(estimate(kGirl, {Entry(8, 3, 1)}), Estimate(288, 0)) << "128 KB of menu";
    EXPECT_EQ(estimate(kGirl, {Entry(8, 0, 1)}, true), Estimate(384, 0)) << "its own 256 KB";
    // What no build takes is added up.
    EXPECT_EQ(estimate(kBoy, GameList(kCheckedLimit + 1, small)), Estimate(3074 * 128, 0));
}

TEST(BoardSpace, TellsTheSpanOfAGame) {
    EXPECT_EQ(GameSpan(Entry(2, 3, 4), kBoy), 160u * 1024);
    EXPECT_EQ(GameSpan(Entry(2, 3, 4), kGirl), 64u * 1024);
    EXPECT_EQ(GameSpan(Entry(2, 3, 1), kBoy), std::nullopt);
    EXPECT_EQ(GameSpan(GameEntry(), kGirl), std::nullopt) << "no file";
}

TEST(BoardSpace, SaysWhyAGameIsUnfit) {
    EXPECT_EQ(Why(Entry(2, 1, 0)), "");
    EXPECT_THAT(Why(GameEntry()), HasSubstr("can't be read"));
    EXPECT_EQ(Why(Entry(8, 0, 1)), "COOLBOY, MINDKIDS: mapper 1 isn't supported (0, 4 and 74 are)");
    EXPECT_THAT(Why(Entry(8, 0, 6)), HasSubstr("\nCOOLGIRL: mapper 6 isn't supported"));
    EXPECT_THAT(Why(Entry(8, 0, 5)),
                HasSubstr("COOLGIRL: CHR of 0 KB isn't possible with mapper 5 (8, 16"));
    EXPECT_THAT(Why(Entry(3, 1, 0)),
                HasSubstr("PRG of 48 KB isn't possible with mapper 0 (16, 32 KB are)"));
    // The list shows this one as supported; a build refuses it.
    EXPECT_THAT(Why(Entry(8, 128, 4)), HasSubstr("CHR of 1024 KB"));
    GameEntry trainer = Entry(2, 1, 0);
    trainer.header.bytes[6] |= 0x04;
    EXPECT_THAT(Why(trainer), HasSubstr("trainer"));
    // The other way round: enlarged sizes that a build doesn't look at.
    GameEntry enlarged = Entry(2, 1, 0);
    enlarged.header.bytes[7] = 0x08;
    enlarged.header.bytes[9] = 0x01;
    EXPECT_THAT(Why(enlarged), HasSubstr("COOLGIRL: PRG of 4128 KB"));
    EXPECT_THAT(ToUtf8(WhyUnfit(Entry(3, 1, 0), Language::kChinese)),
                HasSubstr("COOLGIRL：Mapper 0 的 PRG"));
}

}  // namespace
}  // namespace bw
