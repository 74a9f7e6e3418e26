// Searching the names, building and exporting from the window.
#include "list/added_games.h"
#include "shell/tasks/build_commands.h"
#include "shell/tasks/find_commands.h"
#include "support/paths.h"
#include "support/process.h"
#include "tasks_fixture.h"

namespace bw {
namespace {

using namespace test;

class Searching : public TasksFixture {
  protected:
    // One command at a time; what it is to do.
    void Do(void (FindCommands::*command)(const FindRecord&), const FindRecord& record) {
        (commands_.*command)(record);
        Finish();
    }
    FindCommands commands_{host_};
};

TEST_F(Searching, FindNextGoesRoundAndSaysSoIfThereIsNothing) {
    AddNames({u"Contra", u"Gradius", u"contra force"});
    for (const size_t row : {0u, 2u, 0u}) {
        Do(&FindCommands::FindNext, {.find = u"CONTRA", .replace = u""});
        EXPECT_EQ(host_.found, true);
        EXPECT_EQ(host_.editor.FindRow(), row);
        EXPECT_EQ(host_.editor.FindNextRow(), row + 1);
        EXPECT_EQ(host_.problem, row == 0 ? "Hit 1 of 2." : "Hit 2 of 2.");
    }
    host_.editor.SelectInverse();
    Do(&FindCommands::FindNext, {.find = u"contra", .replace = u"", .onlyChecked = true});
    EXPECT_EQ(host_.found, false);
    EXPECT_EQ(host_.editor.FindRow(), 0u) << "the row loses its mark only";
    EXPECT_EQ(host_.editor.FindNextRow(), 0u);
    EXPECT_EQ(host_.problem, "Nothing was found.");
}

TEST_F(Searching, ReplaceWorksInTheFoundRowAndGoesOn) {
    AddNames({u"01.Contra", u"02.Gradius", u"03.Zelda"});
    const FindRecord record{.find = u"^\\d+\\.", .replace = u"", .regex = true};
    host_.editor.SetFindRow(1);
    host_.editor.SetFindNextRow(2);
    Do(&FindCommands::Replace, record);
    EXPECT_THAT(Names(), ElementsAre("01.Contra", "Gradius", "03.Zelda"));
    EXPECT_EQ(host_.editor.FindRow(), 2u);
    // The row that was renamed is met under its new name.
    Do(&FindCommands::Replace, record);
    EXPECT_EQ(host_.editor.FindRow(), 0u);
    host_.editor.SetFindRow(7);
    Do(&FindCommands::Replace, record);
    EXPECT_THAT(Names(), ElementsAre("01.Contra", "Gradius", "Zelda"));
}

TEST_F(Searching, ReplaceAllIsOneStepAndTellsItsCount) {
    AddNames({u"01.Contra", u"Gradius", u"03.Zelda"});
    host_.editor.SetChecked(2, false);
    host_.applied.clear();
    Do(&FindCommands::ReplaceAll,
       {.find = u"(\\d)(\\d)", .replace = u"$2$1", .regex = true, .onlyChecked = true});
    Do(&FindCommands::ReplaceAll, {.find = u"a", .replace = u"aa"});
    EXPECT_THAT(Names(), ElementsAre("10.Contraa", "Graadius", "03.Zeldaa"));
    EXPECT_EQ(host_.applied.size(), 2u);
    host_.editor.Undo();
    EXPECT_THAT(Names(), ElementsAre("10.Contra", "Gradius", "03.Zelda"));
    EXPECT_EQ(host_.told + host_.problem, "3 name(s) changed.");
    EXPECT_FALSE(host_.found);
}

TEST_F(Searching, WhatCantBeDoneChangesNothing) {
    AddNames({u"Contra", std::u16string(60, u'a')});
    Do(&FindCommands::ReplaceAll, {.find = u"(", .replace = u"x", .regex = true});
    EXPECT_NE(host_.problem, "");

    // Takes longer than anybody lives.
    const FindRecord exploding{.find = u"(a|a)*b|Contra", .replace = u"x", .regex = true};
    commands_.ReplaceAll(exploding);
    commands_.FindNext(exploding);
    EXPECT_THAT(Messages(), ElementsAre(kBusy));
    QTest::qWait(20);
    EXPECT_TRUE(host_.tasks->AnyRunning());
    host_.tasks->StopAll();
    Finish();
    EXPECT_EQ(host_.told, "The search was stopped; no name was changed.");

    commands_.ReplaceAll({.find = u"Contra", .replace = u"x"});
    host_.editor.Clear();
    Finish();
    EXPECT_THAT(host_.told, HasSubstr("The list has changed"));
    host_.editor.Undo();
    EXPECT_THAT(Names(), ElementsAre("Contra", std::string(60, 'a')));
}

class Building : public TasksFixture {
  protected:
    Building() {
        std::filesystem::create_directories(folder_ / "out");
        host_.dialogs.output = OutputChoice{folder_ / "out" / "window", RomFormat::kNes20};
        std::vector<std::filesystem::path> files;
        for (const char* name : {"one.nes", "two.nes", "three.nes"})
            files.push_back(Image(name, {2, 1, 0}, static_cast<uint32_t>(files.size())));
        host_.editor.Append(ReadAddedGames(files, folder_.Path()), {});
        host_.editor.SelectAll();
    }
    std::string CommandLineRom() {
        Process cli;
        EXPECT_TRUE(cli.Start(BANKWEAVER_CLI,
                              {"build", "--board", "mindkids", "--page-size", "20", "--number",
                               "-o", "out/cli.nes", "one.nes", "two.nes", "three.nes"},
                              folder_.Path()));
        const std::string output = cli.ReadOutput(std::chrono::seconds(60));
        EXPECT_EQ(cli.ExitStatus(std::chrono::seconds(60)), 0) << output;
        return ReadText(folder_ / "out" / "cli.nes");
    }
    void ExpectNothingLeft() {
        EXPECT_TRUE(std::filesystem::is_empty(folder_ / "out"));
        EXPECT_FALSE(std::filesystem::exists(WorkFolder()));
    }

