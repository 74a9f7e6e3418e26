// The texts that the menu's source includes, byte for byte.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "builder/tables/final_data.h"
#include "builder/tables/game_data.h"
#include "builder/tables/generated_text.h"
#include "builder/tables/menu_config.h"
#include "builder/tables/name_tables.h"
#include "builder/tables/reports.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "support/numbers.h"
#include "test_items.h"

namespace bw {
namespace {

using test::Game;
using test::ReadText;
using test::WriteText;
using testing::HasSubstr;
using testing::StartsWith;

// What is appended to an "x", which stays.
std::string With(auto&& append, auto... values) {
    std::string text = "x";
    append(text, values...);
    return text;
}

TEST(GeneratedText, Numbers) {
    EXPECT_EQ(With(AppendHex, 0, 2), "x00");
    EXPECT_EQ(With(AppendHex, 0xAB, 4), "x00AB");
    EXPECT_EQ(With(AppendHex, 0x12345, 4), "x12345");
    EXPECT_EQ(With(AppendHex, 0xFFFFFFFF, 8), "xFFFFFFFF");
    EXPECT_EQ(With(AppendDecimal, 0, 1), "x0");
    EXPECT_EQ(With(AppendDecimal, 7, 3), "x007");
    EXPECT_EQ(With(AppendDecimal, 4294967295u, 3), "x4294967295");
    EXPECT_EQ(With(AppendBinary, 0x805, 12), "x100000000101");
    EXPECT_EQ(With(AppendBinary, 0x1F7, 8), "x11110111");
}

TEST(GeneratedText, CountedStringPlacesTheSameBytesWhateverTheyAre) {
    const std::string full(255, 'A');
    const std::pair<std::string, std::string> rows[] = {
        {"SUPER GAME; $1%", "x .STR \"SUPER GAME; $1%\""},
        {"", "x .STR \"\""},
        {"\xC2\x80", "x .STR \"\xC2\x80\""},
        {"A\"B", "x .DB $03,$41,$22,$42"},
        {"\r\n\xFF", "x .DB $03,$0D,$0A,$FF"},
        {full + "AA", "x .STR \"" + full + "\""},
        {full + '"', "x .STR \"" + full + "\""},  // cut away, so no reason for the other form
    };
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(With(AppendCountedString, bytes), text);
    const std::string last = With(AppendCountedString, full.substr(1) + "\"A");
    EXPECT_TRUE(last.starts_with("x .DB $FF,$41,") && last.ends_with(",$41,$22")) << last;
}

TEST(GeneratedText, CommentCannotEndItsLine) {
    EXPECT_EQ(With(AppendComment, "a\r\n .DB 1\t\"\xE9\xAD\x82"), "xa?? .DB 1?\"\xE9\xAD\x82");
    std::string line = "label\r\n";
    AppendComment(line, "\n");
    EXPECT_EQ(line, "label\r\n?") << "what stood there before is kept";
}

std::vector<std::u16string> Names(size_t count, const std::u16string& name) {
    return std::vector<std::u16string>(count, name);
}

class MenuTexts : public testing::Test {
  protected:
    FileResult<> MakeNames(const std::vector<std::u16string>& names,
                           const NameTableOptions& options = {}) {
        return GenerateNameTables(names, folder_.Path(), options, banks_);
    }
    std::string Text(const char* file) const { return ReadText(folder_ / file); }
    bool Exists(const char* file) const { return std::filesystem::exists(folder_ / file); }

