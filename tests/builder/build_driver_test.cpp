// Whole builds and exports, with a user that answers and remembers, and the real assembler.
#include "build_fixture.h"
#include "builder/layout/build_checks.h"

namespace bw {
namespace {

using test::ReadText;
using test::WriteText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

using BuildDriver = test::BuildFixture;

TEST_F(BuildDriver, BuildsTheSameRomTwice) {
    Add("one", {2, 1, 0}, 1);
    Add("two", {8, 16, 4}, 2);
    user_.answerYes = true;
    const BuildOutcome outcome = Build();
    ASSERT_TRUE(outcome.done) << testing::PrintToString(user_.messages);
    EXPECT_EQ(outcome.output, folder_ / "out" / "cart.bin");
    EXPECT_EQ(user_.shown, outcome.output);
    EXPECT_THAT(user_.questions, ElementsAre(HasSubstr("open the output folder?")));
    EXPECT_THAT(user_.stages, SizeIs(4));
    std::u16string lastFolder;
    EXPECT_TRUE(store_->RegReadString(kMainKey, "LastBuildDir", lastFolder));
    EXPECT_EQ(TextPath(lastFolder), folder_ / "out");

    const std::string rom = ReadText(outcome.output);
    ASSERT_EQ(rom.size(), outcome.layout.romSize);
    const std::string menu = rom.substr(0x60000, 0x20000);
    EXPECT_THAT(menu, HasSubstr("\x03ONE\x03TWO"));
    EXPECT_EQ(menu.substr(0x1FFFC, 2).find_first_not_of("\x00\xFF"), 0u) << "a reset vector";
    user_.answerYes = false;
    ASSERT_TRUE(Build().done);
    EXPECT_TRUE(ReadText(outcome.output) == rom);
}

TEST_F(BuildDriver, BuildsEveryBoardAndSize) {
    Add("one", {2, 1, 0}, 1);
    for (const BoardType board :
         {BoardType::kCoolboy, BoardType::kMindkids, BoardType::kCoolgirl}) {
        for (const uint32_t size : {8u, 16u, 32u}) {
            settings_.MenuSize = size;
            const BuildOutcome outcome = Build(board);
            ASSERT_TRUE(outcome.done) << testing::PrintToString(user_.messages);
            const auto& items = outcome.layout.items;
            const auto menu = std::find_if(items.begin(), items.end(),
                                           [](const auto& item) { return item.isMenu != 0; });
            const uint32_t units = board == BoardType::kCoolgirl ? 8 : size;
            EXPECT_EQ(menu->prgCount, units);
            EXPECT_EQ(menu->prgOffset, board == BoardType::kCoolgirl ? 0 : 0x80000 - units * 16384);
        }
    }
}

TEST_F(BuildDriver, RefusesWhatTheBoardCantRun) {
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, ElementsAre("Tips: No files are selected"));

    Add("mapper1", {8, 0, 1});
    ExpectRefused("Error: 1.mapper1 Mapper1 not supported!\r\n");
    games_.clear();
    Add("trained", {1, 1, 0, 4});
    ExpectRefused("1.trained Trainer not supported!", BoardType::kCoolgirl);
    games_.clear();
    Add("three", {3, 1, 0});
    ExpectRefused("1.three PRG = 48KB CHR = 8KB not supported!");
    games_.clear();
    Add("chr", {8, 0, 4});
    games_[0].checked = true;
    std::filesystem::remove(folder_ / "chr.nes");
    ExpectRefused("1.chr Not a valid NES file!");
    games_.clear();
    for (int i = 0; i < 25; ++i) {
        Add("bad" + std::to_string(i), {1, 1, 7});
    }
    user_.messages.clear();
    EXPECT_FALSE(Build().done);
    ASSERT_THAT(user_.messages, SizeIs(1));
    EXPECT_EQ(std::count(user_.messages[0].begin(), user_.messages[0].end(), '\n'), 20);

    user_.language = Language::kChinese;
    user_.messages.clear();
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, ElementsAre(HasSubstr("bad0")));
    EXPECT_THAT(user_.messages[0], testing::Not(HasSubstr("not supported")));
}

