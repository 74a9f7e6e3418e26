// Whole builds and exports, with a user that answers and remembers, and the real assembler.
#include "build_fixture.h"
#include "builder/layout/build_checks.h"

namespace bw {
namespace {

using namespace test;

using BuildDriver = BuildFixture;

TEST_F(BuildDriver, BuildsTheSameRomTwice) {
    Add("one", {2, 1, 0}, 1);
    Add("two", {8, 16, 4}, 2);
    Add("three", {1, 1, 0}, 1);
    Add("four", {1, 1, 0}, 2);
    games_[2].name = u"quote \"x\"";  // names that could end a string or a line
    games_[3].name = u"line\nbreak .FAIL";
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
    EXPECT_THAT(menu, HasSubstr("\x03ONE\x03TWO\x09QUOTE \"X\""));
    EXPECT_EQ(menu.substr(0x1FFFC, 2).find_first_not_of("\x00\xFF"), 0u) << "a reset vector";
    user_.answerYes = false;
    ASSERT_TRUE(Build().done);
    EXPECT_TRUE(ReadText(outcome.output) == rom);
}

TEST_F(BuildDriver, RefusesWhatTheBoardCantRun) {
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, ElementsAre("Tips: No files are selected"));
    const std::tuple<std::string, ImageShape, std::string> rows[] = {
        {"mapper1", {8, 0, 1}, "Error: 1.mapper1 Mapper1 not supported!\r\n"},
        {"trained", {1, 1, 0, 4}, "1.trained Trainer not supported!"},
        {"three", {3, 1, 0}, "1.three PRG = 48KB CHR = 8KB not supported!"},
        {"gone", {8, 0, 4}, "1.gone Not a valid NES file!"}};
    for (const auto& [name, shape, message] : rows) {
        games_.clear();
        const auto file = Add(name, shape);
        if (name == "gone") std::filesystem::remove(file);
        ExpectRefused(message);
    }
    games_.clear();
    for (int i = 0; i < 25; ++i)
        Add("bad" + std::to_string(i), {1, 1, 7});
    ExpectRefused("bad19", BoardType::kCoolgirl);
    EXPECT_EQ(std::ranges::count(user_.messages[0], '\n'), 20);
    user_.language = Language::kChinese;
    ExpectRefused("bad0");
    EXPECT_THAT(user_.messages[0], Not(HasSubstr("not supported")));
}

TEST_F(BuildDriver, RefusesTooManyGames) {
    AddMany(1025);
    ExpectRefused("2.Limited number of ROM games : 1024(Current: 1025)");
    AddMany(1500);
    for (GameEntry& entry : games_)
        entry.name.assign(26, u'N');
    ExpectRefused("Output information overflow \r\nList data: 6/5 \r\nItem data: 2/4 \r\nfinal");
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
    EXPECT_EQ(ToUtf8(CheckRomLimits(layout, BoardType::kMindkids, Language::kEnglish)->text),
              "Create MINDKIDS ROM has the following limits:\r\n\r\n1.ROM size limit: "
              "32MB(Current: 32.016MB)\r\n2.Limited number of ROM games : 1024(Current: 1024)");
    layout.romSize = 134217728 + 16384;
    EXPECT_TRUE(CheckRomLimits(layout, BoardType::kCoolgirl, Language::kEnglish));
}

TEST(BuildChecks, NamesStayOnTheScreen) {
    // `address`: of a design's list, else 0
    const auto fit = [](uint32_t pageSize, uint32_t style, bool blankRows, size_t games,
                        uint32_t address) {
        BuildSettings settings;
        settings.PageSize = pageSize;
        settings.ShowStyle = style;
        settings.NameInsertRow = blankRows;
        settings.CustomEnable = address != 0;
        return !CheckScreenRows(settings, address, games, Language::kEnglish);
    };
    EXPECT_TRUE(fit(20, 0, false, 1024, 0) && fit(20, 1, false, 1024, 0));
    EXPECT_TRUE(fit(10, 0, true, 1024, 0) && !fit(15, 0, true, 1024, 0));
    EXPECT_TRUE(fit(15, 0, true, 13, 0) && !fit(20, 0, true, 1024, 0));
    EXPECT_FALSE(fit(5, 1, false, 3, 0) || fit(15, 1, false, 3, 0));
    EXPECT_TRUE(fit(15, 1, false, 3, 0x20A9));
    EXPECT_TRUE(fit(15, 0, true, 1024, 0x2009) && !fit(15, 0, true, 1024, 0x2049));
}

// The console writes these places without a look at where they lie.
TEST(BuildChecks, DesignsStayOnTheScreen) {
    const auto problem = [](uint32_t caption, uint32_t items, uint32_t page, size_t games) {
        BuildSettings settings;
        settings.PageSize = 5;
        settings.PageNumber = games != 0;
        DesignStore design;
        design.CaptionPpuAddr = caption;
        design.ItemPpuAddr = items;
        design.PageNumberPpuAddr = page;
        EXPECT_FALSE(CheckScreenPlaces(settings, design, games, Language::kEnglish));
        settings.CustomEnable = true;
        const auto fault = CheckScreenPlaces(settings, design, games, Language::kEnglish);
        return fault ? ToUtf8(fault->text) : "fine";
    };
    EXPECT_EQ(problem(0x2000, 0x23BF, 0x23BD, 1), "fine");
    EXPECT_EQ(problem(0x1FFF, 0x2000, 0x2000, 1),
              "The design's caption lies outside the screen (video memory address $1FFF).");
    EXPECT_THAT(problem(0x23C0, 0x2000, 0x2000, 1), HasSubstr("caption"));
    EXPECT_THAT(problem(0x2000, 0x2400, 0x2000, 1), HasSubstr("list of games"));
    EXPECT_THAT(problem(0x2000, 0xFFFFFFFF, 0x2000, 1), HasSubstr("list of games"));
    EXPECT_THAT(problem(0x2000, 0x2000, 0x23BE, 1), HasSubstr("page number")) << "1/1";
    EXPECT_EQ(problem(0x2000, 0x2000, 0x23BE, 0), "fine") << "without page numbers";
    EXPECT_EQ(problem(0x2000, 0x2000, 0x23BC, 45), "fine") << "9 pages";
    EXPECT_THAT(problem(0x2000, 0x2000, 0x23BC, 46), HasSubstr("page number")) << "10 pages";
    EXPECT_THAT(problem(0x2000, 0x2000, 0xFFFFFFFF, 1), HasSubstr("page number"));
}

TEST_F(BuildDriver, AnOutputThatIsAnInputIsRefused) {
    const auto game = Add("game", {1, 1, 0});
    const std::string before = ReadText(game);
    user_.output = OutputChoice{game, RomFormat::kNes20};
    ExpectRefused("Choose another name");
    EXPECT_EQ(ReadText(game), before);
}

TEST_F(BuildDriver, CancellingLeavesNothing) {
    Add("game", {1, 1, 0});
    user_.cancelled = true;
    EXPECT_FALSE(Build().done);
    user_.output.reset();
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "out"));
}

TEST_F(BuildDriver, AWorkFolderThatCantBeMadeIsNamed) {
    Add("game", {1, 1, 0});
    WriteText(folder_ / "work", "a file stands in the way");
    const BuildOutcome outcome = BuildRom(Context(), BoardType::kCoolboy, taskBusy_);
    EXPECT_FALSE(outcome.done);
    EXPECT_THAT(user_.messages,
                ElementsAre(AllOf(StartsWith("Error: The operation failed"), HasSubstr("work"))));
}

}  // namespace
}  // namespace bw