    BuildCommands commands_{host_};
};

TEST_F(Building, MakesTheRomOfTheCommandLine) {
    host_.store->RegWriteDword(kBoardKey, "CoolboyType", 1);
    host_.store->RegWriteDword(kMainKey, "PageSize", 20);
    host_.store->RegWriteDword(kMainKey, "ShowNumberOrder", 8);
    std::filesystem::resize_file(folder_ / "three.nes", 40000);
    commands_.BuildCoolboy();
    // What happens now is the next build's.
    host_.editor.Clear();
    host_.store->RegWriteDword(kMainKey, "PageSize", 5);
    commands_.BuildCoolgirl();
    EXPECT_THAT(Messages(), ElementsAre(kBusy));
    host_.dialogs.answers = {kEndYes};
    Finish();
    EXPECT_THAT(Messages(),
                ElementsAre(AllOf(HasSubstr("3.three is cut short"),
                                  HasSubstr("do you want to open the output folder?"))));
    EXPECT_THAT(host_.told, HasSubstr("window.nes: MINDKIDS, 3 game(s)"));
    EXPECT_THAT(host_.dialogs.shown, ElementsAre(folder_ / "out" / "window.nes"));
    EXPECT_EQ(StoredText(*host_.store, "LastBuildDir"), PathText(folder_ / "out"));
    const std::string rom = ReadText(folder_ / "out" / "window.nes");
    EXPECT_TRUE(!rom.empty() && rom == CommandLineRom());
}

TEST_F(Building, RefusesAndTells) {
    host_.store->RegWriteDword(kMainKey, "ExternMenuEnable", 1);
    host_.store->RegWriteString(kMainKey, "ExternMenuPath", u"own.nes");
    commands_.BuildCoolboy();
    Finish();
    EXPECT_THAT(Messages(), ElementsAre("Error: Invalid external menu file: " +
                                        (folder_ / "own.nes").string()));
    EXPECT_EQ(host_.told, "No ROM was written.");
    host_.editor.SelectInverse();
    commands_.BuildCoolboy();
    Finish();
    EXPECT_THAT(Messages(), ElementsAre("Tips: No files are selected"));
    AddMany(kCheckedLimit + 1);
    commands_.BuildCoolgirl();
    EXPECT_THAT(Messages(), ElementsAre("Warn: Too many games selected, maximum 3072"));
    EXPECT_FALSE(host_.tasks->TaskBusy());
    ExpectNothingLeft();
}

TEST_F(Building, OneThatIsStoppedOrLosesItsWindowLeavesNothing) {
    host_.dialogs.meanwhile = [&] { host_.tasks->StopAll(); };
    commands_.BuildCoolboy();
    Finish();
    EXPECT_EQ(host_.dialogs.starts.size(), 1u) << "it was asked for an output";
    EXPECT_EQ(host_.told, "Stopped; nothing was written.");
    ExpectNothingLeft();
    // The window closes while the question is open.
    bool closed = false;
    host_.dialogs.meanwhile = [&] {
        host_.queue.Close();
        host_.tasks->StopAll();
        closed = true;
    };
    commands_.BuildCoolgirl();
    ASSERT_TRUE(Until([&] { return closed; }));
    host_.tasks.reset();
    EXPECT_THAT(Messages(), IsEmpty());
    ExpectNothingLeft();
}

TEST_F(Building, AnExportRunsBesideAnything) {
    std::filesystem::create_directories(folder_ / "tables");
    host_.dialogs.folder = folder_ / "tables";
    host_.dialogs.answers = {kEndYes};
    const BackgroundTasks::Turn turn = host_.tasks->TryBegin();
    commands_.Export();
    ASSERT_TRUE(Until([&] { return !host_.tasks->AnyRunning(); }));
    EXPECT_TRUE(host_.tasks->TaskBusy()) << "another's";
    EXPECT_TRUE(std::filesystem::exists(folder_ / "tables" / "game_config.asm"));
    EXPECT_THAT(host_.dialogs.shown, ElementsAre(folder_ / "tables"));
    EXPECT_EQ(StoredText(*host_.store, "LastExportDir"), PathText(folder_ / "tables"));
    EXPECT_EQ(host_.told, "The information is exported.");
}

}  // namespace
}  // namespace bw