    TemporaryFolder folder_;
    uint32_t banks_ = 9;
};

TEST_F(MenuTexts, NamesInTheConsolesAlphabet) {
    ASSERT_TRUE(MakeNames({u"1.Pong"}));
    EXPECT_EQ(banks_, 1u);
    EXPECT_EQ(
        Text("game_list_0.asm"),
        "game_name_begin_000\r\n .WORD 0\r\ngame_name_list_000\r\n .WORD game_name_000\r\n\r\n"
        "game_name_000 .STR \"1.PONG\"\r\n\r\n");
    EXPECT_EQ(Text("game_list_bank.asm"), "game_list_bank_index\r\n .DB $00\r\n");
    EXPECT_EQ(Text("game_title.asm"), " .STR \"1 IN 1\"");
    ASSERT_TRUE(MakeNames({u"a \"b\"", u"", u"two\nlines", u"\u0080"}));
    for (const char* line : {"000 .DB $05,$41,$20,$22,$42,$22\r\n", "001 .DB $00\r\n",
                             "002 .DB $09,$54,$57,$4F,$0A,", "003 .STR \"\xC2\x80\"\r\n"})
        EXPECT_THAT(Text("game_list_0.asm"), HasSubstr(std::string("game_name_") + line));
}

TEST_F(MenuTexts, NamesInRowsOfTenAndNumbersThatRunOn) {
    ASSERT_TRUE(MakeNames(Names(2500, std::u16string(28, u'x')),
                          {.nameColumn = 4, .removalPattern = {}, .files = {}}));
    EXPECT_EQ(banks_, 10u);  // 264 names of 31 bytes in each
    const std::string second = Text("game_list_1.asm");
    EXPECT_THAT(second, StartsWith("game_name_begin_264\r\n .WORD 264\r\ngame_name_list_264\r\n"
                                   " .WORD game_name_264,game_name_265,"));
    EXPECT_THAT(second, HasSubstr(",game_name_273\r\n .WORD game_name_274,"));
    EXPECT_THAT(Text("game_list_9.asm"), HasSubstr("game_name_2499 .STR"));
    const std::string index = Text("game_list_bank.asm");
    EXPECT_THAT(index, StartsWith("game_list_bank_index\r\n .DB $00,$00,$00,$00,$00,$00,$00,$00,"
                                  "$00,$00\r\n .DB "));
    EXPECT_THAT(index, testing::EndsWith("$09\r\n"));
}

TEST_F(MenuTexts, NamesAreCutToTheScreenButNotTheOneThatOpensABank) {
    // 26 columns and 3 bytes: 282 names in 8178 bytes, and 12 bytes left.
    ASSERT_TRUE(MakeNames(Names(284, std::u16string(40, u'A'))));
    EXPECT_EQ(banks_, 2u);
    const auto line = [](const char* number, size_t length) {
        return HasSubstr(std::string("game_name_") + number + " .STR \"" +
                         std::string(length, 'A') + "\"\r\n");
    };
    EXPECT_THAT(Text("game_list_0.asm"), line("281", 26));
    EXPECT_THAT(Text("game_list_1.asm"), testing::AllOf(line("282", 40), line("283", 26)));
    // A bank holds exactly 8192 bytes.
    for (const size_t last : {9u, 10u}) {
        std::vector<std::u16string> names = Names(282, std::u16string(26, u'A'));  // 2 + 282 * 29
        names.emplace_back(last, u'B');
        MakeNames(names);
        EXPECT_EQ(banks_, last == 9 ? 1u : 2u);
    }
}

TEST_F(MenuTexts, NamesWithoutPatternsAndLeftovers) {
    for (const char* file : {"game_list_1.asm", "game_list_F.asm"})
        WriteText(folder_ / file, "old");
    NameTableOptions options{.nameColumn = 6, .removalPattern = R"( [(\[].*?[)\]])", .files = {}};
    ASSERT_TRUE(MakeNames({u"Game (E) [!]"}, options));
    EXPECT_THAT(Text("game_list_0.asm"), HasSubstr(".STR \"GAME\""));
    EXPECT_FALSE(Exists("game_list_1.asm") || Exists("game_list_F.asm"));
    options.removalPattern = "(";
    EXPECT_FALSE(MakeNames({u"x"}, options));
}

TEST_F(MenuTexts, NamesAreCountedWithoutWriting) {
    const NameTableOptions count{.nameColumn = 6, .removalPattern = {}, .files = {.write = false}};
    EXPECT_FALSE(MakeNames({}, count));
    EXPECT_EQ(banks_, 9u);
    EXPECT_TRUE(MakeNames(Names(2, u"x"), count));
    EXPECT_EQ(banks_, 1u);
    EXPECT_FALSE(Exists("game_list_0.asm"));
    EXPECT_TRUE(Exists("game_list_bank.asm"));
    banks_ = 0;
    EXPECT_FALSE(GenerateNameTables(Names(2, u"x"), folder_ / "missing", count, banks_));
    EXPECT_EQ(banks_, 1u);
}

TEST_F(MenuTexts, GameData) {
    MulticartItem item = test::Placed(Game(0, 16, 3, 74), 0x80000, 0xC0000);
    item.SetChrUnits(4);
    item.prgCrc = 0xDEADBEEF;
    item.chrCrc = 0x1234;
    item.mirroring = item.fourScreen = 1;
    item.name = u"Caf\u00E9\nLDA #0";  // a name must not end its comment
    ASSERT_TRUE(GenerateGameData(std::vector{test::Menu(8), item}, folder_.Path(), {}, banks_));
    EXPECT_EQ(banks_, 1u);
    EXPECT_EQ(
        Text("game_data_0.asm"),
        "game_data_begin_000\r\n .WORD 0\r\ngame_data_list_000\r\n .WORD game_data_000\r\n\r\n"
        "game_data_000;Caf\xC3\xA9?LDA #0\r\n"
        " .DW $0040 ;000001000000 00080000 CRC32: DEADBEEF Size: 00040000\r\n"
        " .DB $10 ;PRG Size\r\n"
        " .DW $0060 ;000001100000 000C0000 CRC32: 00001234 Size: 00008000\r\n"
        " .DB $04 ;CHR Size\r\n"
        " .DB %00000101 ;Mirroring D0(0: H 1: V) Battery: D1(0: N 1: Y) Four-Screen: D2(0: N 1: "
        "Y)\r\n"
        " .DB 074 ;Mapper\r\n\r\n");
    EXPECT_EQ(Text("game_data_bank.asm"), "game_data_bank_index\r\n .DB $00\r\n");
    EXPECT_EQ(Text("game_prg_chr_offset.txt"),
              "rom prg offset:\r\n0000 00080000 040000 Caf\xE9?LDA #0\r\n"
              "\r\nrom chr offset:\r\n0000 000C0000 008000 Caf\xE9?LDA #0\r\n");
}

TEST_F(MenuTexts, FinalData) {
    FinalDataRecord record;
    record.name = u"One";
    record.registers.chr = {1, 2, 3, 4};
    record.registers.prg = {0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18};
    record.chrOffset = 0x0ABC;
    record.chrCount = 16;
    record.flags = 3;
    const std::string flags =
        " .DB $03 ;Mirroring D0(0: H 1: V) Battery-backed: D1(0: N 1: Y) Four-screen: D2(0: N 1: "
        "Y)\r\n";
    const std::string head =
        "game_final_data_begin_000\r\n .WORD 0\r\ngame_final_data_list_000\r\n"
        " .WORD game_final_data_000\r\n\r\ngame_final_data_000;One\r\n";
    const auto registers = [](const char* data, int first, int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += fmt::format(" .DB ${:02X} ;Reg{} for {}\r\n", first + i, i, data);
        return text + (data[0] == 'P' ? "\r\n" : "");
    };
    const auto made = [&](BoardType board) {
        EXPECT_TRUE(GenerateFinalData(std::vector{record}, folder_.Path(), board, {}, banks_));
        return Text("game_final_data_0.asm");
    };
    const std::string count = " .DB $10 ;CHR 8KB count\r\n";
    EXPECT_EQ(made(BoardType::kMindkids), ";COOLBOY\r\n" + head + flags + count +
                                              registers("CHR", 1, 4) + registers("PRG", 0x11, 4));
    EXPECT_EQ(made(BoardType::kCoolgirl), ";COOLGIRL\r\n" + head +
                                              " .DW $0ABC ;CHR 8KB offset\r\n" + count + flags +
                                              registers("PRG", 0x11, 8));
}

TEST_F(MenuTexts, GamesInABank) {
    const TableWriteOptions count{.write = false};
    const auto data = [&](size_t games) {
        GenerateGameData(std::vector<MulticartItem>(games), folder_.Path(), count, banks_);
        return banks_;
    };
    EXPECT_EQ(data(0), 0u);
    EXPECT_EQ(data(819), 1u);
    EXPECT_EQ(data(820), 2u);
    const std::tuple<size_t, BoardType, uint32_t> rows[] = {{682, BoardType::kCoolboy, 1},
                                                            {683, BoardType::kMindkids, 2},
                                                            {585, BoardType::kCoolgirl, 1},
                                                            {586, BoardType::kCoolgirl, 2}};
    for (const auto& [games, board, banks] : rows) {
        const std::vector<FinalDataRecord> records(games);
        GenerateFinalData(records, folder_.Path(), board, count, banks_);
        EXPECT_EQ(banks_, banks) << games;
    }
    // Shorter runs delete the first eight files only.
    for (const char* file : {"game_data_7.asm", "game_data_8.asm"})
        WriteText(folder_ / file, "old");
    data(1);
    EXPECT_FALSE(Exists("game_data_7.asm"));
    EXPECT_TRUE(Exists("game_data_8.asm"));
}

TEST(MenuConfig, Golden) {
    DesignStore design;
    design.BigSprite = 1;
    design.CaptionText = u"MY GAMES";
    design.SpriteTileList.resize(9);
    design.ArrowTile = {.X = 0x48, .Y = 1, .Tile = 0x1F, .Palette = 3, .Flags = 3};
    BuildSettings settings;
    settings.NameInsertRow = true;
    settings.Music = 1;
    settings.PageTurningSpeed = 4;
    settings.ShowStyle = 1;
    settings.PageNumber = true;
    settings.PageSize = 20;
    // 128 KB; banks of names, of data, of final data; games; the large cursor
    const MenuConfig config{BoardType::kCoolgirl, 8, 4, 2, 3, 1024, 1};
    EXPECT_EQ(MenuConfigText(config, settings, design),
              "BIG_CURSOR = 1\r\nBIG_SPRITE = 1\r\nCAPTION_LENGTH = 8\r\nNAME_INSERT_ROW = 1\r\n"
              "FINAL_DATA_ENABLE = 1\r\nNAME_BANK_COUNT = 4\r\nDATA_BANK_COUNT = 2\r\n"
              "FINAL_DATA_BANK_COUNT = 3\r\nBOARD_TYPE = 2\r\nMENU_PRG_SIZE = 8\r\n"
              "MENU_CHR_SIZE = 0\r\nMENU_MUSIC = 1\r\nPAGE_TURNING_SPEED = 4\r\n"
              "CUSTOM_MENU_ENABLE = 0\r\nGAMES_TOTAL   =  1024\r\nMENU_SHOW_STYLE   =  1\r\n"
              "SHOW_PAGE_NUMBER   =  1\r\nPAGE_SIZE   =  20\r\nSPRITE_TILE_SIZE   =  9\r\n"
              "CURSOR_ARROW_TILE   =  $1F\r\nCURSOR_ARROW_X   =  $48\r\n"
              "CURSOR_ARROW_Y   =  $00\r\nCURSOR_ARROW_MODE   =  $C3\r\n");
}

TEST(BuildSettings, MissingAndWrongValuesCountAsDefaults) {
    const auto store = MakeMemoryStore();
    for (const auto& [name, value] : {std::pair{"PageSize", 7u},
                                      {"MenuSize", 64u},
                                      {"Music", 9u},
                                      {"PageTurningSpeed", 0u},
                                      {"ShowNumberOrder", 8u}})
        store->RegWriteDword(kMainKey, name, value);
    store->RegWriteDword(kBoardKey, "CoolboyType", 1);
    store->RegWriteString(kMainKey, "ExternMenuPath", u"menu.asm");
    const BuildSettings settings = LoadBuildSettings(*store);
    EXPECT_EQ(settings.PageSize, 10u);
    EXPECT_EQ(settings.MenuSize, 8u);
    EXPECT_EQ(settings.Music, 1u);
    EXPECT_EQ(settings.PageTurningSpeed, 1u);
    EXPECT_TRUE(settings.ShowNumberOrder);
    EXPECT_EQ(settings.CoolboyBoard(), BoardType::kMindkids);
    EXPECT_EQ(settings.ExternMenuPath, "menu.asm");
}

}  // namespace
}  // namespace bw
