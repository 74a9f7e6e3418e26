// Names, versions and filters of collections, without their files.
#include <random>

#include <gmock/gmock.h>

#include "list/collection/name_changes.h"
#include "list/collection/name_tags.h"
#include "list/collection/same_games.h"
#include "list/collection/tidy_name.h"
#include "list/search/list_filter.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Rows = std::vector<uint32_t>;

constexpr TidyRules kKeepAll{false, false, false, false, false, false, false, false};

// One letter for each tag: region, language, revision, dump, other.
std::string Kinds(const TaggedName& name) {
    std::string kinds;
    for (const NameTag& tag : name.tags)
        kinds += "rlvdo"[static_cast<size_t>(tag.kind)];
    return kinds;
}

TEST(NameTags, TellKindsApart) {
    const struct {
        const char16_t* name;
        const char16_t* title;
        const char* kinds;
    } cases[] = {
        {u"Game (USA) (En,Fr,De) (Rev 1) [!]", u"Game", "rlvd"},
        {u"Game (JUE) (M3) (PRG1) (Unl) [b1][T+Chi_x][hM04]", u"Game", "rlvoddd"},
        {u"Game (Japan, USA) (Rev A) (Beta 2) (Proto) (V1.1) (VS) (Review)", u"Game", "rvvvvoo"},
        {u"Game (1990)(Konami)(US-EU)(en-fr)[cr X][BIOS]", u"Game", "oorldo"},
        {u"Game (SMB1 Hack) (Pt-BR) (Pirate) (1990-04-01)", u"Game", "dldo"},
        {u"[a] Two (U)words, (x (y) z) and more", u"Two words, and more", "dro"},
        {u"Game (U", u"Game", "r"},
        {u"(Open Game", u"(Open Game", ""},
        {u"Game (U] ) x", u"Game ) x", "r"},
        {u"(USA) [!]", u"(USA) [!]", ""},
        {u"魂斗罗（美版）【汉化】", u"魂斗罗", "oo"},
        {u"", u"", ""},
        {u"()", u"()", ""},
        {u"Game ()", u"Game", "o"},
    };
    for (const auto& c : cases) {
        const TaggedName split = SplitTags(c.name);
        EXPECT_EQ(ToUtf8(split.title), ToUtf8(c.title));
        EXPECT_EQ(Kinds(split), c.kinds) << ToUtf8(c.name);
    }
}