TEST_F(BuildDriver, RefusesTooManyGames) {
    AddMany(1025);
    ExpectRefused("2.Limited number of ROM games : 1024(Current: 1025)");
    AddMany(1500);
    for (GameEntry& entry : games_) {
        entry.name = std::u16string(26, u'N');
    }
    ExpectRefused(
        "Output information overflow \r\nList data: 6/5 \r\nItem data: 2/4 \r\n"
        "final data:3/4 ");
    settings_.MenuSize = 16;
    ExpectRefused("Limited number of ROM games");

    std::atomic<bool> busy = true;
    user_.messages.clear();
    EXPECT_FALSE(MayStartBuild(games_, busy, user_));
    EXPECT_THAT(user_.messages, ElementsAre(StartsWith("Warn: The task is busy")));
    busy = false;
    games_.resize(3072, games_[0]);
    EXPECT_TRUE(MayStartBuild(games_, busy, user_));
    games_.resize(3073, games_[0]);
    user_.messages.clear();
    EXPECT_FALSE(MayStartBuild(games_, busy, user_));
    EXPECT_THAT(user_.messages, ElementsAre("Warn: Too many games selected, maximum 3072"));
}

TEST(BuildChecks, RomLimits) {
    LayoutResult layout;
    layout.items.resize(1025);
    layout.romSize = 33554432;
    EXPECT_FALSE(CheckRomLimits(layout, BoardType::kCoolboy, Language::kEnglish));
    layout.romSize += 16384;
    EXPECT_FALSE(CheckRomLimits(layout, BoardType::kCoolgirl, Language::kEnglish));
    EXPECT_EQ(ToUtf8(*CheckRomLimits(layout, BoardType::kMindkids, Language::kEnglish)),
              "Create MINDKIDS ROM has the following limits:\r\n\r\n1.ROM size limit: "
              "32MB(Current: 32.016MB)\r\n2.Limited number of ROM games : 1024(Current: 1024)");
    layout.romSize = 134217728 + 16384;
    EXPECT_TRUE(CheckRomLimits(layout, BoardType::kCoolgirl, Language::kEnglish));
}

TEST(BuildChecks, NamesStayOnTheScreen) {
    struct Case {
        uint32_t pageSize;
        uint32_t style;
        bool blankRows;
        bool custom;
        uint32_t itemAddress;
        size_t games;
        bool passes;
    };
    const std::vector<Case> cases{
        {20, 0, false, false, 0, 1024, true},     {20, 1, false, false, 0, 1024, true},
        {10, 0, true, false, 0, 1024, true},      {15, 0, true, false, 0, 1024, false},
        {15, 0, true, false, 0, 13, true},        {20, 0, true, false, 0, 1024, false},
        {5, 1, false, false, 0, 3, false},        {15, 1, false, false, 0, 3, false},
        {15, 1, false, true, 0x20A9, 3, true},    {15, 0, true, true, 0x2009, 1024, true},
        {15, 0, true, true, 0x2049, 1024, false},
    };
    for (const Case& test : cases) {
        BuildSettings settings;
        settings.PageSize = test.pageSize;
        settings.ShowStyle = test.style;
        settings.NameInsertRow = test.blankRows;
        settings.CustomEnable = test.custom;
        const auto text =
            CheckScreenRows(settings, test.itemAddress, test.games, Language::kEnglish);
        EXPECT_EQ(!text, test.passes)
            << test.pageSize << " names, style " << test.style << ", blank rows " << test.blankRows
            << ", custom " << test.custom << ", games " << test.games;
    }
}

// The console writes these places without a look at where they lie.
TEST(BuildChecks, DesignsStayOnTheScreen) {
    struct Case {
        uint32_t caption;
        uint32_t items;
        uint32_t page;
        bool pageNumber;
        size_t games;
        std::string problem;
    };
    const std::vector<Case> cases{
        {0x2000, 0x23BF, 0x23BD, true, 1, ""},
        {0x1FFF, 0x2000, 0x2000, true, 1,
         "The design's caption lies outside the screen (video "
         "memory address $1FFF)."},
        {0x23C0, 0x2000, 0x2000, true, 1, "caption"},
        {0x2000, 0x2400, 0x2000, true, 1, "list of games"},
        {0x2000, 0xFFFFFFFF, 0x2000, true, 1, "list of games"},
        {0x2000, 0x2000, 0x23BE, true, 1, "page number"},  // 1/1
        {0x2000, 0x2000, 0x23BE, false, 1, ""},
        {0x2000, 0x2000, 0x23BC, true, 45, ""},             // 9 pages
        {0x2000, 0x2000, 0x23BC, true, 46, "page number"},  // 10
        {0x2000, 0x2000, 0xFFFFFFFF, true, 1, "page number"},
    };
    for (const Case& test : cases) {
        BuildSettings settings;
        settings.PageSize = 5;
        settings.PageNumber = test.pageNumber;
        DesignStore design;
        design.CaptionPpuAddr = test.caption;
        design.ItemPpuAddr = test.items;
        design.PageNumberPpuAddr = test.page;
        EXPECT_FALSE(CheckScreenPlaces(settings, design, test.games, Language::kEnglish));
        settings.CustomEnable = true;
        const auto text = CheckScreenPlaces(settings, design, test.games, Language::kEnglish);
        EXPECT_EQ(!text, test.problem.empty());
        EXPECT_THAT(ToUtf8(text.value_or(u"")), HasSubstr(test.problem));
    }
}

