#include "builder/layout/board_space.h"

#include <gmock/gmock.h>

#include "support/text.h"

namespace bw {
namespace {

using testing::HasSubstr;

constexpr uint64_t kKilobyte = 1024;
constexpr uint64_t kMegabyte = 1024 * kKilobyte;

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
    struct Case {
        const char* what;
        GameList games;
        BoardType board;
        bool externMenu;
        uint64_t used;
        size_t unfit;
    };
    const auto coolboy = BoardType::kCoolboy;
    const auto coolgirl = BoardType::kCoolgirl;
    const std::vector<Case> cases{
        {"the menu ends at 512 KB", {unchecked}, coolboy, false, 512 * kKilobyte, 0},
        {"games fit below it", {Entry(2, 1, 0)}, coolboy, false, 512 * kKilobyte, 0},
        {"alike headers are two games",
         {Entry(32, 0, 4), Entry(32, 0, 4)},
         coolboy,
         false,
         1536 * kKilobyte,
         0},
        {"games of mapper 4 get 128 KB, three fit below the menu",
         {Entry(2, 0, 4), Entry(2, 0, 4), Entry(2, 0, 4), Entry(2, 0, 4)},
         coolboy,
         false,
         640 * kKilobyte,
         0},
        {"what doesn't run isn't counted",
         {Entry(32, 0, 1), Entry(3, 0, 4), Entry(32, 0, 4)},
         BoardType::kMindkids,
         false,
         1 * kMegabyte,
         2},
        {"128 KB of menu", {Entry(8, 3, 1)}, coolgirl, false, 288 * kKilobyte, 0},
        {"a menu of the user's own", {Entry(8, 0, 1)}, coolgirl, true, 384 * kKilobyte, 0},
    };
    for (const Case& c : cases) {
        BuildSettings settings;
        settings.MenuSize = c.board == coolgirl ? 16 : 8;
        settings.ExternMenuEnable = c.externMenu;
        const BoardSpace space = EstimateSpace(c.games, settings, c.board);
        EXPECT_EQ(space.usedBytes, c.used) << c.what;
        EXPECT_EQ(space.unfit, c.unfit) << c.what;
        EXPECT_EQ(space.games, CountChecked(c.games)) << c.what;
        EXPECT_EQ(space.limitBytes, (c.board == coolgirl ? 128 : 32) * kMegabyte);
        EXPECT_EQ(space.gameLimit, 1024u);
    }
}

TEST(BoardSpace, AddsUpWhatNoBuildTakes) {
    const GameList games(kCheckedLimit + 1, Entry(8, 0, 4));
    const BoardSpace space = EstimateSpace(games, {}, BoardType::kCoolboy);
    EXPECT_EQ(space.games, games.size());
    EXPECT_EQ(space.usedBytes, (games.size() + 1) * 128 * kKilobyte);
}

TEST(BoardSpace, TellsTheSpanOfAGame) {
    EXPECT_EQ(GameSpan(Entry(2, 3, 4), BoardType::kCoolboy), (128 + 32) * kKilobyte);
    EXPECT_EQ(GameSpan(Entry(2, 3, 4), BoardType::kCoolgirl), (32 + 32) * kKilobyte);
    EXPECT_EQ(GameSpan(Entry(2, 3, 1), BoardType::kCoolboy), std::nullopt);
    EXPECT_EQ(GameSpan(GameEntry(), BoardType::kCoolgirl), std::nullopt) << "no file";
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
