// The texts that the menu's source includes, byte for byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "builder/tables/final_data.h"
#include "builder/tables/game_data.h"
#include "builder/tables/menu_config.h"
#include "builder/tables/name_tables.h"
#include "builder/tables/reports.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "test_items.h"

namespace bw {
namespace {

using test::Game;
using test::ReadText;
using test::WriteText;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<std::u16string> Names(size_t count, const std::u16string& name) {
    return std::vector<std::u16string>(count, name);
}

TEST(NameTables, OneGame) {
    const TemporaryFolder folder;
    uint32_t banks = 9;
    ASSERT_TRUE(GenerateNameTables(Names(1, u"1.Pong"), folder.Path(), {}, banks));
    EXPECT_EQ(banks, 1u);
    EXPECT_EQ(ReadText(folder / "game_list_0.asm"),
              "game_name_begin_000\r\n .WORD 0\r\ngame_name_list_000\r\n"
              " .WORD game_name_000\r\n\r\n"
              "game_name_000 .STR \"1.PONG\"\r\n\r\n");
    EXPECT_EQ(ReadText(folder / "game_list_bank.asm"), "game_list_bank_index\r\n .DB $00\r\n");
    EXPECT_EQ(ReadText(folder / "game_title.asm"), " .STR \"1 IN 1\"");
}

TEST(NameTables, NamesInTheConsolesAlphabet) {
    EXPECT_EQ(ConsoleName(u"Pok\u00E9mon \u5168\u96C6 z{"), "POK?MON ?? Z{");
    EXPECT_EQ(ConsoleName(u"\u0080\u0081"), "\x80?");

    const TemporaryFolder folder;
    uint32_t banks = 0;
    const std::vector<std::u16string> names{u"a \"b\"", u"", u"two\nlines", u"\u0080"};
    ASSERT_TRUE(GenerateNameTables(names, folder.Path(), {}, banks));
    const std::string text = ReadText(folder / "game_list_0.asm");
    EXPECT_THAT(text, HasSubstr("game_name_000 .DB $05,$41,$20,$22,$42,$22\r\n"));
    EXPECT_THAT(text, HasSubstr("game_name_001 .DB $00\r\n"));
    EXPECT_THAT(text, HasSubstr("game_name_002 .DB $09,$54,$57,$4F,$0A,"));
    EXPECT_THAT(text, HasSubstr("game_name_003 .STR \"\xC2\x80\"\r\n"));
}

TEST(NameTables, RowsOfTenAndNumbersThatRunOn) {
    const TemporaryFolder folder;
    uint32_t banks = 0;
    ASSERT_TRUE(GenerateNameTables(Names(2500, std::u16string(28, u'x')), folder.Path(),
                                   {.nameColumn = 4, .removalPattern = {}, .files = {}}, banks));
    EXPECT_EQ(banks, 10u);  // 264 names of 31 bytes in each
    const std::string second = ReadText(folder / "game_list_1.asm");
    EXPECT_THAT(second, StartsWith("game_name_begin_264\r\n .WORD 264\r\ngame_name_list_264\r\n"
                                   " .WORD game_name_264,game_name_265,"));
    EXPECT_THAT(second, HasSubstr(",game_name_273\r\n .WORD game_name_274,"));
    EXPECT_THAT(ReadText(folder / "game_list_9.asm"), HasSubstr("game_name_2499 .STR"));
    const std::string index = ReadText(folder / "game_list_bank.asm");
    EXPECT_THAT(index, StartsWith("game_list_bank_index\r\n .DB $00,$00,$00,$00,$00,$00,$00,$00,"
                                  "$00,$00\r\n .DB "));
    EXPECT_THAT(index, testing::EndsWith("$09\r\n"));
}

TEST(NameTables, CutsToTheScreenButNotTheNameThatOpensABank) {
    const TemporaryFolder folder;
    uint32_t banks = 0;
    // 26 columns and 3 bytes: 282 names in 8178 bytes, and 12 bytes left.
    ASSERT_TRUE(GenerateNameTables(Names(284, std::u16string(40, u'A')), folder.Path(), {}, banks));
    EXPECT_EQ(banks, 2u);
    const auto line = [](const char* number, size_t length) {
        return std::string("game_name_") + number + " .STR \"" + std::string(length, 'A') +
               "\"\r\n";
    };
    EXPECT_THAT(ReadText(folder / "game_list_0.asm"), HasSubstr(line("281", 26)));
    EXPECT_THAT(ReadText(folder / "game_list_1.asm"), HasSubstr(line("282", 40)));
    EXPECT_THAT(ReadText(folder / "game_list_1.asm"), HasSubstr(line("283", 26)));
}

TEST(NameTables, ABankHoldsExactly8192Bytes) {
    const TemporaryFolder folder;
    const auto banksOf = [&](size_t lastLength) {
        std::vector<std::u16string> names(282, std::u16string(26, u'A'));  // 2 + 282 * 29 = 8180
        names.emplace_back(lastLength, u'B');
        uint32_t banks = 0;
        GenerateNameTables(names, folder.Path(), {}, banks);
        return banks;
    };
    EXPECT_EQ(banksOf(9), 1u);
    EXPECT_EQ(banksOf(10), 2u);
}

TEST(NameTables, RemovesPatternsAndLeftovers) {
    const TemporaryFolder folder;
    for (const char* file : {"game_list_1.asm", "game_list_F.asm"}) {
        WriteText(folder / file, "old");
    }
    uint32_t banks = 0;
    ASSERT_TRUE(GenerateNameTables(
        Names(1, u"Game (E) [!]"), folder.Path(),
        {.nameColumn = 6, .removalPattern = R"( [(\[].*?[)\]])", .files = {}}, banks));
    EXPECT_THAT(ReadText(folder / "game_list_0.asm"), HasSubstr(".STR \"GAME\""));
    EXPECT_FALSE(std::filesystem::exists(folder / "game_list_1.asm"));
    EXPECT_FALSE(std::filesystem::exists(folder / "game_list_F.asm"));
    EXPECT_FALSE(GenerateNameTables(Names(1, u"x"), folder.Path(),
                                    {.nameColumn = 6, .removalPattern = "(", .files = {}}, banks));
}

TEST(NameTables, CountsWithoutWriting) {
    const TemporaryFolder folder;
    uint32_t banks = 0;
    const NameTableOptions countOnly{
        .nameColumn = 6, .removalPattern = {}, .files = {.write = false}};
    EXPECT_TRUE(GenerateNameTables(Names(2, u"x"), folder.Path(), countOnly, banks));
    EXPECT_EQ(banks, 1u);
    EXPECT_FALSE(std::filesystem::exists(folder / "game_list_0.asm"));
    EXPECT_TRUE(std::filesystem::exists(folder / "game_list_bank.asm"));
    EXPECT_FALSE(GenerateNameTables(Names(2, u"x"), folder / "missing", countOnly, banks));
    EXPECT_EQ(banks, 1u);
    banks = 7;
    EXPECT_FALSE(GenerateNameTables({}, folder.Path(), countOnly, banks));
    EXPECT_EQ(banks, 7u);
}

MulticartItem LaidGame() {
    MulticartItem item = Game(0, 16, 3, 74);
    item.SetChrUnits(4);
    item.prgOffset = 0x80000;
    item.chrOffset = 0xC0000;
    item.prgCrc = 0xDEADBEEF;
    item.chrCrc = 0x1234;
    item.mirroring = 1;
    item.fourScreen = 1;
    item.name = u"Caf\u00E9\nLDA #0";  // a name must not end its comment
    return item;
}

TEST(GameData, Golden) {
    const TemporaryFolder folder;
    MulticartItem menu = test::Menu(8);
    menu.isMenu = 1;
    uint32_t banks = 0;
    ASSERT_TRUE(GenerateGameData(std::vector{menu, LaidGame()}, folder.Path(), {}, banks));
    EXPECT_EQ(banks, 1u);
    EXPECT_EQ(
        ReadText(folder / "game_data_0.asm"),
        "game_data_begin_000\r\n .WORD 0\r\ngame_data_list_000\r\n .WORD game_data_000\r\n\r\n"
        "game_data_000;Caf\xC3\xA9?LDA #0\r\n"
        " .DW $0040 ;000001000000 00080000 CRC32: DEADBEEF Size: 00040000\r\n"
        " .DB $10 ;PRG Size\r\n"
        " .DW $0060 ;000001100000 000C0000 CRC32: 00001234 Size: 00008000\r\n"
        " .DB $04 ;CHR Size\r\n"
        " .DB %00000101 ;Mirroring D0(0: H 1: V) Battery: D1(0: N 1: Y) Four-Screen: D2(0: N 1: "
        "Y)\r\n"
        " .DB 074 ;Mapper\r\n\r\n");
    EXPECT_EQ(ReadText(folder / "game_data_bank.asm"), "game_data_bank_index\r\n .DB $00\r\n");
    EXPECT_EQ(ReadText(folder / "game_prg_chr_offset.txt"),
              "rom prg offset:\r\n0000 00080000 040000 Caf\xE9?LDA #0\r\n"
              "\r\nrom chr offset:\r\n0000 000C0000 008000 Caf\xE9?LDA #0\r\n");
}

TEST(FinalData, Golden) {
    const TemporaryFolder folder;
    uint32_t banks = 0;
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
    ASSERT_TRUE(
        GenerateFinalData(std::vector{record}, folder.Path(), BoardType::kMindkids, {}, banks));
    EXPECT_EQ(ReadText(folder / "game_final_data_0.asm"),
              ";COOLBOY\r\n" + head + flags +
                  " .DB $10 ;CHR 8KB count\r\n"
                  " .DB $01 ;Reg0 for CHR\r\n .DB $02 ;Reg1 for CHR\r\n"
                  " .DB $03 ;Reg2 for CHR\r\n .DB $04 ;Reg3 for CHR\r\n"
                  " .DB $11 ;Reg0 for PRG\r\n .DB $12 ;Reg1 for PRG\r\n"
                  " .DB $13 ;Reg2 for PRG\r\n .DB $14 ;Reg3 for PRG\r\n\r\n");
    ASSERT_TRUE(
        GenerateFinalData(std::vector{record}, folder.Path(), BoardType::kCoolgirl, {}, banks));
    EXPECT_EQ(ReadText(folder / "game_final_data_0.asm"),
              ";COOLGIRL\r\n" + head +
                  " .DW $0ABC ;CHR 8KB offset\r\n"
                  " .DB $10 ;CHR 8KB count\r\n" +
                  flags +
                  " .DB $11 ;Reg0 for PRG\r\n .DB $12 ;Reg1 for PRG\r\n"
                  " .DB $13 ;Reg2 for PRG\r\n .DB $14 ;Reg3 for PRG\r\n"
                  " .DB $15 ;Reg4 for PRG\r\n .DB $16 ;Reg5 for PRG\r\n"
                  " .DB $17 ;Reg6 for PRG\r\n .DB $18 ;Reg7 for PRG\r\n\r\n");
}

TEST(TableBanks, GamesInABank) {
    const TemporaryFolder folder;
    const TableWriteOptions count{.write = false};
    const auto data = [&](size_t games) {
        uint32_t banks = 0;
        GenerateGameData(std::vector<MulticartItem>(games), folder.Path(), count, banks);
        return banks;
    };
    const auto finalData = [&](size_t games, BoardType board) {
        uint32_t banks = 0;
        GenerateFinalData(std::vector<FinalDataRecord>(games), folder.Path(), board, count, banks);
        return banks;
    };
    EXPECT_EQ(data(0), 0u);
    EXPECT_EQ(data(819), 1u);
    EXPECT_EQ(data(820), 2u);
    EXPECT_EQ(finalData(682, BoardType::kCoolboy), 1u);
    EXPECT_EQ(finalData(683, BoardType::kMindkids), 2u);
    EXPECT_EQ(finalData(585, BoardType::kCoolgirl), 1u);
    EXPECT_EQ(finalData(586, BoardType::kCoolgirl), 2u);
}

TEST(TableBanks, ShorterRunsDeleteOnlyTheFirstEightFiles) {
    const TemporaryFolder folder;
    for (const char* file : {"game_data_7.asm", "game_data_8.asm"}) {
        WriteText(folder / file, "old");
    }
    uint32_t banks = 0;
    GenerateGameData(std::vector<MulticartItem>(1), folder.Path(), {}, banks);
    EXPECT_FALSE(std::filesystem::exists(folder / "game_data_7.asm"));
    EXPECT_TRUE(std::filesystem::exists(folder / "game_data_8.asm"));
}

TEST(MenuConfig, Golden) {
    DesignStore design;
    design.BigSprite = 1;
    design.CaptionText = u"MY GAMES";
    design.SpriteTileList.resize(9);
    design.ArrowTile.Tile = 0x1F;
    design.ArrowTile.X = 0x48;
    design.ArrowTile.Y = 1;
    design.ArrowTile.Palette = 3;
    design.ArrowTile.Flags = 3;
    BuildSettings settings;
    settings.NameInsertRow = true;
    settings.Music = 1;
    settings.PageTurningSpeed = 4;
    settings.ShowStyle = 1;
    settings.PageNumber = true;
    settings.PageSize = 20;
    const MenuConfig config{.board = BoardType::kCoolgirl,
                            .menuPrgUnits = 8,
                            .nameBanks = 4,
                            .dataBanks = 2,
                            .finalDataBanks = 3,
                            .games = 1024,
                            .BigCursor = 1};
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
    EXPECT_EQ(LoadBuildSettings(*store).PageSize, 10u);
    EXPECT_EQ(LoadBuildSettings(*store).Music, 0u);
    store->RegWriteDword(kMainKey, "PageSize", 7);
    store->RegWriteDword(kMainKey, "MenuSize", 64);
    store->RegWriteDword(kMainKey, "Music", 9);
    store->RegWriteDword(kMainKey, "PageTurningSpeed", 0);
    store->RegWriteDword(kMainKey, "ShowNumberOrder", 8);
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