TEST_F(BuildDriver, NamesThatCouldEndAStringOrALine) {
    Add("quote \"x\"", {1, 1, 0}, 1);
    Add("line\nbreak .FAIL", {1, 1, 0}, 2);
    Add("plain", {1, 1, 0}, 3);
    const BuildOutcome outcome = Build();
    ASSERT_TRUE(outcome.done) << testing::PrintToString(user_.messages);
    EXPECT_THAT(ReadText(outcome.output), HasSubstr("\x09QUOTE \"X\""));
}

TEST_F(BuildDriver, AnOutputThatIsAnInputIsRefused) {
    const auto game = Add("game", {1, 1, 0});
    const std::string before = ReadText(game);
    user_.output = OutputChoice{game, RomFormat::kNes20};
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, ElementsAre(HasSubstr("Choose another name")));
    EXPECT_EQ(ReadText(game), before);
}

TEST_F(BuildDriver, CancellingLeavesNothing) {
    Add("game", {1, 1, 0});
    user_.output.reset();
    EXPECT_FALSE(Build().done);
    user_.output = OutputChoice{folder_ / "out" / "x", RomFormat::kNes20};
    user_.cancelled = true;
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "out"));
}

TEST_F(BuildDriver, AWorkFolderThatCantBeMadeIsNamed) {
    Add("game", {1, 1, 0});
    WriteText(folder_ / "work", "a file stands in the way");
    const BuildOutcome outcome = BuildRom(Context(), BoardType::kCoolboy, taskBusy_);
    EXPECT_FALSE(outcome.done);
    EXPECT_THAT(user_.messages, ElementsAre(testing::AllOf(
                                    StartsWith("Error: The operation failed"), HasSubstr("work"))));
}

TEST_F(BuildDriver, KeepsTheMenuTreeOnRequest) {
    Add("game", {1, 1, 0});
    BuildContext context = Context();
    context.keepWork = folder_ / "kept";
    ASSERT_TRUE(BuildRom(context, BoardType::kCoolboy, taskBusy_).done);
    for (const char* file :
         {"menu.asm", "coolboy.asm", "coolgirl.asm", "menu.nes", "build/game_config.asm",
          "build/game_list_0.asm", "menu_data/chr_data.bin"}) {
        EXPECT_TRUE(std::filesystem::exists(folder_ / "kept" / file)) << file;
    }
}

TEST_F(BuildDriver, Exports) {
    Add("game", {1, 1, 0});
    games_[0].name = u"Game";
    settings_.ShowNumberOrder = true;
    settings_.ExportRomType = 1;
    settings_.ExportPrgSize = 2;
    user_.folder = folder_ / "out";
    settings_.LastExportDir = folder_ / "out";
    ASSERT_TRUE(RunExport(Context())) << testing::PrintToString(user_.messages);
    EXPECT_EQ(ReadText(folder_ / "out" / "game_list.txt"), "1Game\r\n");
    const std::string config = ReadText(folder_ / "out" / "game_config.asm");
    EXPECT_THAT(config, HasSubstr("BOARD_TYPE = 2\r\nMENU_PRG_SIZE = 32\r\n"));
    for (const char* file :
         {"game_list_0.asm", "game_list_bank.asm", "game_title.asm", "game_data_0.asm",
          "game_data_bank.asm", "game_final_data_0.asm", "game_final_data_bank.asm",
          "game_prg_chr_offset.txt", "game_caption_data.asm", "char_mapping.bin"}) {
        EXPECT_TRUE(std::filesystem::exists(folder_ / "out" / file)) << file;
    }
    user_.folder.reset();
    EXPECT_FALSE(RunExport(Context()));
    EXPECT_THAT(user_.messages, IsEmpty());
}

}  // namespace
}  // namespace bw