TEST(TidyName, TakesOffWhatIsNoTitle) {
    TidyRules keepsRegion;
    keepsRegion.dropRegion = false;
    const struct {
        const char16_t* name;
        const char16_t* tidy;
        TidyRules rules = {};
    } cases[] = {
        {u"Game, The (USA) (Rev 1) [!]", u"The Game"},
        {u"Game, The - Subtitle (U)", u"The Game - Subtitle"},
        {u"Game,the (U)", u"the Game"},
        {u"Aventure, L' (France)", u"L'Aventure"},
        {u"Live, Die, Repeat", u"Live, Die, Repeat"},
        {u"Them, Theatre", u"Them, Theatre"},
        {u"Some_Game__(U)_[b1]", u"Some Game"},
        {u"Some_Game", u"Some_Game", {.underscores = false}},
        {u"  Two   words (J) - End ", u"Two words - End"},
        {u"001. Game", u"1. Game"},
        {u"001.Game, The", u"1. The Game"},
        {u"0012 - Game", u"12. Game"},
        {u"12) Game", u"12. Game"},
        {u"1943 - The Battle", u"1943 - The Battle"},
        {u"2.5D Game", u"2.5D Game"},
        {u"1942 (JU)", u"1942"},
        {u"000. (U)", u"000."},
        {u"(USA)  [!]", u"(USA) [!]"},
        {u"___", u"___"},
        {u"Game (U", u"Game"},
        {u"McDonald's iPod (E)", u"McDonald's iPod"},
        {u"魂斗罗 2（美版）[!]", u"魂斗罗 2"},
        {u"ロックマン　２ (J)", u"ロックマン　２"},
        {u"Game, The (Europe) [b1] (Rev 2)", u"The Game (Europe)", keepsRegion},
        {u" Game_, The  (U) ", u" Game_, The  (U) ", kKeepAll},
        {u"Game (Unl)Two", u"Game Two"},
        {u"Game (U), Part 2", u"Game, Part 2"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ToUtf8(TidyName(c.name, c.rules)), ToUtf8(c.tidy)) << ToUtf8(c.name);
}

TEST(TidyName, AnyNameKeepsSomethingAndIsTidyOnce) {
    std::mt19937 random(15);
    const std::u16string_view pieces[] = {u"(",  u")",  u"[", u"]",   u" ",    u"_",  u", The",
                                          u"-",  u"01", u".", u"(U)", u"游戏", u"a",  u" - ",
                                          u"［", u"'",  u"7", u"[!]", u"The",  u"　", u","};
    for (int i = 0; i < 20000; ++i) {
        std::u16string name;
        for (size_t n = random() % 10 + 1; n > 0; --n)
            name += pieces[random() % std::size(pieces)];
        const bool all = random() % 2 == 0;
        TidyRules rules;
        if (!all)
            rules = {random() % 2 == 0, true,  false, true,
                     random() % 2 == 0, false, true,  random() % 2 == 0};
        const std::u16string tidy = TidyName(name, rules);
        ASSERT_FALSE(tidy.empty()) << ToUtf8(name);
        ASSERT_EQ(ToUtf8(TidyName(tidy, rules)), ToUtf8(tidy)) << ToUtf8(name);
        ASSERT_EQ(TidyName(name, kKeepAll), name);
        const size_t room = random() % 12;
        ASSERT_LE(ShortenByWords(name, room).size(), std::max<size_t>(room, 1));
    }
}

TEST(ShortenByWords, CutsAtWordsAndOnlyThere) {
    const struct {
        const char16_t* name;
        size_t room;
        const char16_t* shorter;
    } cases[] = {
        {u"Legend of the Sea", 17, u"Legend of the Sea"},
        {u"Legend of the Sea", 16, u"Legend of the"},
        {u"Legend - the Sea", 10, u"Legend"},
        {u"Sea & Sky: Two", 9, u"Sea & Sky"},
        {u"Sea & Skyes", 6, u"Sea"},
        {u"A Supercalifragilistic", 10, u"A Supercal"},
        {u"--- Game", 3, u"---"},
        {u"超级游戏大全", 4, u"超级游戏"},
        {u"\U0001F3AE\U0001F3AE", 3, u"\U0001F3AE"},
        {u"Game", 0, u"G"},
        {u"", 0, u""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ToUtf8(ShortenByWords(c.name, c.room)), ToUtf8(c.shorter)) << ToUtf8(c.name);
}

GameEntry Entry(std::u16string path, bool checked = false) {
    GameEntry entry;
    entry.path = path;
    entry.name = std::move(path);
    entry.checked = checked;
    entry.header.bytes[4] = 1;
    return entry;
}

GameList Entries(std::initializer_list<const char16_t*> paths) {
    GameList games;
    for (const char16_t* path : paths)
        games.push_back(Entry(path));
    return games;
}

ImageSums SumsOf(uint32_t headerless, uint32_t whole) {
    ImageSums sums;
    sums.headerless = headerless;
    sums.whole = whole;
    return sums;
}

TEST(NameChanges, FitTheRoomBehindTheNumberAndComeFromDatabases) {
    GameList games = Entries({u"Nine Tailed Fox (U)", u"Two (J)", u"Nine Tailed Fox"});
    for (size_t i = 0; i < 7; ++i)
        games.push_back(Entry(u"x", true));
    games[0].checked = games[1].checked = true;
    ConsoleMenu menu{.numbers = {true, true, true}, .nameColumn = 20};
    // Nine checked games: "1."; the third as a tenth game would have "03.".
    EXPECT_THAT(NameRooms(games, menu), testing::Contains(9).Times(1));
    const std::vector<size_t> rooms = NameRooms(games, menu);
    EXPECT_EQ(rooms[0], 10u);
    EXPECT_EQ(rooms[2], 9u);
    const auto changes = TidyChanges(games, Rows{2, 0, 5, 99}, {}, rooms);
    ASSERT_EQ(changes.size(), 2u);
    EXPECT_EQ(changes[0].row, 2u);
    EXPECT_EQ(changes[0].newName, u"Nine");
    EXPECT_EQ(changes[1].newName, u"Nine");

    RowSums sums(4);
    sums[0] = SumsOf(1, 2);
    sums[1] = SumsOf(3, 4);
    sums[2] = SumsOf(5, 6);
    EXPECT_EQ(WantedCrcs(sums).size(), 6u);
    DatNames names;
    names.byCrc = {{1, u"One (USA)"}, {2, u"By the whole"}, {4, u"Two (J)"}};
    const DatChanges found = NamesFromDat(games, Rows{0, 1, 2, 3}, sums, names, std::nullopt);
    ASSERT_EQ(found.changes.size(), 1u);
    EXPECT_EQ(found.changes[0].newName, u"One (USA)") << "the data without header comes first";
    EXPECT_EQ(found.same, 1u);
    EXPECT_EQ(found.unknown, 1u);
    EXPECT_EQ(found.unread, 1u);
    EXPECT_EQ(NamesFromDat(games, Rows{0}, sums, names, TidyRules()).changes[0].newName, u"One");
}

TEST(SameGames, GoByTitleAndByData) {
    GameList games =
        Entries({u"/a/Game, The (U).nes", u"/b/001. the game (J) [b1].nes", u"C:\\roms\\Game 2.nes",
                 u"other.nes", u"copy.nes", u"魂斗罗（美版）.nes", u"魂斗罗 (J).nes", u"game-2.nes",
                 u"[!].nes", u"moved.nes"});
    games[3].crcs = games[4].crcs = games[5].crcs = games[9].crcs = DataCrcs{7, 8};
    games[5].header.bytes[5] = 1;  // another size
    games[9].header.bytes[4] = 0;  // its file is gone
    EXPECT_THAT(SameData(games), ElementsAre(Rows{3, 4, 9}));
    EXPECT_THAT(SameGames(games), ElementsAre(Rows{0, 1}, Rows{2, 7}, Rows{3, 4, 9}, Rows{5, 6}));
    games[4].path = u"other game.nes";
    games[0].crcs = games[4].crcs;
    EXPECT_THAT(SameGames(games), ElementsAre(Rows{0, 1, 3, 4, 9}, Rows{2, 7}, Rows{5, 6}));
}

TEST(SameGames, KeepTheBest) {
    using enum BestRule;
    const BestRules usual;
    const struct {
        std::initializer_list<const char16_t*> versions;
        uint32_t best;
        BestRules rules = {};
    } cases[] = {
        {{u"G (J)", u"G (E)", u"G (U)"}, 2},
        {{u"G (U) [b1]", u"G (E) [!]"}, 1},
        {{u"G (U) [b1]", u"G (E) [!]"}, 0, {.order = {kRegion}}},
        {{u"G (Japan, USA)", u"G (World)", u"G"}, 0},
        {{u"G (Spain)", u"G"}, 0},
        {{u"G (E)", u"G (JU)"}, 1, {.regions = {u"J"}}},
        {{u"G (U)", u"G (U) (Rev 1)", u"G (U) (Rev B)", u"G (U) (Proto 9)"}, 2},
        {{u"G (V1.1)", u"G (V1.0)", u"G (PRG0)"}, 0},
        {{u"G (U) (Beta)", u"G (U) (PRG0)"}, 1},
        {{u"G (Rev 1)", u"G (U)"}, 0, {.order = {kRevision, kRegion}}},
        {{u"G (J)", u"G (汉化)"}, 1, {.order = {kRegion}, .regions = {u"汉化", u"Japan"}}},
        {{u"G (U)", u"G (U)"}, 0, {.order = {}}},
    };
    for (const auto& c : cases) {
        const GameList games = Entries(c.versions);
        Rows rows(games.size());
        for (uint32_t i = 0; i < rows.size(); ++i)
            rows[i] = i;
        EXPECT_EQ(BestOf(games, rows, c.rules), c.best) << ToUtf8(games[c.best].path);
    }
    GameList games = Entries({u"G (U)", u"H", u"G (J)", u"G (E)"});
    EXPECT_THAT(Surplus(games, SameGames(games), usual), ElementsAre(2, 3));
    games[0].missing = true;
    EXPECT_THAT(Surplus(games, SameGames(games), usual), ElementsAre(0, 2));
}

TEST(ListFilter, WordsAskAndTextIsFound) {
    GameList games = Entries({u"Game", u"ÉTOILE two.nes", u"game  2", u"size:9z"});
    games[0].path = u"C:\\ROMS\\a";
    games[0].header.bytes[4] = 8;     // 128 KB
    games[0].header.bytes[5] = 1;     // 8 KB
    games[0].header.bytes[6] = 0x42;  // mapper 4, battery
    games[0].coolboySupported = games[0].coolgirlSupported = true;
    games[1].missing = games[1].checked = true;
    games[1].header.bytes[4] = 0;
    games[2].remark = u"Étoile";
    games[2].coolgirlSupported = true;
    games[2].crcs = games[3].crcs = DataCrcs{1, 2};
    games[3].headerRead = true;
    games[3].size = 20;
    const struct {
        const char16_t* text;
        Rows rows;
    } cases[] = {
        {u"", {0, 1, 2, 3}},
        {u"éToI", {1, 2}},
        {u"roms", {0}},
        {u"game  2", {2}},
        {u"game 2", {}},
        {u" ", {1, 2}},
        {u"BOARD:CoolBoy", {0}},
        {u"board:coolgirl", {0, 2}},
        {u"board:nobody", {}},
        {u"mapper:4", {0}},
        {u"mapper:0", {2, 3}},
        {u"size:136k", {0}},
        {u"size:>=136KB", {0}},
        {u"size:<1m", {0, 2, 3}},
        {u"size:<=16384", {2, 3}},
        {u"size:9z", {3}},
        {u"battery:", {0}},
        {u"missing:yes", {1}},
        {u"damaged:", {3}},
        {u"missing:no checked:no game", {0, 2}},
        {u"game checked: two", {}},
        {u"étoile checked:  two", {1}},
        {u"same:", {2, 3}},
        {u"same:data", {2, 3}},
        {u"same:no mapper:4", {0}},
        {u"same:maybe", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FilteredRows(games, c.text), c.rows) << ToUtf8(c.text);
}

}  // namespace
}  // namespace bw
